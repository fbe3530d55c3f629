#include <cstring>
#include <ostream>

#include "host/commands/show.h"
#include "host/layout/code_names.h"
#include "platform/printable_text.h"
#include "run/log_file.h"
#include "settings/settings_reader.h"
#include "values/record_text.h"
#include "values/records.h"

// Control files and log files.
namespace korvex::host {

namespace {

template <typename Record>
Record record_at(std::string_view bytes, std::size_t offset) {
  Record record = {};
  RecordCursor(bytes, offset).read(record);
  return record;
}

// Whether exactly `count` records are after a header.
bool holds_exactly(std::string_view bytes, std::size_t header_size, std::int32_t count,
                   std::size_t record_size) {
  if (bytes.size() < header_size || count < 0) return false;
  const std::size_t rest = bytes.size() - header_size;
  return rest % record_size == 0 && rest / record_size == static_cast<std::size_t>(count);
}

bool is_form(std::string_view bytes, std::size_t record_size) {
  const auto header = record_at<korvex_control_header>(bytes, 0);
  return header.layout_kind >= korvex_layout_record_file &&
         header.layout_kind <= korvex_layout_iso &&
         holds_exactly(bytes, sizeof header, header.item_count, record_size);
}

void print_numbers(std::string_view bytes, std::size_t offset, std::int32_t count,
                   std::ostream& out) {
  RecordCursor cursor(bytes, offset);
  out << "  item numbers  ";
  for (std::int32_t i = 0; i < count; ++i) {
    std::int32_t number = 0;
    cursor.read(number);
    out << (i > 0 ? " " : "") << number;
  }
  out << "\n";
}

void print_item(const korvex_control_item& item, std::ostream& out) {
  out << "\nitem " << item.item_number << ": "
      << platform::exact_printable_from_code_page(field_text(item.name)) << "\n";
  const auto description = field_text(item.description);
  if (!description.empty()) {
    out << "  description  " << platform::exact_printable_from_code_page(description) << "\n";
  }
  out << "  "
      << describe_attributes({Attribute{item.attribute}, Flag{item.signed_flag}, item.length,
                              item.digits, item.decimals})
      << (item.null_allowed != 0 ? ", nullable" : ", not nullable") << "\n";
  if (item.host_value != 0) out << "  host value   " << item.host_value << "\n";
}

}  // namespace

bool is_control_file(std::string_view bytes) {
  return is_form(bytes, sizeof(korvex_control_item)) || is_form(bytes, sizeof(std::int32_t));
}

void print_control_file(std::string_view bytes, std::ostream& out) {
  const auto header = record_at<korvex_control_header>(bytes, 0);
  const bool is_long = is_form(bytes, sizeof(korvex_control_item)) && header.item_count > 0;
  out << "control file, " << (is_long ? "long" : "short") << " form\n"
      << "  records       " << header.records << "\n"
      << "  layout kind   " << named_layout_kind(LayoutKind{header.layout_kind}) << "\n"
      << "  NULL default  " << header.null_default << "\n"
      << "  host value    " << header.host_value << "\n"
      << "  level         " << header.level << "\n"
      << "  items         " << header.item_count << "\n"
      << "  data          " << platform::printable(field_text(header.data_path)) << "\n"
      << "  settings      " << platform::printable(field_text(header.settings_path)) << "\n"
      << "  work          " << platform::printable(field_text(header.work_folder)) << "\n";
  if (!is_long) {
    print_numbers(bytes, sizeof header, header.item_count, out);
    return;
  }
  RecordCursor cursor(bytes, sizeof header);
  for (std::int32_t i = 0; i < header.item_count; ++i) {
    korvex_control_item item = {};
    cursor.read(item);
    print_item(item, out);
  }
}

bool is_log_file(std::string_view bytes) {
  const auto header = record_at<LogHeader>(bytes, 0);
  return number_of(header.records) >= 0 && header.reserved == 0 &&
         holds_exactly(bytes, sizeof header, header.item_count, sizeof(std::int32_t));
}

void print_log_file(std::string_view bytes, std::ostream& out) {
  const auto header = record_at<LogHeader>(bytes, 0);
  out << "log file\n"
      << "  records       " << number_of(header.records) << "\n"
      << "  level         " << number_of(header.level) << "\n"
      << "  items         " << header.item_count << "\n";
  print_numbers(bytes, sizeof header, header.item_count, out);
}

}  // namespace korvex::host
