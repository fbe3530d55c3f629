#include "host/layout/layout_paths.h"
#include "host/layout/own_text.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 4> list_keys = {"values", "file", "column", "exceeded"};

void read_list(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  ListValues list;
  list.values = placed_texts(reader, reading.layout, "values");
  list.file = read_path(reader, "file", reading.layout.file);
  list.file_place = reader.place("file");
  list.column = placed_text(reader, "column");
  if (reader.has("values") == reader.has("file")) {
    reader.report(reader.has("file") ? list.file_place : reader.place(),
                  reader.has("file") ? "file is given together with values, expected one of the two"
                                     : "[item.values] has neither values nor file, expected values "
                                       "or the path of a text file");
  }
  if (reader.has("values") && list.column) {
    reader.report(list.column->place, "column is given together with values, expected file");
  }
  read_exceeded(reading);
  reading.values.own = std::move(list);
}

}  // namespace

constinit const ValueType list_type = {"list", ValueSource::own, Period::known, list_keys,
                                       read_list};

}  // namespace korvex::host
