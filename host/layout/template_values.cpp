#include "host/layout/own_text.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 1> keys = {"text"};

void read(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  reader.require("text", "a text with items such as \"{FIRST} {LAST}\"");
  const auto text = placed_text(reader, "text");
  if (!text) return;
  if (const auto bad = find_bad_character(reading.layout, text->text)) {
    reader.report(text->place, "text" + *bad);
  }
  reading.values.own = TemplateValues{*text};
}

}  // namespace

constinit const ValueType template_type = {"template", ValueSource::own, Period::none, keys, read};

}  // namespace korvex::host
