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

// The bare name where it is the only one, also for file systems that ignore case.
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

class Import {
 public:
  explicit Import(ImportPlan plan) : plan_(std::move(plan)) {}

  PlannedTable& add(std::size_t table) {
    check_interruption();
    plan_table(plan_, table);
    PlannedTable& planned = plan_.planned[table];
    std::ostringstream text;
    write_layout(planned.layout, text);
    made_.files.push_back({planned.file, text.str()});
    order_.push_back(table);
    for (const std::string& remark : planned.remarks) say(planned, remark);
    made_.gaps += planned.gaps;
    made_.items += planned.layout.items.size();
    return planned;
  }

  void say(const PlannedTable& table, const std::string& remark) {
    made_.remarks.push_back(table.layout.table + ": " + remark);
  }

  DatabaseImport finish() {
    made_.layouts = made_.files.size();
    for (const std::size_t table : order_) {
      std::vector<FileDraft>& lists = plan_.planned[table].lists;
      std::move(lists.begin(), lists.end(), std::back_inserter(made_.files));
    }
    return std::move(made_);
  }

 private:
  ImportPlan plan_;
  std::vector<std::size_t> order_;  // of the tables
  DatabaseImport made_;
};

// Plans all tables. Those that can have no more rows keep what they have, and the others are
// planned once more, with keys to these.
DatabaseImport plan_tables(Database& database, const DatabaseImportOptions& options,
                           DatabaseModel& model) {
  for (;;) {
    Import import({.model = model,
                   .database = database,
                   .period = period_before(options.today),
                   .is_plain = options.is_plain,
                   .files = layout_files(model),
                   .records = wished_records(model, options.wish),
                   .sums = options.is_plain ? Sums{} : find_sums(model),
                   .make_records = options.make_records});
    std::vector<std::pair<std::size_t, std::string>> left_out;
    for (const std::size_t table : tables_in_order(model)) {
      const std::string& obstacle = import.add(table).obstacle;
      if (!obstacle.empty()) left_out.emplace_back(table, obstacle);
    }
    if (left_out.empty()) return import.finish();
    for (const auto& [table, obstacle] : left_out) {
      model.tables[table].is_kept = true;
      model.left_out.push_back({model.tables[table].schema.name, obstacle});
    }
  }
}

}  // namespace

DatabaseImport import_database(Database& database, const DatabaseImportOptions& options) {
  DatabaseModel model = read_database(database, options.choice, options.is_sqlite);
  DatabaseImport made = plan_tables(database, options, model);
  std::vector<std::string> first;
  for (const std::string& pattern : model.unmatched) {
    first.push_back("no table is named " + pattern);
  }
  for (const LeftOutTable& table : model.left_out) {
    first.push_back(table.name + ": left out, " + table.reason);
  }
  made.remarks.insert(made.remarks.begin(), first.begin(), first.end());
  return made;
}

DatabaseImport import_table(Database& database, const std::string& table, std::int64_t records,
                            bool is_sqlite) {
  DatabaseModel model;
  model.is_sqlite = is_sqlite;
  model.tables.push_back(read_table(database, table, is_sqlite));
  const TableSchema& schema = model.tables.front().schema;
  Import import({.model = model,
                 .database = database,
                 .period = {std::chrono::year(2024) / 1 / 1, std::chrono::year(2024) / 12 / 31},
                 .form = DraftForm::settings,
                 .is_plain = true,
                 .files = layout_files(model),
                 .records = {records}});
  const PlannedTable& planned = import.add(0);
  if (!schema.obstacle.empty()) import.say(planned, "load cannot fill it: " + schema.obstacle);
  // The first says what the file is.
  for (std::size_t i = 1; i < planned.layout.remarks.size(); ++i) {
    import.say(planned, planned.layout.remarks[i]);
  }
  return import.finish();
}

}  // namespace korvex::host
