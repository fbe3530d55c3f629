#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// The words of a column's or table's name, in small letters: it is cut where no letter stands,
// where a capital follows a small letter, in front of the last of several capitals, and between
// letters and digits. ä, ö, ü and ß become ae, oe, ue and ss.
std::vector<std::string> name_words(std::string_view name);

}  // namespace korvex::host
