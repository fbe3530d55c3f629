#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <istream>
#include <memory>
#include <numeric>
#include <ostream>
#include <stdexcept>

#include "host/commands/commands.h"
#include "host/commands/load_plan.h"
#include "host/commands/load_progress.h"
#include "host/commands/load_records.h"
#include "host/databases/database.h"
#include "host/databases/load_order.h"
#include "host/engine/layout_messages.h"
#include "host/layout/layout_paths.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* nothing_loaded = "nothing was loaded";
constexpr std::size_t most_asked_tables = 5;

// A table of the load: where its records come from, and what became of them.
struct TableLoad {
  std::unique_ptr<PreparedLayout> prepared;
  std::string table;  // as it was named
  LoadPlan plan;
  std::int64_t rows = 0;
  double seconds = 0;
};

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Says which file that the records come from is one of the database's. Answers whether there was
// one.
bool print_conflict(const LoadOptions& options, const PreparedLayout& prepared,
                    std::ostream& messages) {
  DistinctFiles files;
  prepared.add_read_files(files);
  for (const std::string& file : database_files(options.database)) {
    const auto role = files.write(file, "the database");
    if (!role) continue;
    messages << platform::printable(file) << ": is " << *role
             << " and belongs to the database, expected a file of its own" << std::endl;
    return true;
  }
  return false;
}

// What the command line asks for and a folder can't be asked for.
bool print_wrong_options(const LoadOptions& options, std::ostream& messages) {
  if (!is_folder(options.layout)) return false;
  const auto refuse = [&](const char* what) {
    messages << platform::printable(options.layout) << ": is a folder, expected a layout for "
             << what << std::endl;
    return true;
  };
  if (!options.table.empty()) return refuse("a TABLE on the command line");
  return options.records && refuse("--records");
}

ExitStatus prepare_layout(const LoadOptions& options, const std::string& file,
                          std::vector<TableLoad>& loads, std::ostream& messages) {
  auto prepared = std::make_unique<PreparedLayout>();
  const ExitStatus status =
      prepared->prepare(file, options.records, messages, {.misread = MisreadTexts::refused});
  if (status != ExitStatus::done) return status;
  if (print_replaced_characters(prepared->layout(), messages)) return ExitStatus::wrong_usage;
  if (print_conflict(options, *prepared, messages)) return ExitStatus::wrong_usage;
  print_left_out(prepared->left_out(), prepared->layout(), messages);
  std::string table = options.table.empty() ? prepared->layout().table : options.table;
  if (table.empty()) {
    const bool is_one_of_several = is_folder(options.layout);
    messages << platform::printable(file) << ": [layout] has no table, "
             << (is_one_of_several ? "so that it is not loaded"
                                   : "expected one there or TABLE on the command line")
             << std::endl;
    return is_one_of_several ? ExitStatus::done : ExitStatus::wrong_usage;
  }
  loads.push_back({std::move(prepared), std::move(table), {}});
  return ExitStatus::done;
}

// All layouts, with all that is wrong with any of them.
ExitStatus prepare_layouts(const LoadOptions& options, std::vector<TableLoad>& loads,
                           std::ostream& messages) {
  if (print_wrong_options(options, messages)) return ExitStatus::wrong_usage;
  const auto files = layouts_at(options.layout, messages);
  if (!files) return ExitStatus::wrong_usage;
  ExitStatus worst = ExitStatus::done;
  for (const std::string& file : *files) {
    check_interruption();
    worst = worst_of(worst, prepare_layout(options, file, loads, messages));
  }
  if (worst != ExitStatus::done || !loads.empty()) return worst;
  messages << platform::printable(options.layout) << ": no layout names a table" << std::endl;
  return ExitStatus::wrong_usage;
}

// Where the records of each layout go, in the order in which they do. Throws PlanError with all
// that does not go together.
LoadRequest plan_tables(Database& database, std::vector<TableLoad>& loads) {
  std::vector<TableSchema> schemas;
  std::string errors;
  const auto add_error = [&](const std::string& error) {
    errors += (errors.empty() ? "" : "\n") + error;
  };
  for (TableLoad& load : loads) {
    TableSchema schema = database.read_schema(load.table);
    const Layout& layout = load.prepared->layout();
    for (std::size_t i = 0; i < schemas.size(); ++i) {
      if (schemas[i].quoted_name != schema.quoted_name) continue;
      add_error(platform::printable(layout.file) + ": table is " +
                platform::printable(schema.name) + ", which is that of " +
                platform::printable(loads[i].prepared->layout().file) +
                ", expected one layout for each table");
    }
    try {
      load.plan = plan_load(*load.prepared, schema);
    } catch (const PlanError& wrong) {
      add_error(wrong.what());
    }
    schemas.push_back(std::move(schema));
  }
  if (!errors.empty()) throw PlanError(errors);
  const LoadOrder order = order_of_load(schemas);
  LoadRequest request;
  request.defers_keys = order.defers_keys;
  std::vector<TableLoad> ordered;
  for (const OrderedTable& each : order.tables) {
    ordered.push_back(std::move(loads[each.table]));
    request.tables.push_back(
        {std::move(schemas[each.table]), ordered.back().plan.columns, each.cycle});
  }
  loads = std::move(ordered);
  return request;
}

// Whether the tables may be emptied.
bool may_empty(const LoadRequest& request, std::istream& in, std::ostream& messages) {
  const std::size_t count = request.tables.size();
  const std::size_t listed = count > most_asked_tables ? most_asked_tables : count;
  std::string names;
  for (std::size_t i = 0; i < listed; ++i) {
    names += (i == 0 ? "" : ", ") + platform::printable(request.tables[i].schema.name);
  }
  if (listed < count) names += " and " + std::to_string(count - listed) + " more tables";
  messages << "All rows of " << names << " will be removed. Continue? [y/N] " << std::flush;
  // A terminal hands over a line at a time: what was not asked for yet waits there.
  if (!platform::wait_until_ready(STDIN_FILENO, POLLIN)) check_interruption();
  std::string answer;
  std::getline(in, answer);
  return answer.starts_with('y') || answer.starts_with('Y');
}

// The records of one table. Throws what the parts of a load throw; what is wrong with a record or
// goes wrong meanwhile becomes a DatabaseError that names the table.
void load_rows(TableLoad& load, std::size_t place, DatabaseLoad& rows, LoadProgress& progress) {
  const Clock::time_point start = Clock::now();
  try {
    LoadRecords records(*load.prepared, load.plan);
    progress.begin_table();
    rows.begin_table(place);
    for (RowFields fields; records.next(fields);) {
      check_interruption();
      rows.add(fields);
      progress.advance();
    }
    rows.end_table();
    load.rows = records.number();
  } catch (const BadRecord& bad) {
    throw DatabaseError(platform::printable(load.table) + ": " + bad.what());
  } catch (const DatabaseError& failure) {
    throw DatabaseError(platform::printable(load.table) + ": " + failure.what());
  }
  load.seconds = seconds_since(start);
}

// Answers what could not be done beside the rows.
std::vector<std::string> load_tables(Database& database, LoadRequest request,
                                     std::vector<TableLoad>& loads) {
  const Steps records = std::accumulate(
      loads.begin(), loads.end(), Steps{0}, [](Steps before, const TableLoad& load) {
        return sum(before, load.prepared->layout().records.number());
      });
  LoadProgress progress(records, loads.size());
  const auto rows = database.begin_load(std::move(request));
  try {
    for (std::size_t i = 0; i < loads.size(); ++i) load_rows(loads[i], i, *rows, progress);
    progress.show_checking();
    return rows->finish();
  } catch (const RowRefused& refused) {
    if (!refused.row.table) throw DatabaseError(refused.what());
    const TableLoad& load = loads[*refused.row.table];
    const std::string where = place_of(refused.row, *load.prepared, load.plan);
    throw DatabaseError(platform::printable(load.table) + ": " + where +
                        (where.empty() ? "" : ": ") + refused.what());
  }
}

// The rows are there to stay, whatever becomes of this. The program's exit status.
ExitStatus analyze(Database& database, const std::vector<TableSchema>& tables,
                   std::ostream& messages) {
  try {
    for (const std::string& failure : database.analyze(tables)) {
      messages << "loaded, but not analyzed: " << platform::printable_lines(failure) << std::endl;
    }
    return ExitStatus::done;
  } catch (const Interrupted& interrupted) {
    messages << "all rows were loaded, but not all tables were analyzed" << std::endl;
    return status_of_signal(interrupted.signal);
  }
}

std::string counted(std::int64_t records, double seconds) {
  char time[32];
  std::snprintf(time, sizeof time, "%.3f", seconds);
  return std::to_string(records) + " records, " + time + " s: ";
}

void print_rows(const std::vector<TableLoad>& loads, const LoadOptions& options, double seconds,
                std::ostream& out, std::ostream& messages) {
  std::int64_t rows = 0;
  for (const TableLoad& load : loads) {
    rows += load.rows;
    out << counted(load.rows, load.seconds) << platform::printable(load.table) << "\n";
  }
  const bool is_whole = is_folder(options.layout);
  const std::string name = platform::printable(is_whole ? options.layout : loads.front().table);
  if (is_whole) out << loads.size() << " tables, " << counted(rows, seconds) << name << "\n";
  out.flush();
  if (!out) messages << name << ": " << rows << " records were loaded" << std::endl;
}

ExitStatus load(const LoadOptions& options, std::vector<TableLoad>& loads, std::istream* in,
                std::ostream& out, std::ostream& messages) {
  const auto database = open_database(options.database);
  LoadRequest request = plan_tables(*database, loads);
  request.empties_first = options.truncate;
  if (options.truncate && !options.yes && !may_empty(request, *in, messages)) {
    messages << nothing_loaded << std::endl;
    return ExitStatus::cancelled;
  }
  std::vector<TableSchema> tables;
  for (const LoadedTable& table : request.tables) tables.push_back(table.schema);
  const Clock::time_point start = Clock::now();
  std::vector<std::string> notes;
  try {
    notes = load_tables(*database, std::move(request), loads);
  } catch (const OutcomeUnknown&) {
    throw;
  } catch (const DatabaseError&) {
    // A failure may be what the interrupt led to, or may have come at the same time.
    check_interruption();
    throw;
  }
  for (const std::string& note : notes) messages << platform::printable(note) << std::endl;
  const ExitStatus status =
      options.no_analyze ? ExitStatus::done : analyze(*database, tables, messages);
  ignore_interruptions();
  if (!options.quiet) print_rows(loads, options, seconds_since(start), out, messages);
  return status;
}

}  // namespace

ExitStatus run_load(const LoadOptions& options, std::istream* in, std::ostream& out,
                    std::ostream& messages) {
  if (options.truncate && !options.yes && in == nullptr) {
    messages << "--truncate removes all rows, and there is no terminal to ask on, expected --yes"
             << std::endl;
    return ExitStatus::wrong_usage;
  }
  std::vector<TableLoad> loads;
  const ExitStatus status = prepare_layouts(options, loads, messages);
  if (status != ExitStatus::done) return status;
  try {
    return load(options, loads, in, out, messages);
  } catch (const Interrupted& interrupted) {
    messages << nothing_loaded << std::endl;
    return status_of_signal(interrupted.signal);
  } catch (const std::invalid_argument& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return ExitStatus::wrong_usage;
  } catch (const PlanError& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return ExitStatus::wrong_usage;
  } catch (const OutcomeUnknown& failure) {
    messages << platform::printable_lines(failure.what())
             << "\nit is not known whether the rows were loaded" << std::endl;
    return ExitStatus::failed;
  } catch (const std::exception& failure) {
    messages << platform::printable_lines(failure.what()) << "\n" << nothing_loaded << std::endl;
    return ExitStatus::failed;
  }
}

}  // namespace korvex::host
