#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string>

#include "host/databases/sqlite_database.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

struct NamedType {
  std::string_view part;  // of the declared type, in upper case
  ColumnType type;
};

// The first that is found counts, so that "DATETIME" comes before "DATE" and "TIME".
constexpr std::array named_types = std::to_array<NamedType>({
    {"BOOL", ColumnType::boolean},        {"DATETIME", ColumnType::timestamp},
    {"TIMESTAMP", ColumnType::timestamp}, {"DATE", ColumnType::date},
    {"UUID", ColumnType::uuid},           {"GUID", ColumnType::uuid},
    {"JSON", ColumnType::json},           {"BIGINT", ColumnType::integer64},
    {"INT8", ColumnType::integer64},      {"SMALLINT", ColumnType::integer16},
    {"TINYINT", ColumnType::integer16},   {"INT2", ColumnType::integer16},
    {"INT", ColumnType::integer32},       {"TIME", ColumnType::time},
    {"CHAR", ColumnType::text},           {"CLOB", ColumnType::text},
    {"TEXT", ColumnType::text},           {"STRING", ColumnType::text},
    {"BLOB", ColumnType::binary},         {"REAL", ColumnType::floating8},
    {"FLOA", ColumnType::floating8},      {"DOUB", ColumnType::floating8},
    {"DEC", ColumnType::decimal},         {"NUM", ColumnType::decimal},
});

// No value of SQLite is longer. A type that says more, as some do for "any length", has no size.
constexpr int longest_value = 1'000'000'000;

// The numbers between the parentheses of "DECIMAL(9, 2)"; 0 for those that are not there.
std::array<int, 2> sizes_of(std::string_view declared) {
  std::array<int, 2> sizes = {};
  const char* const end = declared.data() + declared.size();
  const char* place = std::find(declared.data(), end, '(');
  for (int& size : sizes) {
    place = std::find_if(place, end, platform::is_digit);
    place = std::from_chars(place, end, size).ptr;
    if (size > longest_value) size = 0;
  }
  return sizes;
}

}  // namespace

void set_sqlite_type(std::string_view declared, ColumnSchema& column) {
  std::string upper(declared);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::toupper(byte)); });
  const auto row = std::find_if(
      named_types.begin(), named_types.end(),
      [&](const NamedType& entry) { return upper.find(entry.part) != std::string::npos; });
  if (row != named_types.end()) column.type = row->type;
  if (upper.empty()) column.type = ColumnType::text;
  const auto sizes = sizes_of(upper);
  if (column.type == ColumnType::text) column.length = sizes[0];
  if (column.type == ColumnType::decimal) {
    column.precision = sizes[0];
    column.scale = sizes[1];
  }
  column.takes_wide_integers =
      column.type == ColumnType::integer16 || column.type == ColumnType::integer32;
  if (column.type == ColumnType::boolean) column.choices = {"0", "1"};
}

}  // namespace korvex::host
