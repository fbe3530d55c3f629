#include "platform/read_file.h"

#include <fcntl.h>
#include <poll.h>

#include <cerrno>

#include "platform/file_calls.h"
#include "platform/interruption.h"

namespace korvex::platform {

namespace {

constexpr std::size_t block_size = 64 * 1024;

int read_all(int descriptor, std::string& content) {
  for (;;) {
    if (!wait_until_ready(descriptor, POLLIN)) return EINTR;
    const std::size_t size = content.size();
    content.resize(size + block_size);
    const ssize_t count = retry_interrupted(
        [&] { return file_calls().read(descriptor, content.data() + size, block_size); });
    const int failure = count < 0 ? errno : 0;
    content.resize(size + static_cast<std::size_t>(count < 0 ? 0 : count));
    if (count <= 0) return failure;
  }
}

}  // namespace

int read_file(const std::string& path, std::string& content) {
  content.clear();
  const int descriptor =
      retry_interrupted([&] { return file_calls().open(path.c_str(), O_RDONLY | O_CLOEXEC, 0); });
  if (descriptor < 0) return errno;
  const int failure = read_all(descriptor, content);
  file_calls().close(descriptor);
  return failure;
}

}  // namespace korvex::platform
