#include "host/layout/list_encoding.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>

#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t looked_at = 64 * 1024;

}  // namespace

bool looks_like_utf8(std::string_view text, bool is_cut) {
  bool is_ascii = true;
  while (!text.empty()) {
    const std::size_t size = platform::character_size(text.front());
    const std::string_view rest = text.substr(1, std::max<std::size_t>(size, 1) - 1);
    if (size == 0 || !std::all_of(rest.begin(), rest.end(), platform::is_continuation))
      return false;
    if (size > text.size()) return is_cut && !is_ascii;
    is_ascii = is_ascii && size == 1;
    text.remove_prefix(size);
  }
  return !is_ascii;
}

bool file_looks_like_utf8(const std::string& path) {
  std::error_code ignored;
  // What comes out of a pipe would be gone for the one who generates.
  if (!std::filesystem::is_regular_file(path, ignored)) return false;
  std::ifstream stream(path, std::ios::binary);
  std::string text(looked_at, '\0');
  stream.read(text.data(), std::ssize(text));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return looks_like_utf8(text, text.size() == looked_at);
}

}  // namespace korvex::host
