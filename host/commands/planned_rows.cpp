#include "host/commands/planned_rows.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "host/commands/load_plan.h"
#include "host/commands/load_records.h"
#include "host/process/scratch_folder.h"
#include "platform/path.h"

namespace korvex::host {

TextRows make_planned_rows(const WantedRecords& wanted) {
  const ScratchFolder folder;
  if (folder.path().empty()) throw std::runtime_error(folder.failure());
  for (const FileDraft& file : wanted.files) {
    const std::string path = platform::join_path(folder.path(), file.name);
    std::ofstream out(path, std::ios::binary);
    out << file.content;
    out.close();
    if (!out) throw std::runtime_error(path + ": cannot be written");
  }
  PreparedLayout prepared;
  std::ostringstream ignored;
  const std::string layout = platform::join_path(folder.path(), wanted.file);
  if (prepared.prepare(layout, std::nullopt, ignored) != ExitStatus::done) return {};
  const LoadPlan plan = plan_load(prepared, wanted.table);
  std::vector<std::size_t> places;
  for (const std::string& column : wanted.columns) {
    const auto found = std::find_if(plan.columns.begin(), plan.columns.end(), [&](std::size_t i) {
      return wanted.table.columns[i].name == column;
    });
    if (found == plan.columns.end()) return {};
    places.push_back(static_cast<std::size_t>(found - plan.columns.begin()));
  }
  TextRows rows;
  LoadRecords records(prepared, plan);
  for (RowFields fields; rows.size() < wanted.most && records.next(fields);) {
    std::vector<std::string> row;
    for (const std::size_t place : places) {
      if (!fields[place].empty()) row.emplace_back(fields[place]);
    }
    if (row.size() == places.size()) rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace korvex::host
