#include <algorithm>
#include <ostream>

#include "host/commands/commands.h"
#include "host/layout/failure_text.h"
#include "host/layout/layout_paths.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/record_source.h"
#include "host/text/text_table.h"
#include "platform/printable_text.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

constexpr RecordCount default_preview(20);
constexpr RecordCount default_of_several(5);

ExitStatus preview(const std::string& layout, std::optional<RecordCount> records, RecordCount shown,
                   std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  const ExitStatus status =
      prepared.prepare(layout, records, messages, {.asked = RecordsAsked::first});
  if (status != ExitStatus::done) return status;
  TextTable table;
  std::vector<TextTable::Cell> names;
  for (const PreparedItem& item : prepared.written()) {
    if (is_numeric(item.item->attributes.attribute)) table.align_right(names.size());
    names.push_back(TextTable::from_utf8(item.item->name));
  }
  table.add(std::move(names));
  RecordSource source(prepared);
  std::uint64_t left = records.value_or(shown).number();
  for (std::vector<std::string_view> values; left > 0 && source.next(values); --left) {
    check_interruption();
    std::vector<TextTable::Cell> row;
    for (const std::string_view value : values) {
      row.push_back(source.encoding() == TextEncoding::utf8 ? TextTable::from_utf8(value)
                                                            : TextTable::from_code_page(value));
    }
    table.add(std::move(row));
  }
  table.print(out);
  out.flush();
  if (source.failure().empty()) return ExitStatus::done;
  messages << source.failure() << std::endl;
  return ExitStatus::failed;
}

}  // namespace

ExitStatus run_preview(const PreviewOptions& options, std::ostream& out, std::ostream& messages) {
  const auto layouts = layouts_at(options.layout, messages);
  if (!layouts) return ExitStatus::wrong_usage;
  if (!is_folder(options.layout)) {
    return preview(options.layout, options.records, default_preview, out, messages);
  }
  ExitStatus worst = ExitStatus::done;
  for (const std::string& layout : *layouts) {
    out << (layout == layouts->front() ? "" : "\n") << platform::printable(layout) << "\n";
    worst = worst_of(worst, preview(layout, options.records, default_of_several, out, messages));
  }
  out.flush();
  return worst;
}

}  // namespace korvex::host
