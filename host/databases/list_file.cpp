#include "host/databases/list_file.h"

#include <algorithm>
#include <stdexcept>

#include "host/engine/run_folders.h"
#include "host/text/code_page_text.h"
#include "platform/path.h"

namespace korvex::host {

namespace {

// A longer line would be read as several.
constexpr std::size_t longest_line = 32'768;

std::string path_in(const std::string& folder, const std::string& name) {
  make_folder(folder);
  return platform::join_path(folder, name);
}

}  // namespace

ListFile::ListFile(const std::string& folder, const std::string& name,
                   const std::optional<ItemAttributes>& number_item)
    : name_(name),
      path_(path_in(folder, name)),
      output_(path_),
      fits_number_item_(number_item.has_value()) {
  if (number_item) number_rule_.emplace(*number_item);
  report();
}

std::optional<std::string> ListFile::line_of(std::string_view utf8) {
  if (utf8.empty() || utf8.find_first_of(std::string_view("\0\r\n", 3)) != std::string_view::npos) {
    return std::nullopt;
  }
  std::optional<std::string> line = exact_code_page_text(utf8);
  if (line && line->size() > longest_line) return std::nullopt;
  return line;
}

void ListFile::append(const std::string& line) {
  ++values_;
  longest_ = std::max(longest_, line.size());
  fits_number_item_ = fits_number_item_ && number_rule_->check(line) == 0;
  output_.write(line);
  output_.write("\n");
}

void ListFile::keep() {
  output_.finish();
  report();
}

void ListFile::report() const {
  if (!output_.failure().empty()) throw std::runtime_error(output_.failure());
}

}  // namespace korvex::host
