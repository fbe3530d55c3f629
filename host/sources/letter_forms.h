#pragma once

#include <string>
#include <string_view>

// Capitals and small letters of all scripts that have both, one letter for one, but for "ß", whose
// capitals are "SS". Data must not depend on a library or locale, so the table is our own. Texts
// are UTF-8.
namespace korvex::sources {

std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);

// A text in UTF-8 without marks and ligatures, in ASCII: "Łódź" is "Lodz", "Straße" is "Strasse".
// What has no such form, as "山", is left out.
std::string ascii_form(std::string_view text);

}  // namespace korvex::sources
