#include "host/imports/database_import.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "host/databases/sql_names.h"
#include "host/imports/lists.h"
#include "host/process/signals.h"

namespace korvex::host {

namespace {

constexpr int years_of_dates = 3;

// Whole years before this one, and this one up to yesterday.
ImportPeriod period_before(std::chrono::year_month_day today) {
  using namespace std::chrono;
  return {(today.year() - years(years_of_dates)) / January / 1, sys_days(today) - days(1)};
}

// The bare name where it is the only one, also for file systems that don't tell cases apart.
std::vector<std::string> layout_files(const DatabaseModel& model) {
  std::vector<std::string> files(model.tables.size());
  std::multiset<std::string> bare_names;
  const auto lowered = [](std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
  };
  for (const ImportedTable& table : model.tables) {
    if (!table.is_kept) bare_names.insert(lowered(table.schema.bare_name));
  }
  std::set<std::string> taken;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (model.tables[i].is_kept) continue;
    const TableSchema& schema = model.tables[i].schema;
    const bool is_alone = bare_names.count(lowered(schema.bare_name)) == 1;
    const std::string stem = file_name_part(is_alone ? schema.bare_name : schema.name);
    std::string name = stem;
    for (int next = 2; !taken.insert(lowered(name)).second; ++next) {
      name = stem + "." + std::to_string(next);
    }
    files[i] = name + ".toml";
  }
  return files;
}

}  // namespace

DatabaseImport import_database(Database& database, const DatabaseImportOptions& options) {
  const DatabaseModel model = read_database(database, options.choice, options.is_sqlite);
  DatabaseImport import;
  for (const std::string& pattern : model.unmatched) {
    import.remarks.push_back("no table is named " + pattern);
  }
  for (const LeftOutTable& table : model.left_out) {
    import.remarks.push_back(table.name + ": left out, " + table.reason);
  }
  ImportPlan plan{model,
                  database,
                  period_before(options.today),
                  options.is_plain,
                  layout_files(model),
                  wished_records(model, options.wish),
                  options.is_plain ? Sums{} : find_sums(model),
                  {}};
  std::vector<FileDraft> lists;
  for (const std::size_t table : tables_in_order(model)) {
    check_interruption();
    plan_table(plan, table);
    PlannedTable& planned = plan.planned[table];
    std::ostringstream text;
    write_layout(planned.layout, text);
    import.files.push_back({planned.file, text.str()});
    for (FileDraft& list : planned.lists) lists.push_back(std::move(list));
    for (const std::string& remark : planned.remarks) {
      import.remarks.push_back(planned.layout.table + ": " + remark);
    }
    import.gaps += planned.gaps;
  }
  import.layouts = import.files.size();
  std::move(lists.begin(), lists.end(), std::back_inserter(import.files));
  return import;
}

}  // namespace korvex::host
