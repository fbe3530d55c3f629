#include "host/parts/fingerprint.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <vector>

#include "host/layout/layout_syntax.h"
#include "host/parts/digest.h"

namespace korvex::host {

namespace {

// Rises when the same layout gives other bytes than before.
constexpr std::uint64_t data_version = 1;

// The layout without what does not change the records: comments, blanks, the order of keys, and
// keys whose values are where the files are, or are distinguished here.
std::string meaning_of(const Layout& layout) {
  toml::table table;
  if (parse_syntax(layout.text, table)) return layout.text;
  if (toml::table* header = table["layout"].as_table()) {
    for (const char* key : {"data", "settings", "work", "records"}) header->erase(key);
  }
  std::ostringstream text;
  text << toml::default_formatter(table, toml::default_formatter::default_flags);
  return text.str();
}

void add_settings(const ClFmtColInf& column, Digest& digest) {
  FmtColRec record = column.record;
  std::memset(record.enumeration_path, 0, sizeof record.enumeration_path);
  digest.add_record(record);
  digest.add(std::uint64_t{column.elements.size()});
  for (const auto& element : column.elements) digest.add_record(element->record);
}

void add_records(const PreparedLayout& prepared, Digest& digest) {
  const Layout& layout = prepared.layout();
  digest.add(layout.records.number());
  digest.add(meaning_of(layout));
  digest.add(layout.salt);
  for (std::size_t i = 0; i < prepared.items().size(); ++i) {
    if (const auto* column = prepared.items()[i].column) add_settings(*column, digest);
    // Nobody needs all fields of a layout that only keys lead to.
    const sources::Field* field = prepared.is_plain() ? nullptr : prepared.fields()[i].get();
    if (field != nullptr && !field->source().content().empty()) {
      digest.add(field->source().content());
    }
  }
  for (const ItemGenerator* item : prepared.run().fields()) {
    const ClEnumDataList* const list = item->enumeration().get();
    if (list == nullptr) continue;
    digest.add(list->text());
    for (const std::uint16_t size : list->sizes()) digest.add(size);
  }
}

// The layouts that keys lead to. The order of their digests is the same in any folder.
void add_relatives(const PreparedLayout& prepared, Digest& digest) {
  std::vector<std::string> digests;
  for (const auto& relative : prepared.relatives()) {
    Digest own;
    add_records(*relative, own);
    digests.push_back(own.text());
  }
  std::sort(digests.begin(), digests.end());
  for (const std::string& own : digests) digest.add(own);
}

}  // namespace

std::string fingerprint(const PreparedLayout& prepared, const OutputForm& form) {
  Digest digest;
  digest.add(data_version);
  digest.add(text_of(form));
  const bool has_table = !form.is_data_file && form.format.dialect == Dialect::sql;
  digest.add(has_table ? sql_table(form.format, prepared.layout()) : "");
  add_records(prepared, digest);
  add_relatives(prepared, digest);
  return digest.text();
}

}  // namespace korvex::host
