#include "host/layout/code_names.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "values/records.h"

namespace korvex::host {

namespace {

template <typename Code>
struct CodeName {
  Code code;
  std::string_view name;
};

template <typename Code>
std::string with_name(Code code, std::string_view name) {
  std::string text = std::to_string(number_of(code));
  if (!name.empty()) text.append(" (").append(name).append(")");
  return text;
}

template <typename Code, std::size_t Size>
std::string named(Code code, const CodeName<Code> (&names)[Size]) {
  const auto row = std::find_if(std::begin(names), std::end(names),
                                [code](const CodeName<Code>& entry) { return entry.code == code; });
  return with_name(code, row == std::end(names) ? "unknown" : row->name);
}

constexpr CodeName<LayoutKind> layout_kinds[] = {
    {layout_kind::record_file, "record file"},
    {layout_kind::table, "table"},
    {layout_kind::iso, "iso"},
};

constexpr CodeName<Quotation> quotations[] = {{quotation::none, "none"},
                                              {quotation::double_mark, "double"}};

constexpr CodeName<GenerationType> generation_types[] = {
    {generation_type::none, "none"},
    {generation_type::initial_value, "initial"},
    {generation_type::range, "range"},
    {generation_type::reference, "reference"},
    {generation_type::enumeration, "enumeration"},
};

constexpr CodeName<FormatKind> format_kinds[] = {
    {format_kind::none, "initial value"},
    {format_kind::signed_number, "signed number"},
    {format_kind::unsigned_number, "unsigned number"},
    {format_kind::unsigned_number_in_text, "unsigned number in text"},
    {format_kind::upper_letters, "upper-case letters"},
    {format_kind::national_character, "full-width character"},
    {format_kind::date, "date"},
    {format_kind::date_unchecked, "unchecked date"},
    {format_kind::lower_letters, "lower-case letters"},
    {format_kind::fixed, "fixed"},
    {format_kind::time, "time"},
    {format_kind::timestamp, "timestamp"},
};

constexpr CodeName<ExceededAction> exceeded_actions[] = {
    {exceeded_action::initialize, "initialize"},
    {exceeded_action::repeat, "repeat"},
};

}  // namespace

std::string named_layout_kind(LayoutKind kind) { return named(kind, layout_kinds); }

std::string named_quotation(Quotation mark) { return named(mark, quotations); }

std::string named_attribute(Attribute attribute) {
  return with_name(attribute, attribute_name(attribute));
}

std::string named_generation_type(GenerationType type) { return named(type, generation_types); }

std::string named_format_kind(FormatKind kind) { return named(kind, format_kinds); }

std::string named_exceeded_action(ExceededAction action) { return named(action, exceeded_actions); }

std::string describe_attributes(const ItemAttributes& item) {
  return "attribute " + named_attribute(item.attribute) +
         (is_on(item.signed_flag) ? ", signed" : ", unsigned") + ", length " +
         std::to_string(item.length) + ", digits " + std::to_string(item.digits) + ", decimals " +
         std::to_string(item.decimals);
}

namespace {

struct AttributeName {
  std::string_view name;
  Attribute attribute;
};

constexpr std::array attribute_names = std::to_array<AttributeName>({
    {"character", attribute::character},
    {"decimal", attribute::decimal},
    {"plain-character", attribute::plain_character},
    {"national", attribute::national},
    {"number", attribute::number},
    {"integer", attribute::integer},
    {"small-integer", attribute::small_integer},
    {"date", attribute::date},
    {"time", attribute::time},
    {"timestamp", attribute::timestamp},
});

}  // namespace

std::optional<Attribute> attribute_by_name(std::string_view name) {
  const auto row = std::find_if(attribute_names.begin(), attribute_names.end(),
                                [name](const AttributeName& entry) { return entry.name == name; });
  if (row == attribute_names.end()) return std::nullopt;
  return row->attribute;
}

std::string_view attribute_name(Attribute attribute) {
  const auto row = std::find_if(
      attribute_names.begin(), attribute_names.end(),
      [attribute](const AttributeName& entry) { return entry.attribute == attribute; });
  return row == attribute_names.end() ? std::string_view() : row->name;
}

std::string list_attribute_names() {
  std::string list;
  for (const AttributeName& entry : attribute_names) {
    if (!list.empty()) list += ", ";
    list.append("\"").append(entry.name).append("\"");
  }
  return list;
}

}  // namespace korvex::host
