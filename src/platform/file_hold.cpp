#include "platform/file_hold.h"

#include <sys/file.h>

#include <cerrno>

#include "platform/file_calls.h"
#include "platform/interruption.h"

namespace korvex::platform {

bool hold_file(int descriptor, Sharing sharing) {
  if (sharing == Sharing::unlocked) return true;
  const int operation = (sharing == Sharing::exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
  if (retry_interrupted([&] { return file_calls().flock(descriptor, operation); }) == 0)
    return true;
  return errno != EWOULDBLOCK;
}

}  // namespace korvex::platform
