#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/layout/layout.h"

namespace korvex::host {

// A layout, or what is wrong with it: the errors of the file in the order of their places, all of
// them unless there are very many, or the file is no layout at all. With errors the layout is not
// to be used.
struct LayoutReading {
  Layout layout;
  std::vector<LayoutError> errors;
};

// Whether a value list that is not there is an error: who generates from the layout needs all.
enum class MissingLists { allowed, refused };

// Reads a layout file. `records`, where given, stands for the number of records in the file, which
// may then be absent.
LayoutReading read_layout(const std::string& file, std::optional<RecordCount> records,
                          MissingLists lists = MissingLists::allowed);

// The same for who wants the records that the module itself makes: values beyond those are errors,
// too.
LayoutReading read_plain_layout(const std::string& file, std::optional<RecordCount> records,
                                MissingLists lists = MissingLists::allowed);

// The same for who hands the layout to the module: more records than a control file can say are an
// error, too.
LayoutReading read_module_layout(const std::string& file, std::optional<RecordCount> records,
                                 MissingLists lists = MissingLists::allowed);

// The first of them for a text that is already in memory; `file` only names it and anchors its
// paths.
LayoutReading parse_layout(std::string_view text, const std::string& file,
                           std::optional<RecordCount> records,
                           MissingLists lists = MissingLists::allowed);

}  // namespace korvex::host
