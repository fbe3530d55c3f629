#include "host/databases/list_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "host/layout/output_folders.h"
#include "platform/codepage.h"
#include "platform/path.h"

namespace korvex::host {

namespace {

// A longer line would be read as several.
constexpr std::size_t longest_line = 32'768;

[[noreturn]] void report(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

}  // namespace

ListFile::ListFile(const std::string& folder, const std::string& name,
                   const std::optional<ItemAttributes>& number_item)
    : folder_(folder),
      name_(name),
      temporary_(platform::join_path(folder, name + ".part")),
      fits_number_item_(number_item.has_value()) {
  make_folder(folder);
  stream_.open(temporary_, std::ios::binary | std::ios::trunc);
  if (number_item) number_rule_.emplace(*number_item);
  if (!stream_) report(temporary_);
}

ListFile::~ListFile() {
  if (!temporary_.empty()) std::remove(temporary_.c_str());
}

std::optional<std::string> ListFile::line_of(std::string_view utf8) {
  if (utf8.empty() || utf8.find_first_of(std::string_view("\0\r\n", 3)) != std::string_view::npos) {
    return std::nullopt;
  }
  std::optional<std::string> line = platform::from_utf8(utf8);
  if (line && line->size() > longest_line) return std::nullopt;
  return line;
}

void ListFile::append(const std::string& line) {
  ++values_;
  longest_ = std::max(longest_, line.size());
  fits_number_item_ = fits_number_item_ && number_rule_->check(line) == 0;
  stream_ << line << '\n';
}

void ListFile::keep() {
  stream_.close();
  if (!stream_) report(temporary_);
  std::filesystem::rename(temporary_, path());
  temporary_.clear();
}

std::string ListFile::path() const { return platform::join_path(folder_, name_); }

}  // namespace korvex::host
