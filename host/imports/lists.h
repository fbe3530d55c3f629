#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/imports/table_planner.h"

namespace korvex::host {

// The keys of a list: the values themselves where they are few, else those of a file beside the
// layout, which is added to the lists.
std::vector<LayoutKey> list_keys(std::vector<std::string> values, const std::string& layout_file,
                                 const std::string& column, std::vector<FileDraft>& lists);

// Adds a file with the name of a layout and of what it is for, and answers its name.
std::string add_list_file(const std::string& layout_file, const std::string& column,
                          std::string content, std::vector<FileDraft>& lists);

// The values of columns that take the rows of one file, which is added to the lists. Its columns
// have the names, unless it is one.
std::vector<ColumnValues> table_values(const TextRows& rows, const std::vector<std::string>& names,
                                       const std::string& layout_file, const std::string& column,
                                       std::vector<FileDraft>& lists);

// A line of a list, in code page 932 where that is asked for; nothing for a text that is none.
std::optional<std::string> list_line(std::string_view text, bool is_encoded);

// The keys of a list in code page 932, which always has a file, and the item for it: one for the
// numbers of the column's type where all values fit, else a text with room for them.
std::vector<LayoutKey> enumeration_keys(const std::vector<std::string>& lines,
                                        const ColumnSchema& column, const std::string& layout_file,
                                        std::vector<FileDraft>& lists, ItemAttributes& item);

// A name without what a file's name, or the layout that has it, cannot hold.
std::string file_name_part(std::string_view name);

}  // namespace korvex::host
