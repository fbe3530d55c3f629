#include "host/commands/preview_command.h"

#include <ostream>

#include "host/layout/failure_text.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/record_source.h"
#include "host/text/text_table.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {
constexpr std::int32_t default_preview = 20;
}  // namespace

int run_preview(const PreviewOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  const int status =
      prepared.prepare(options.layout, options.records, messages, {.asked = RecordsAsked::first});
  if (status != exit_status::done) return status;
  TextTable table;
  std::vector<TextTable::Cell> names;
  for (const PreparedItem& item : prepared.items()) {
    if (is_numeric(item.item->attributes.attribute)) table.align_right(names.size());
    names.push_back(TextTable::from_utf8(item.item->name));
  }
  table.add(std::move(names));
  RecordSource source(prepared);
  std::int32_t left = options.records.value_or(default_preview);
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
  if (source.failure().empty()) return exit_status::done;
  messages << source.failure() << std::endl;
  return exit_status::failed;
}

}  // namespace korvex::host
