#include "platform/read_file.h"

#include <fcntl.h>
#include <poll.h>

#include <array>
#include <cerrno>

#include "platform/file_calls.h"
#include "platform/interruption.h"

namespace korvex::platform {

namespace {

constexpr std::size_t block_size = 16 * 1024;

int read_all(int descriptor, std::string& content) {
  std::array<char, block_size> block;
  for (;;) {
    if (!wait_until_ready(descriptor, POLLIN)) return EINTR;
    const ssize_t count = retry_interrupted(
        [&] { return file_calls().read(descriptor, block.data(), block.size()); });
    if (count <= 0) return count < 0 ? errno : 0;
    content.append(block.data(), static_cast<std::size_t>(count));
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
