#include <fcntl.h>
#include <poll.h>

#include <array>
#include <cerrno>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/interruption.h"

namespace korvex::platform {

namespace {

constexpr std::size_t block_size = 16 * 1024;
constexpr std::size_t piece_size = 64 * 1024;

std::error_code system_error() { return {errno, std::generic_category()}; }

std::error_code read_all(int descriptor, std::string& content, std::size_t most) {
  std::array<char, block_size> block;
  for (;;) {
    if (!wait_until_ready(descriptor, POLLIN)) return std::make_error_code(std::errc::interrupted);
    const ssize_t count = retry_interrupted(
        [&] { return file_calls().read(descriptor, block.data(), block.size()); });
    if (count < 0) return system_error();
    if (count == 0) return {};
    if (static_cast<std::size_t>(count) > most - content.size()) {
      return std::make_error_code(std::errc::file_too_large);
    }
    content.append(block.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

std::error_code read_file(const std::string& path, std::string& content, std::size_t most) {
  content.clear();
  const int descriptor =
      retry_interrupted([&] { return file_calls().open(path.c_str(), O_RDONLY | O_CLOEXEC, 0); });
  if (descriptor < 0) return system_error();
  const std::error_code failure = read_all(descriptor, content, most);
  file_calls().close(descriptor);
  return failure;
}

void read_line_pieces(const std::string& path, const std::function<bool(std::string_view)>& take) {
  File file;
  if (file.open_for_reading(path, Sharing::unlocked) != FileCause::none) return;
  std::string text;
  for (std::size_t count = piece_size; count == piece_size && received_signal() == 0;) {
    const std::size_t kept = text.size();
    text.resize(kept + piece_size);
    const bool is_read = file.read(&text[kept], piece_size, count) == FileCause::none;
    text.resize(kept + count);
    // What is kept has no end of a line.
    const std::size_t feed = std::string_view(text).substr(kept).rfind('\n');
    const std::size_t line_end = feed == std::string_view::npos ? 0 : kept + feed + 1;
    const std::size_t end = is_read && count == piece_size ? line_end : text.size();
    if (!is_read) count = 0;
    if (end > 0 && !take(std::string_view(text).substr(0, end))) return;
    text.erase(0, end);
  }
}

}  // namespace korvex::platform
