#include <cstddef>
#include <ostream>

#include "host/commands/show.h"
#include "host/layout/code_names.h"
#include "platform/printable_text.h"
#include "settings/settings_reader.h"
#include "values/record_text.h"
#include "values/records.h"

// Settings files, of this version and of the previous one.
namespace korvex::host {

namespace {

// The previous version's item records end with the fields in front of the repeat settings.
constexpr std::size_t previous_item_size = 388;
constexpr std::size_t previous_item_fields = offsetof(FmtColRec, repeat_flag);

// A value record as one text: what its element's kind has filled in.
std::string number_of(const FmtValRec& value) {
  std::string text = value.sign == Sign::minus ? "-" : "";
  if (value.high != 0) text += std::to_string(value.high) + " x 10^9 + ";
  return text + std::to_string(value.low);
}

class SettingsPrinter {
 public:
  SettingsPrinter(std::string_view bytes, std::ostream& out) : bytes_(bytes), out_(out) {}

  std::string print() {
    RecordCursor cursor(bytes_, 0);
    FmtHeadRec header = {};
    if (!cursor.read(header)) return "the file ends inside its header";
    is_previous_ = has_magic(header, previous_magic);
    out_ << "Format Information file, " << (is_previous_ ? "previous" : "current") << " version\n"
         << "  layout kind  " << named_layout_kind(header.layout_kind) << "\n"
         << "  quotation    " << named_quotation(header.quotation) << "\n"
         << "  levels       " << header.level_count << "\n";
    if (!cursor.holds(header.level_count, sizeof(FmtLvlRec))) {
      return "the file ends inside its level table";
    }
    unshown_ = bytes_.size() - sizeof header -
               static_cast<std::size_t>(header.level_count) * sizeof(FmtLvlRec);
    for (std::int32_t i = 0; i < header.level_count; ++i) {
      FmtLvlRec level = {};
      cursor.read(level);
      const std::string wrong = print_level(level);
      if (!wrong.empty()) return wrong;
    }
    return {};
  }

 private:
  std::string print_level(const FmtLvlRec& level) {
    out_ << "\nlevel " << number_of(level.level) << ": records " << number_of(level.records)
         << ", items " << level.column_count << ", size " << level.data_size << ", offset "
         << level.data_offset << (level.repeat_flag != 0 ? ", with repeats" : "") << "\n";
    if (level.data_offset == 0) return {};
    if (level.data_offset < 0) return "the level's offset is negative";
    RecordCursor cursor(bytes_, static_cast<std::size_t>(level.data_offset));
    for (std::int32_t i = 0; i < level.column_count; ++i) {
      const std::string wrong = print_item(cursor);
      if (!wrong.empty()) return wrong;
    }
    return level.column_count < 0 ? "the level's number of items is negative" : std::string();
  }

  std::string print_item(RecordCursor& cursor) {
    FmtColRec item = {};
    char rest[previous_item_size - previous_item_fields];
    const std::size_t size = is_previous_ ? previous_item_size : sizeof item;
    const bool complete =
        is_previous_ ? cursor.read(&item, previous_item_fields) && cursor.read(rest, sizeof rest)
                     : cursor.read(item);
    if (!complete) return "the file ends inside an item's settings";
    if (!count_shown(size)) return "the levels overlap";
    print_item_record(item);
    if (!cursor.holds(item.element_count, sizeof(FmtItemRec))) {
      return "the file ends inside the elements of item " +
             std::to_string(number_of(item.item_number));
    }
    for (std::int32_t i = 0; i < item.element_count; ++i) {
      FmtItemRec element = {};
      cursor.read(element);
      if (!count_shown(sizeof element)) return "the levels overlap";
      print_element(element);
    }
    return {};
  }

  // Levels that share bytes could make the output far longer than the file.
  bool count_shown(std::size_t size) {
    if (size > unshown_) return false;
    unshown_ -= size;
    return true;
  }

  void print_item_record(const FmtColRec& item) {
    out_ << "  item " << number_of(item.item_number) << ": type "
         << named_generation_type(item.generation_type) << ", elements " << item.element_count
         << ", lead element " << number_of(item.lead_element) << "\n    "
         << describe_attributes(attributes_of(item)) << "\n"
         << "    format     " << text(field_text(item.format))
         << (is_on(item.custom_format) ? " (custom)" : "") << "\n"
         << "    increment  " << text(field_text(item.increment_text)) << " = "
         << number_of(item.increment) << "\n"
         << "    exceeded   " << named_exceeded_action(item.exceeded_action) << "\n";
    if (item.generation_type == generation_type::reference) {
      out_ << "    reference  item " << number_of(item.referenced_item) << "\n";
    }
    if (is_on(item.repeat_flag)) {
      out_ << "    repeat     level " << number_of(item.repeat_level) << ", " << item.repeat_count
           << " times\n";
    }
    const auto enumeration = field_text(item.enumeration_path);
    if (!enumeration.empty()) out_ << "    file       " << platform::printable(enumeration) << "\n";
  }

  void print_element(const FmtItemRec& element) {
    out_ << "    element " << number_of(element.sequence) << ": " << named_format_kind(element.kind)
         << ", width " << element.width << ", digits " << element.digits << ", decimals "
         << element.decimals << ", text " << text(field_text(element.text)) << "\n";
    if (element.kind == format_kind::none || element.kind == format_kind::fixed) return;
    out_ << "      start " << text(field_text(element.start_text)) << ", end "
         << text(field_text(element.end_text)) << ", sign " << number_of(element.sign) << ", span "
         << element.span_high << ":" << element.span_low
         << (is_on(element.group_start) ? ", opens a group" : "") << "\n";
  }

  static std::string text(std::string_view field) {
    return '"' + platform::exact_printable_from_code_page(field) + '"';
  }

  std::string_view bytes_;
  std::ostream& out_;
  bool is_previous_ = false;
  std::size_t unshown_ = 0;
};

}  // namespace

bool is_settings_file(std::string_view bytes) {
  FmtHeadRec header = {};
  RecordCursor(bytes, 0).read(header.magic, sizeof header.magic);
  return has_magic(header, current_magic) || has_magic(header, previous_magic);
}

std::string print_settings_file(std::string_view bytes, std::ostream& out) {
  return SettingsPrinter(bytes, out).print();
}

}  // namespace korvex::host
