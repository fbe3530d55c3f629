#include "host/layout/new_item.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "formatlang/default_settings.h"
#include "host/layout/code_names.h"
#include "host/layout/item_size.h"
#include "host/layout/item_texts.h"
#include "host/layout/layout_writer.h"
#include "platform/codepage.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::int32_t longest_text = 32767;

std::optional<std::int32_t> number_in(std::string_view text, std::int32_t lowest,
                                      std::int32_t highest) {
  std::int32_t value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool is_whole = failure == std::errc() && end == text.data() + text.size();
  return is_whole && value >= lowest && value <= highest ? std::optional(value) : std::nullopt;
}

// "key = value  # comment", one below the other.
void append_key(std::string_view key, std::string_view value, std::string_view comment,
                std::ostream& out) {
  constexpr std::size_t key_width = 11;
  constexpr std::size_t value_width = 18;
  std::string line(key);
  line.resize(std::max(line.size(), key_width), ' ');
  line.append(" = ").append(value);
  if (!comment.empty()) {
    line.resize(std::max(line.size(), key_width + value_width), ' ');
    line.append(" # ").append(comment);
  }
  out << line << "\n";
}

void append_size(const ItemAttributes& item, std::ostream& out) {
  if (!needs_size(item)) return;
  const bool has_digits = is_numeric(item.attribute) || is_national(item.attribute);
  append_key(has_digits ? "digits" : "length",
             std::to_string(has_digits ? item.digits : item.length), "", out);
  if (item.decimals > 0) {
    append_key("decimals", std::to_string(item.decimals), "of the digits", out);
  }
}

// The range of an attribute, with a word on each key.
void append_range(const ItemAttributes& attributes, bool explains, std::ostream& out) {
  const RangeTexts texts = default_settings(attributes).value_or(RangeTexts{});
  const auto append = [&](std::string_view key, const std::string& text, std::string_view comment) {
    append_key(key, toml_text(platform::to_utf8(text)), explains ? comment : "", out);
  };
  append("type", "range", "or \"initial\" (empty), \"reference\", \"enumeration\"");
  append("format", texts.format, "");
  append("start", texts.start, "");
  append("end", texts.end, "");
  append("increment", texts.increment, "above 0, at most 9; with a minus to count down");
  append("exceeded", "repeat", "after the end: from the start, or \"initialize\": empty");
}

// The first item explains the keys.
void append_item(const NewItem& item, bool explains, std::ostream& out) {
  const ItemAttributes& attributes = item.attributes;
  out << "\n[[item]]\n";
  append_key("name", toml_text(item.name), "", out);
  append_key("attribute", toml_text(attribute_name(attributes.attribute)),
             explains ? "\"national\" is full-width, \"plain-character\" never quoted" : "", out);
  if (is_numeric(attributes.attribute)) {
    append_key("signed", is_on(attributes.signed_flag) ? "true" : "false", "", out);
  }
  append_size(attributes, out);
  out << "[item.values]\n";
  for (const auto& [key, value] : item.values.source) append_key(key, value, "", out);
  if (item.values.source.empty()) append_range(attributes, explains, out);
  if (!item.values.order.empty()) append_key("order", toml_text(item.values.order), "", out);
  if (!item.values.empty.empty()) {
    append_key("empty", toml_text(item.values.empty), "share of records without a value", out);
  }
}

}  // namespace

bool needs_size(const ItemAttributes& item) {
  ItemAttributes sized = item;
  return complete_size({}, sized).has_value();
}

bool needs_decimals(const ItemAttributes& item) {
  return is_numeric(item.attribute) && needs_size(item);
}

std::string take_name(std::string_view text, NewItem& item) {
  const auto name = platform::from_utf8(text);
  if (text.empty() || !name || name->size() > longest_item_name ||
      text.find_first_of(std::string_view("\0\n", 2)) != std::string_view::npos) {
    return "a name of up to " + std::to_string(longest_item_name) + " bytes in code page 932";
  }
  item.name = text;
  return {};
}

std::string take_attribute(std::string_view text, NewItem& item) {
  const auto code = attribute_by_name(text);
  if (!code) return "one of " + list_attribute_names();
  item.attributes.attribute = *code;
  // The whole-number attributes have defaults with a sign only.
  const bool has_sign =
      is_always_signed(*code) || *code == attribute::integer || *code == attribute::small_integer;
  item.attributes.signed_flag = flag_of(has_sign);
  if (!needs_size(item.attributes)) complete_size({}, item.attributes);
  return {};
}

std::string take_size(std::string_view text, NewItem& item) {
  ItemAttributes& attributes = item.attributes;
  const bool has_numbers = is_numeric(attributes.attribute);
  const bool is_signed = has_numbers && text.ends_with('+');
  if (is_signed) text.remove_suffix(1);
  const std::int32_t highest = has_numbers ? max_number_digits : longest_text;
  const std::int32_t lowest = item.values.longest;
  const auto size = number_in(text, lowest, highest);
  if (!size) {
    return (has_numbers ? "digits from " : "a length from ") + std::to_string(lowest) + " to " +
           std::to_string(highest) +
           (has_numbers ? ", with a + after them for a signed number" : "");
  }
  if (is_signed) attributes.signed_flag = Flag::on;
  complete_size({*size, std::nullopt}, attributes);
  return {};
}

std::string take_decimals(std::string_view text, NewItem& item) {
  const auto decimals = number_in(text, 0, item.attributes.digits);
  if (!decimals) return "decimals from 0 to " + std::to_string(item.attributes.digits);
  item.attributes.decimals = *decimals;
  complete_size({item.attributes.digits, std::nullopt}, item.attributes);
  return {};
}

std::string take_item(std::string_view text, NewItem& item) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = text.find(':');
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  std::string expected = take_name(parts[0], item);
  if (expected.empty()) expected = take_attribute(parts.size() > 1 ? parts[1] : "", item);
  if (!expected.empty()) return expected;
  const std::size_t most = needs_decimals(item.attributes) ? 4
                           : needs_size(item.attributes)   ? 3
                                                           : 2;
  if (parts.size() > most) return "at most " + std::to_string(most) + " parts";
  if (most > 2) expected = take_size(parts.size() > 2 ? parts[2] : "", item);
  if (expected.empty() && parts.size() > 3) expected = take_decimals(parts[3], item);
  return expected;
}

std::string layout_text(const NewLayout& layout) {
  std::ostringstream out;
  out << "# What a data file holds. `korvex preview` shows its first records, `korvex "
      << (layout.is_believable ? "export -o FILE" : "generate") << "` writes it.\n"
      << "# \"man korvex-layout\" has every key, also for names, places, lists and templates, "
         "which "
         "`korvex export` writes.\n\n[layout]\n";
  append_key("kind", toml_text(layout.kind),
             "\"record\", \"table\" or \"iso\": line ends and dates", out);
  append_key("records", std::to_string(layout.records.number()), "", out);
  append_key("data", toml_text(layout.data), "", out);
  append_key("quote", toml_text("none"), "\"double\": texts and dates between quotation marks",
             out);
  if (layout.is_believable) {
    append_key("encoding", toml_text("utf-8"), "", out);
    append_key("ways", "1", "the version of shuffling and drawing, so that records stay", out);
    append_key("sets", "1", "the same of names and places", out);
  }
  for (std::size_t i = 0; i < layout.items.size(); ++i) {
    append_item(layout.items[i], i == 0, out);
  }
  return out.str();
}

}  // namespace korvex::host
