#include "host/layout/own_text.h"
#include "host/layout/source_place.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 1> template_keys = {"text"};

void read_template(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  reader.require("text", "a text with items such as \"{FIRST} {LAST}\"");
  const auto text = placed_text(reader, "text");
  if (!text) return;
  if (const auto bad = find_bad_character(reading.layout, text->text)) {
    reader.report(text->place, "text" + *bad);
  }
  std::vector<sources::TemplatePart> parts;
  const auto place_of_byte = [&](std::size_t offset) {
    return place_in_string(reading.layout.text, text->place, offset);
  };
  if (const auto fault = sources::parse_template(text->text, parts)) {
    reader.report(place_of_byte(fault->offset), "text: " + fault->text);
  }
  TemplateValues values;
  for (sources::TemplatePart& part : parts) {
    const SourcePlace place = place_of_byte(part.item_offset);
    values.parts.push_back({std::move(part), place});
  }
  reading.values.own = std::move(values);
}

}  // namespace

constinit const ValueType template_type = {"template", ValueSource::own, Period::none,
                                           template_keys, read_template};

}  // namespace korvex::host
