#include "reliability/hostile_inputs.h"

#include <cstdint>
#include <functional>

#include "support/control_bytes.h"
#include "support/settings_bytes.h"

namespace korvex::test {

namespace {

constexpr std::int32_t hostile_count = 0x7FFFFFFF;

// The part over and over, up to a megabyte.
std::string filled(const std::string& part, std::string bytes = "") {
  bytes.reserve(hostile_size);
  while (bytes.size() + part.size() <= hostile_size) bytes += part;
  return bytes;
}

// Parts that differ by their place, up to a megabyte.
std::string filled(const std::function<std::string(int)>& part, std::string bytes = "") {
  for (int i = 1; bytes.size() < hostile_size; ++i) bytes += part(i);
  return bytes;
}

std::string header(const std::string& folder, std::int32_t count, std::int32_t records = 1) {
  return control_header({.records = records,
                         .null_default = 1,
                         .data_path = folder + "/out.csv",
                         .settings_path = folder + "/out.fif",
                         .work_folder = folder},
                        count);
}

std::string number(std::int32_t value) { return Bytes().i32(value); }

// Its decimals are reported to the user.
std::string item(std::int32_t item_number) {
  return control_item({.item_number = item_number,
                       .name = std::string(63, 'N'),
                       .length = 1,
                       .digits = 1,
                       .decimals = 12});
}

void write_files(const std::string& folder, const std::string& run_control,
                 const std::string& long_control, const std::string& settings,
                 const std::string& list = "1\n2\n") {
  write_file(folder + "/run.ctl", run_control);
  write_file(folder + "/long.ctl", long_control);
  write_file(folder + "/out.fif", settings);
  write_file(folder + "/list.txt", list);
}

// Settings of one level, whose area is as given.
std::string one_level(const std::string& area, std::int32_t columns) {
  return header_bytes(1, 0, 1) + level_bytes(1, 76, 1, area.size(), columns) + area;
}

std::string list_item(const std::string& folder) {
  return column_bytes({.generation_type = 4, .enumeration_path = folder + "/list.txt"}) +
         element_bytes({});
}

// Item numbers, all of one item that takes its values from a list.
void one_item_in_every_field(const std::string& folder) {
  const std::string numbers = filled(number(1));
  const auto count = static_cast<std::int32_t>(numbers.size() / 4);
  write_files(folder, header(folder, count) + numbers, header(folder, 1) + item(1),
              one_level(list_item(folder), 1));
}

void items_without_settings(const std::string& folder) {
  const std::string numbers = filled(number);
  const std::string items = filled(item);
  write_files(folder, header(folder, static_cast<std::int32_t>(numbers.size() / 4)) + numbers,
              header(folder, static_cast<std::int32_t>(items.size() / 136)) + items,
              one_level(item_bytes(1), 1));
}

void more_items_than_there_are(const std::string& folder) {
  write_files(folder, header(folder, hostile_count) + filled(number(1)),
              header(folder, hostile_count) + filled(item), one_level(item_bytes(1), 1));
}

void write_settings_case(const std::string& folder, const std::string& settings) {
  std::string numbers;
  std::string items;
  constexpr std::int32_t count = 1000;
  for (std::int32_t i = 1; i <= count; ++i) {
    numbers += number(i);
    items += item(i);
  }
  write_files(folder, header(folder, count) + numbers, header(folder, count) + items, settings);
}

void many_items(const std::string& folder) {
  const std::string area = filled(item_bytes);
  write_settings_case(
      folder, one_level(area, static_cast<std::int32_t>(area.size() / item_bytes(1).size())));
}

void one_item_of_many_elements(const std::string& folder) {
  const std::string elements = filled(element_bytes({.kind = 905, .width = 66}));
  const auto count = static_cast<std::int32_t>(elements.size() / element_size);
  write_settings_case(
      folder,
      one_level(
          column_bytes({.element_count = count, .attribute = 11, .format = std::string(255, 'N')}) +
              elements,
          1));
}

// Tables of levels that all claim the whole file.
std::string overlapping_levels(std::size_t levels, std::string_view magic, std::int32_t columns) {
  const std::size_t begin = header_size + levels * level_size;
  std::string bytes = header_bytes(1, 0, static_cast<std::int32_t>(levels), magic);
  for (std::size_t i = 0; i < levels; ++i) {
    const std::size_t size = hostile_size > begin ? hostile_size - begin : 0;
    bytes += level_bytes(static_cast<std::int32_t>(i) + 1, begin, 1, size, columns);
  }
  bytes = filled(item_bytes(1), bytes);
  return bytes + std::string(hostile_size - bytes.size(), '\0');
}

constexpr const char* current_magic_text = "TAMBO DATA FORMAT V3L1";
constexpr const char* previous_magic_text = "TAMBO DATA FORMAT V2L1";

void overlapping_levels_of_a_megabyte(const std::string& folder) {
  write_settings_case(folder, overlapping_levels(1000, current_magic_text, 100));
}

void levels_and_nothing_else(const std::string& folder) {
  write_settings_case(
      folder, overlapping_levels((hostile_size - header_size) / level_size, current_magic_text, 0));
}

void claims_of_many_items(const std::string& folder) {
  write_settings_case(folder, overlapping_levels(20, current_magic_text, hostile_count));
}

void previous_version(const std::string& folder) {
  const std::string area =
      filled([](int i) { return previous_column_bytes({.item_number = i, .element_count = 0}); });
  const auto count = static_cast<std::int32_t>(area.size() / previous_column_size);
  write_settings_case(folder, header_bytes(1, 0, 1, previous_magic_text) +
                                  level_bytes(1, 76, 1, area.size(), count) + area);
}

void previous_version_of_many_levels(const std::string& folder) {
  write_settings_case(folder, overlapping_levels((hostile_size - header_size) / level_size,
                                                 previous_magic_text, 0));
}

void write_list_case(const std::string& folder, const std::string& list) {
  write_files(folder, header(folder, 1, 1'000) + number(1), header(folder, 1) + item(1),
              one_level(list_item(folder), 1), list);
}

void short_values(const std::string& folder) { write_list_case(folder, filled("1\n")); }
void bad_values(const std::string& folder) { write_list_case(folder, filled("x\n")); }
void empty_values(const std::string& folder) { write_list_case(folder, filled("\n")); }
void one_line(const std::string& folder) { write_list_case(folder, filled("1")); }
void zeros(const std::string& folder) { write_list_case(folder, filled(std::string(1, '\0'))); }

constexpr const char* layout_start =
    "[layout]\nkind = \"record\"\nrecords = 1\ndata = \"out.csv\"\n";

void write_layout(const std::string& folder, const std::string& rest) {
  write_file(folder + "/layout.toml", rest);
}

void items_of_a_layout(const std::string& folder) {
  write_layout(folder, filled("[[item]]\n", layout_start));
}

void named_items(const std::string& folder) {
  write_layout(folder, filled(
                           [](int i) {
                             return "[[item]]\nname=\"A" + std::to_string(i) +
                                    "\"\nattribute=1\nlength=1\n";
                           },
                           layout_start));
}

// Each item refers to the next one, which refers to the next one.
void chain_of_references(const std::string& folder) {
  write_layout(folder, filled(
                           [](int i) {
                             return "[[item]]\nname=\"A" + std::to_string(i) +
                                    "\"\nattribute=1\nlength=1\nvalues={type=\"reference\",item="
                                    "\"A" +
                                    std::to_string(i + 1) + "\"}\n";
                           },
                           layout_start));
}

void unknown_keys(const std::string& folder) {
  write_layout(folder, filled([](int i) { return "k" + std::to_string(i) + "=1\n"; }));
}

void nested_arrays(const std::string& folder) { write_layout(folder, filled("[", "a=")); }
void nested_tables(const std::string& folder) { write_layout(folder, filled("a={", "")); }
void dotted_keys(const std::string& folder) { write_layout(folder, filled("a.", "")); }
void dotted_headers(const std::string& folder) {
  write_layout(folder, filled([](int i) { return "[a" + std::to_string(i) + ".b.c.d]\n"; }));
}
void long_array(const std::string& folder) { write_layout(folder, filled("1,", "a=[")); }
void tables_in_an_array(const std::string& folder) {
  write_layout(folder, filled("{a=1},", "a=["));
}
void sparse_values(const std::string& folder) {
  write_layout(folder, filled([](int i) { return "k" + std::to_string(i) + "={}\n"; }));
}
void long_string(const std::string& folder) { write_layout(folder, filled("x", "a=\"\"\"")); }
void comments(const std::string& folder) { write_layout(folder, filled("#\n", "")); }

}  // namespace

const std::vector<HostileInput>& hostile_inputs() {
  using Kind = InputKind;
  static const std::vector<HostileInput> all = {
      {"OneItemInEveryField", Kind::control_file, one_item_in_every_field},
      {"ItemsWithoutSettings", Kind::control_file, items_without_settings},
      {"MoreItemsThanThereAre", Kind::control_file, more_items_than_there_are},
      {"ManyItems", Kind::settings_file, many_items},
      {"OneItemOfManyElements", Kind::settings_file, one_item_of_many_elements},
      {"OverlappingLevels", Kind::settings_file, overlapping_levels_of_a_megabyte},
      {"LevelsAndNothingElse", Kind::settings_file, levels_and_nothing_else},
      {"ClaimsOfManyItems", Kind::settings_file, claims_of_many_items},
      {"PreviousVersion", Kind::settings_file, previous_version},
      {"PreviousVersionOfManyLevels", Kind::settings_file, previous_version_of_many_levels},
      {"ShortValues", Kind::value_list, short_values},
      {"BadValues", Kind::value_list, bad_values},
      {"EmptyValues", Kind::value_list, empty_values},
      {"OneLine", Kind::value_list, one_line},
      {"Zeros", Kind::value_list, zeros},
      {"ItemsOfALayout", Kind::layout_file, items_of_a_layout},
      {"NamedItems", Kind::layout_file, named_items},
      {"ChainOfReferences", Kind::layout_file, chain_of_references},
      {"UnknownKeys", Kind::layout_file, unknown_keys},
      {"NestedArrays", Kind::layout_file, nested_arrays},
      {"NestedTables", Kind::layout_file, nested_tables},
      {"DottedKeys", Kind::layout_file, dotted_keys},
      {"DottedHeaders", Kind::layout_file, dotted_headers},
      {"LongArray", Kind::layout_file, long_array},
      {"TablesInAnArray", Kind::layout_file, tables_in_an_array},
      {"SparseValues", Kind::layout_file, sparse_values},
      {"LongString", Kind::layout_file, long_string},
      {"Comments", Kind::layout_file, comments},
  };
  return all;
}

}  // namespace korvex::test
