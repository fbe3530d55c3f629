#include "host/sources/template_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/sources/letter_forms.h"

namespace korvex::sources {
namespace {

struct NamedFilter {
  std::string_view name;
  Filter filter;
};

constexpr NamedFilter named_filters[] = {
    {"lower", Filter::lower}, {"upper", Filter::upper}, {"ascii", Filter::ascii}};

std::optional<Filter> find_filter(std::string_view name) {
  const auto* found = std::find_if(std::begin(named_filters), std::end(named_filters),
                                   [&](const NamedFilter& named) { return named.name == name; });
  if (found == std::end(named_filters)) return std::nullopt;
  return found->filter;
}

// Reads what is between braces, at an offset of the template: an item and its filters.
std::optional<TemplateFault> parse_item(std::string_view inside, std::size_t offset,
                                        TemplatePart& part) {
  const std::size_t name_size = std::min(inside.find('|'), inside.size());
  part.item = inside.substr(0, name_size);
  part.item_offset = offset;
  if (part.item.empty()) return TemplateFault{offset, "expected the name of an item"};
  for (std::size_t begin = name_size; begin < inside.size();) {
    ++begin;
    const std::size_t end = std::min(inside.find('|', begin), inside.size());
    const std::string_view name = inside.substr(begin, end - begin);
    const std::optional<Filter> filter = find_filter(name);
    if (!filter) {
      return TemplateFault{offset + begin, "is no filter: \"" + std::string(name) +
                                               "\", expected \"lower\", \"upper\" or \"ascii\""};
    }
    part.filters.push_back(*filter);
    begin = end;
  }
  return std::nullopt;
}

}  // namespace

std::string filtered(Filter filter, std::string_view text) {
  switch (filter) {
    case Filter::lower:
      return lower_case(text);
    case Filter::upper:
      return upper_case(text);
    case Filter::ascii:
      break;
  }
  return ascii_form(text);
}

std::optional<TemplateFault> parse_template(std::string_view text,
                                            std::vector<TemplatePart>& parts) {
  TemplatePart part;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '}' && !text.substr(i).starts_with("}}")) {
      return TemplateFault{i, "expected \"{\" and an item before \"}\", or \"}}\" for a brace"};
    }
    if (text[i] != '{' && text[i] != '}') {
      part.literal += text[i];
    } else if (text[i] == '}' || text.substr(i).starts_with("{{")) {
      part.literal += text[i];
      ++i;
    } else {
      const std::size_t end = text.find('}', i);
      if (end == std::string_view::npos) {
        return TemplateFault{i, "expected \"}\" after the item, or \"{{\" for a brace"};
      }
      if (auto fault = parse_item(text.substr(i + 1, end - i - 1), i + 1, part)) return fault;
      parts.push_back(std::exchange(part, {}));
      i = end;
    }
  }
  if (!part.literal.empty()) parts.push_back(std::move(part));
  return std::nullopt;
}

}  // namespace korvex::sources
