#include "host/layout/layout_writer.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <utility>

#include "host/layout/code_names.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

// U+0080 to U+009F, which in UTF-8 are this byte and their own.
constexpr char high_control_lead = '\xC2';
constexpr unsigned end_of_high_controls = 0xA0;

// The control character that a text begins with, and its size; no size for any other text.
std::pair<unsigned, std::size_t> control_at(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < ' ' || first == 0x7F) return {first, 1};
  const unsigned second = text.size() > 1 ? static_cast<unsigned char>(text[1]) : 0;
  const bool is_high = text.front() == high_control_lead && second < end_of_high_controls;
  return {second, is_high ? 2 : 0};
}

}  // namespace

std::string toml_text(std::string_view text) {
  std::string out = "\"";
  while (!text.empty()) {
    const auto [control, size] = control_at(text);
    if (size > 0) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04X", control);
      out += escape;
      text.remove_prefix(size);
      continue;
    }
    if (text.front() == '"' || text.front() == '\\') out += '\\';
    out += text.front();
    text.remove_prefix(1);
  }
  return out + '"';
}

std::string toml_texts(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : ", ") + toml_text(text);
  return "[" + list + "]";
}

namespace {

void write_remarks(const std::vector<std::string>& remarks, std::ostream& out) {
  // A line feed would end the comment, and bytes that are no characters the layout.
  for (const std::string& remark : remarks) out << "# " << platform::printable(remark) << "\n";
}

std::string attribute_of(Attribute attribute) {
  const std::string_view name = attribute_name(attribute);
  return name.empty() ? std::to_string(number_of(attribute)) : toml_text(name);
}

void write_keys(const std::vector<LayoutKey>& keys, std::ostream& out) {
  std::size_t width = 0;
  for (const LayoutKey& key : keys) width = std::max(width, key.name.size());
  for (const LayoutKey& key : keys) {
    out << key.name << std::string(width - key.name.size(), ' ') << " = " << key.value << "\n";
  }
}

void write_item(const ItemDraft& item, std::ostream& out) {
  const ItemAttributes& attributes = item.attributes;
  out << "\n";
  write_remarks(item.remarks, out);
  out << "[[item]]\nname      = " << toml_text(item.name)
      << "\nattribute = " << attribute_of(attributes.attribute) << "\n";
  const bool says_sign = is_on(attributes.signed_flag) && !is_always_signed(attributes.attribute);
  if (says_sign) out << "signed    = true\n";
  out << "digits    = " << attributes.digits << "\nlength    = " << attributes.length << "\n";
  if (attributes.decimals > 0) out << "decimals  = " << attributes.decimals << "\n";
  if (!item.nullable) out << "nullable  = false\n";
  out << "[item.values]\n";
  write_keys(item.values, out);
}

// A set of one item is its name.
std::string unique_sets(const std::vector<std::vector<std::string>>& sets) {
  std::string list;
  for (const std::vector<std::string>& set : sets) {
    list +=
        (list.empty() ? "" : ", ") + (set.size() == 1 ? toml_text(set.front()) : toml_texts(set));
  }
  return "[" + list + "]";
}

}  // namespace

void write_layout(const LayoutDraft& layout, std::ostream& out) {
  write_remarks(layout.remarks, out);
  std::vector<LayoutKey> keys = {{"kind", toml_text("table")}};
  // A layout is UTF-8, and there are tables whose names are not.
  if (platform::is_utf8(layout.table)) keys.push_back({"table", toml_text(layout.table)});
  keys.push_back({"records", std::to_string(layout.records)});
  keys.push_back({"data", toml_text(layout.data)});
  if (!layout.unique.empty()) keys.push_back({"unique", unique_sets(layout.unique)});
  if (layout.is_utf8) {
    keys.insert(keys.end(), {{"encoding", toml_text("utf-8")}, {"ways", "1"}, {"sets", "1"}});
  }
  if (layout.seed != 0) keys.push_back({"seed", std::to_string(layout.seed)});
  out << "\n[layout]\n";
  write_keys(keys, out);
  for (const ItemDraft& item : layout.items) write_item(item, out);
}

}  // namespace korvex::host
