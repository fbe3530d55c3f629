#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/ways/refusal.h"

namespace korvex::sources {

// What is done with the text of an item before it is put in its place.
enum class Filter { lower, upper, ascii };

std::string filtered(Filter filter, std::string_view text);

// Text as it stands, followed by the text of an item. The last part of a template may have no item.
struct TemplatePart {
  std::string literal;
  std::string item;
  std::size_t item_offset = 0;  // in the template, in bytes
  std::vector<Filter> filters;  // in their order
};

struct TemplateFault {
  std::size_t offset = 0;  // in the template, in bytes
  std::string text;        // what is wrong there and what is expected
};

// Reads a template such as "{FIRST|lower}.{LAST|ascii|lower}@example.org". "{{" and "}}" are
// braces. Returns the fault, if any, and otherwise fills `parts`.
std::optional<TemplateFault> parse_template(std::string_view text,
                                            std::vector<TemplatePart>& parts);

}  // namespace korvex::sources
