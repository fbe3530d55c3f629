#include "host/layout/layout_writer.h"

#include <cstdio>
#include <ostream>

#include "host/layout/attribute_names.h"

namespace korvex::host {

namespace {

bool is_control(char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7F'; }

std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char byte : text) {
    if (is_control(byte)) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04X", static_cast<unsigned>(byte));
      out += escape;
      continue;
    }
    if (byte == '"' || byte == '\\') out += '\\';
    out += byte;
  }
  return out + '"';
}

void write_remarks(const std::vector<std::string>& remarks, std::ostream& out) {
  for (const std::string& remark : remarks) {
    out << "# ";
    // A line feed would end the comment.
    for (const char byte : remark) out << (is_control(byte) ? ' ' : byte);
    out << "\n";
  }
}

std::string attribute_of(std::int32_t code) {
  const std::string_view name = attribute_name(code);
  return name.empty() ? std::to_string(code) : quoted(name);
}

void write_values(const ValuesDraft& values, std::ostream& out) {
  out << "[item.values]\n";
  switch (values.source) {
    case ValuesDraft::Source::initial:
      out << "type = \"initial\"\n";
      break;
    case ValuesDraft::Source::range:
      out << "type      = \"range\"\nformat    = " << quoted(values.format)
          << "\nstart     = " << quoted(values.start) << "\nend       = " << quoted(values.end)
          << "\n";
      if (values.increment != "1") out << "increment = " << quoted(values.increment) << "\n";
      break;
    case ValuesDraft::Source::enumeration:
      out << "type = \"enumeration\"\nfile = " << quoted(values.file) << "\n";
      break;
    case ValuesDraft::Source::reference:
      out << "type = \"reference\"\nitem = " << quoted(values.item_name) << "\n";
      break;
  }
  if (values.repeat_level > 0) {
    out << "repeat = { level = " << values.repeat_level << ", count = 1 }\n";
  }
}

void write_item(const ItemDraft& item, std::ostream& out) {
  const ItemAttributes& attributes = item.attributes;
  out << "\n";
  write_remarks(item.remarks, out);
  out << "[[item]]\nname      = " << quoted(item.name)
      << "\nattribute = " << attribute_of(attributes.attribute) << "\n";
  const bool says_sign = attributes.signed_flag != 0 && !is_quoted_character(attributes.attribute);
  if (says_sign) out << "signed    = true\n";
  out << "digits    = " << attributes.digits << "\nlength    = " << attributes.length << "\n";
  if (attributes.decimals > 0) out << "decimals  = " << attributes.decimals << "\n";
  if (!item.nullable) out << "nullable  = false\n";
  write_values(item.values, out);
}

}  // namespace

void write_layout(const LayoutDraft& layout, std::ostream& out) {
  write_remarks(layout.remarks, out);
  out << "\n[layout]\nkind    = \"table\"\nrecords = " << layout.records
      << "\ndata    = " << quoted(layout.data) << "\n";
  for (const ItemDraft& item : layout.items) write_item(item, out);
}

}  // namespace korvex::host
