// The types of values that the module knows.

#include <filesystem>

#include "host/layout/item_texts.h"
#include "host/layout/layout_paths.h"
#include "host/layout/value_types.h"
#include "values/records.h"

namespace korvex::host {

namespace {

// Texts must leave room for the terminator of their field.
constexpr std::size_t longest_format = format_text_size - 1;
constexpr std::size_t longest_enumeration_path = enumeration_path_size - 1;

constexpr const char* default_increment = "1";

constexpr std::array<std::string_view, 6> range_keys = {"format",    "start",    "end",
                                                        "increment", "exceeded", "custom"};
constexpr std::array<std::string_view, 1> reference_keys = {"item"};
constexpr std::array<std::string_view, 2> enumeration_keys = {"file", "exceeded"};

void read_nothing(const ValuesReading&) {}

void read_range(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  ItemValues& values = reading.values;
  reader.require("format", "a format such as \"%5U\"");
  values.texts.format =
      character_text(reader, "format", reader.text("format"), longest_format, &values.replaced);
  values.texts.start =
      character_text(reader, "start", reader.text_or_integer("start"), unbounded, &values.replaced);
  values.texts.end =
      character_text(reader, "end", reader.text_or_integer("end"), unbounded, &values.replaced);
  values.texts.increment = default_increment;
  if (reader.has("increment")) {
    values.texts.increment =
        character_text(reader, "increment", reader.text_or_integer("increment"), unbounded);
  }
  const auto place = [&](std::string_view key) {
    return reader.has(key) ? reader.place(key) : SourcePlace{};
  };
  values.places = {place("format"), place("start"), place("end"), place("increment")};
  read_exceeded(reading);
  values.choices.custom_format = flag_of(reader.boolean("custom").value_or(true));
}

void read_reference(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  reader.require("item", "the name of another item");
  reading.values.item_name = item_text(reader, reading.layout, "item", longest_item_name);
  reading.values.origin = reader.place("item");
}

void read_enumeration(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  ItemValues& values = reading.values;
  reader.require("file", "the path of a text file with a value a line");
  // The settings file outlives the folder that the program happens to run in.
  values.file = read_path(reader, "file", reading.layout.file);
  values.origin = reader.place("file");
  if (!values.file.empty()) values.file = std::filesystem::absolute(values.file).string();
  if (values.file.size() > longest_enumeration_path) {
    reader.report(reader.place("file"),
                  "file gives a path of " + std::to_string(values.file.size()) +
                      " bytes, expected at most " + std::to_string(longest_enumeration_path));
  }
  read_exceeded(reading);
}

}  // namespace

void read_exceeded(const ValuesReading& reading) {
  constexpr std::array<std::string_view, 2> names = {"initialize", "repeat"};
  const auto exceeded = reading.reader.choice("exceeded", names);
  reading.values.choices.exceeded_action =
      exceeded ? static_cast<ExceededAction>(*exceeded) : exceeded_action::repeat;
}

constinit const ValueType initial_type = {
    "initial", ValueSource::initial, Period::none, {}, read_nothing};
constinit const ValueType range_type = {"range", ValueSource::range, Period::known, range_keys,
                                        read_range};
constinit const ValueType reference_type = {"reference", ValueSource::reference, Period::known,
                                            reference_keys, read_reference};
constinit const ValueType enumeration_type = {"enumeration", ValueSource::enumeration,
                                              Period::known, enumeration_keys, read_enumeration};
constinit const ValueType default_type = {
    "default", ValueSource::attribute_default, Period::known, {}, read_nothing};

}  // namespace korvex::host
