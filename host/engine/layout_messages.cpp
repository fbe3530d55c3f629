#include "host/engine/layout_messages.h"

#include <ostream>
#include <set>
#include <string_view>

#include "host/layout/failure_text.h"
#include "host/layout/list_encoding.h"
#include "host/layout/value_errors.h"
#include "platform/file.h"
#include "platform/printable_text.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace {

void print_error(const Layout& layout, const LayoutError& error, std::ostream& messages) {
  messages << platform::printable(layout.file) << ":";
  if (error.place.line > 0) messages << error.place.line << ":" << error.place.column << ":";
  messages << " " << error.text << "\n";
}

void print_of_item(const Layout& layout, const LayoutItem& item, std::string_view text,
                   std::ostream& messages) {
  messages << platform::printable(layout.file) << ":" << item.place.line << ": item "
           << platform::printable(item.name) << ": " << text << "\n";
}

// The command that writes a list as it is read.
std::string conversion_of(const std::string& list) {
  return "iconv -f UTF-8 -t CP932 " + platform::printable(list);
}

}  // namespace

bool print_layout_errors(const Layout& layout, const std::vector<LayoutError>& errors,
                         std::ostream& messages) {
  for (const LayoutError& error : errors) print_error(layout, error, messages);
  return !errors.empty();
}

bool print_layout_errors(const LayoutReading& reading, std::ostream& messages) {
  return print_layout_errors(reading.layout, reading.errors, messages);
}

void print_digit_warnings(const Layout& layout, std::ostream& messages) {
  for (const LayoutItem& item : layout.items) {
    if (!item.has_invalid_digits) continue;
    print_of_item(layout, item, numbered_message(error::invalid_items, layout), messages);
  }
}

void print_warnings(const Layout& layout, std::ostream& messages) {
  print_digit_warnings(layout, messages);
  std::set<std::string_view> lists;
  for (const LayoutItem& item : layout.items) {
    if (!item.values || item.values->file.empty()) continue;
    const std::string& file = item.values->file;
    if (!lists.insert(file).second || !file_looks_like_utf8(file)) continue;
    print_of_item(layout, item,
                  platform::printable(file) +
                      " looks like UTF-8; lists are read as code page 932 (" + conversion_of(file) +
                      ")",
                  messages);
  }
}

bool print_misread_list(const std::string& path, std::ostream& messages) {
  const auto character = find_misread_character(path);
  if (!character) return false;
  messages << platform::printable(path) << ":" << character->line << ":" << character->place
           << ": the character \"" << platform::printable(character->text)
           << "\" is written in UTF-8, expected code page 932, "
           << (character->is_in_code_page ? "as by " + conversion_of(path)
                                          : "which has no such character")
           << "\n";
  return true;
}

bool print_replaced_characters(const Layout& layout, std::ostream& messages) {
  bool has_any = false;
  for (const LayoutItem& item : layout.items) {
    if (!item.values) continue;
    for (const LayoutError& error : item.values->replaced) print_error(layout, error, messages);
    has_any = has_any || !item.values->replaced.empty();
  }
  return has_any;
}

void print_left_out(const std::vector<const LayoutItem*>& left_out, const Layout& layout,
                    std::ostream& messages) {
  for (const LayoutItem* item : left_out) {
    print_of_item(layout, *item, "has no values and no settings, the records leave it out",
                  messages);
  }
}

bool print_unfit_items(const std::vector<const LayoutItem*>& unfit, const Layout& layout,
                       std::ostream& messages) {
  for (const LayoutItem* item : unfit) {
    print_of_item(layout, *item, "its settings are for another attribute or number of digits",
                  messages);
  }
  if (!unfit.empty()) {
    messages << platform::printable(layout.settings) << ": "
             << numbered_message(error::settings_mismatch, layout) << "\n";
  }
  return !unfit.empty();
}

bool print_failures(const SettingsResult& result, const Layout& layout, std::ostream& messages) {
  const bool has_unfit = print_unfit_items(result.unfit, layout, messages);
  for (const ItemFailure& failure : result.failures) {
    print_error(layout, value_error(layout, *failure.item, failure.code), messages);
  }
  if (result.file_code != error::none) {
    // What a file says is wrong is that of the layout; what the system refuses is that of the copy.
    const bool is_system = !reason_of(result.file_code, platform::last_file_error()).empty();
    messages << platform::printable(is_system ? result.file : layout.settings) << ": "
             << numbered_message(result.file_code, layout) << "\n";
  }
  return has_unfit || !result.failures.empty() || result.file_code != error::none;
}

}  // namespace korvex::host
