#pragma once

#include <string>
#include <string_view>

namespace korvex::sources {

// A text in UTF-8 without marks and ligatures, in ASCII: "Łódź" is "Lodz", "Straße" is "Strasse".
// What has no such form, as "山", is left out.
std::string ascii_form(std::string_view text);

}  // namespace korvex::sources
