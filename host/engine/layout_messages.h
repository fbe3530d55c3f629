#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "host/engine/settings_editor.h"
#include "host/layout/layout_reader.h"

// What the commands say about a layout, on the stream for messages.
namespace korvex::host {

// Every error with its place. Answers whether there was one.
bool print_layout_errors(const Layout& layout, const std::vector<LayoutError>& errors,
                         std::ostream& messages);
bool print_layout_errors(const LayoutReading& reading, std::ostream& messages);

// Warns of items with impossible digits, which are used anyway.
void print_digit_warnings(const Layout& layout, std::ostream& messages);

// The same, and a warning, once for each, of value lists that are not in the code page in which
// they will be read.
void print_warnings(const Layout& layout, std::ostream& messages);

// Says where a list that is in UTF-8 would be read as another text. Answers whether it would.
bool print_misread_list(const std::string& path, std::ostream& messages);

// Every character of a range for which the code page has another one. Answers whether there is one.
bool print_replaced_characters(const Layout& layout, std::ostream& messages);

// Says which items have neither values in the layout nor settings: the records lack them.
void print_left_out(const std::vector<const LayoutItem*>& left_out, const Layout& layout,
                    std::ostream& messages);

// Says which items the settings do not fit. Answers whether there was one.
bool print_unfit_items(const std::vector<const LayoutItem*>& unfit, const Layout& layout,
                       std::ostream& messages);

// Every failure of writing the layout's settings. Answers whether there was one.
bool print_failures(const SettingsResult& result, const Layout& layout, std::ostream& messages);

}  // namespace korvex::host
