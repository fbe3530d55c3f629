#include "host/commands/load_records.h"

#include "host/process/signals.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

std::string place(std::int64_t number, const std::vector<std::size_t>& columns,
                  const LoadPlan& plan, const RowFields& fields) {
  std::string text = "record " + std::to_string(number);
  const bool has_columns = !columns.empty();
  for (std::size_t i = 0; i < (has_columns ? columns.size() : fields.size()); ++i) {
    const std::size_t field = has_columns ? columns[i] : i;
    text += ", item " + platform::printable(plan.item_names[field]) + ", value ";
    text += fields[field].empty() ? "NULL" : "\"" + platform::printable(fields[field]) + "\"";
  }
  return text;
}

// The items that are to blame when the record is unknown; empty when not even they are known.
std::string items(const std::vector<std::size_t>& columns, const LoadPlan& plan) {
  std::string text;
  for (const std::size_t column : columns) {
    text += (text.empty() ? "item " : ", item ") + platform::printable(plan.item_names[column]);
  }
  return text;
}

}  // namespace

LoadRecords::LoadRecords(PreparedLayout& prepared, const LoadPlan& plan)
    : plan_(plan), records_(prepared, plan.forms) {}

bool LoadRecords::next(RowFields& fields) {
  if (!records_.next(fields)) {
    if (records_.failure().empty()) return false;
    throw BadRecord(records_.failure());
  }
  ++number_;
  if (const auto& bad = records_.unreadable()) {
    throw BadRecord("record " + std::to_string(number_) + ", item " +
                    platform::printable(plan_.item_names[bad->field]) + ", value \"" +
                    platform::printable_from_code_page(bad->value) +
                    "\": the value has bytes that are no character of code page 932");
  }
  return true;
}

std::string place_of(const RefusedRow& row, PreparedLayout& prepared, const LoadPlan& plan) {
  std::string found = items(row.columns, plan);
  if (row.record == 0 && !row.blame) return found;
  LoadRecords records(prepared, plan);
  bool is_second = false;
  for (RowFields fields; records.next(fields);) {
    check_interruption();
    const std::int64_t number = records.number();
    if (number == row.record) return place(number, row.columns, plan, fields);
    if (row.record > 0 || number < row.first) continue;
    if (number > row.last) break;
    const std::vector<std::size_t> columns = row.blame(fields);
    if (columns.empty()) continue;
    found = place(number, columns, plan, fields);
    if (!row.is_repetition || is_second) break;
    is_second = true;
  }
  return found;
}

}  // namespace korvex::host
