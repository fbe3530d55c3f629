#include "host/commands/load_command.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "host/commands/load_plan.h"
#include "host/databases/database.h"
#include "host/engine/layout_messages.h"
#include "host/layout/failure_text.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/record_source.h"
#include "host/text/code_page_text.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t percents = 100;
constexpr const char* nothing_loaded = "nothing was loaded";

// "Loading  42 %" on a terminal, and nothing anywhere else.
class LoadProgress {
 public:
  explicit LoadProgress(std::int64_t records)
      : records_(records), is_drawing_(::isatty(STDERR_FILENO) == 1) {}
  ~LoadProgress() { clear(); }
  LoadProgress(const LoadProgress&) = delete;
  LoadProgress& operator=(const LoadProgress&) = delete;

  void update(std::int64_t done) {
    if (!is_drawing_ || done < next_) return;
    const std::int64_t percent = done * percents / records_;
    next_ = (records_ * (percent + 1) + percents - 1) / percents;
    std::fprintf(stderr, "\rLoading %3d %%", static_cast<int>(percent));
  }

  // The rows are all there: what remains is the database's to check and keep.
  void show_checking() {
    if (is_drawing_) std::fputs("\rChecking and keeping the rows", stderr);
  }

  void clear() {
    if (is_drawing_) std::fputs("\r\033[K", stderr);
    is_drawing_ = false;
  }

 private:
  const std::int64_t records_;
  bool is_drawing_;
  std::int64_t next_ = 1;
};

// A record that no database can take.
class BadRecord : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The records as they go into the columns of a table.
class TableRecords {
 public:
  TableRecords(PreparedLayout& prepared, const LoadPlan& plan)
      : plan_(plan), source_(prepared), texts_(plan.forms.size()), moments_(plan.forms.size()) {}

  // The fields of the next record, valid until the next call; false behind the last one. Throws
  // BadRecord.
  bool next(RowFields& fields) {
    if (!source_.next(values_)) {
      if (source_.failure().empty()) return false;
      throw BadRecord(source_.failure());
    }
    ++number_;
    fields.clear();
    const bool is_utf8 = source_.encoding() == TextEncoding::utf8;
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (is_utf8) {
        fields.push_back(moments_[i].convert(plan_.forms[i], values_[i]));
        continue;
      }
      const bool is_known = decoder_.decode(values_[i], texts_[i]);
      fields.push_back(moments_[i].convert(plan_.forms[i], texts_[i]));
      if (is_known) continue;
      throw BadRecord("record " + std::to_string(number_) + ", item " +
                      platform::printable(plan_.item_names[i]) + ", value \"" +
                      platform::printable_from_code_page(values_[i]) +
                      "\": the value has bytes that are no character of code page 932");
    }
    return true;
  }

  std::int64_t number() const { return number_; }

 private:
  const LoadPlan& plan_;
  RecordSource source_;
  CodePageDecoder decoder_;
  std::vector<std::string_view> values_;
  std::vector<std::string> texts_;
  std::vector<MomentText> moments_;
  std::int64_t number_ = 0;
};

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

// The items that are to blame when the record cannot be told; empty when not even they are known.
std::string items(const std::vector<std::size_t>& columns, const LoadPlan& plan) {
  std::string text;
  for (const std::size_t column : columns) {
    text += (text.empty() ? "item " : ", item ") + platform::printable(plan.item_names[column]);
  }
  return text;
}

// The refused row with its values. It has passed by then, so the records are made once more up to
// it: generating is by far the fastest part of a load, and the same settings give the same bytes.
std::string describe(const RefusedRow& row, const LoadOptions& options, const LoadPlan& plan) {
  std::string found = items(row.columns, plan);
  PreparedLayout again;
  std::ostringstream said_before;
  if ((row.record == 0 && !row.blame) ||
      again.prepare(options.layout, options.records, said_before) != exit_status::done) {
    return found;
  }
  TableRecords records(again, plan);
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

// Answers the number of rows. Throws what the parts of a load throw, but for what is wrong with a
// record or row, which becomes a DatabaseError.
std::int64_t load_rows(const LoadOptions& options, Database& database, const TableSchema& table,
                       const LoadPlan& plan, PreparedLayout& prepared) {
  TableRecords records(prepared, plan);
  const auto loader = database.begin_load(table, plan.columns);
  LoadProgress progress(prepared.layout().records);
  try {
    for (RowFields fields; records.next(fields);) {
      check_interruption();
      loader->add(fields);
      progress.update(records.number());
    }
    progress.show_checking();
    loader->finish();
  } catch (const BadRecord& bad) {
    throw DatabaseError(platform::printable(table.name) + ": " + bad.what());
  } catch (const RowRefused& refused) {
    const std::string where = describe(refused.row, options, plan);
    throw DatabaseError(platform::printable(table.name) + ": " + where +
                        (where.empty() ? "" : ": ") + refused.what());
  }
  return records.number();
}

// The rows are there to stay, whether or not anybody reads that.
void print_rows(std::int64_t rows, double seconds, const TableSchema& table, std::ostream& out,
                std::ostream& messages) {
  char time[32];
  std::snprintf(time, sizeof time, "%.3f", seconds);
  out << rows << " records, " << time << " s: " << platform::printable(table.name) << std::endl;
  if (!out)
    messages << platform::printable(table.name) << ": " << rows << " records were loaded"
             << std::endl;
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

int load(const LoadOptions& options, PreparedLayout& prepared, std::ostream& out,
         std::ostream& messages) {
  const Layout& layout = prepared.layout();
  const std::string& name = options.table.empty() ? layout.table : options.table;
  if (name.empty()) {
    messages << platform::printable(layout.file)
             << ": [layout] has no table, expected one there or TABLE on the command line"
             << std::endl;
    return exit_status::wrong_usage;
  }
  const auto database = open_database(options.database);
  const TableSchema table = database->read_schema(name);
  const LoadPlan plan = plan_load(prepared, table);
  const Clock::time_point start = Clock::now();
  std::int64_t rows = 0;
  try {
    rows = load_rows(options, *database, table, plan, prepared);
    ignore_interruptions();
  } catch (const OutcomeUnknown&) {
    throw;
  } catch (const DatabaseError&) {
    // A failure may be what the interrupt led to, or may have come at the same time.
    check_interruption();
    throw;
  }
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  if (!options.quiet) print_rows(rows, seconds, table, out, messages);
  return exit_status::done;
}

}  // namespace

int run_load(const LoadOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  const int status = prepared.prepare(options.layout, options.records, messages,
                                      {.misread = MisreadTexts::refused});
  if (status != exit_status::done) return status;
  if (print_replaced_characters(prepared.layout(), messages)) return exit_status::wrong_usage;
  if (print_conflict(options, prepared, messages)) return exit_status::wrong_usage;
  print_left_out(prepared.left_out(), prepared.layout(), messages);
  try {
    return load(options, prepared, out, messages);
  } catch (const Interrupted& interrupted) {
    messages << nothing_loaded << std::endl;
    return interrupted.exit_status;
  } catch (const std::invalid_argument& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return exit_status::wrong_usage;
  } catch (const PlanError& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return exit_status::wrong_usage;
  } catch (const OutcomeUnknown& failure) {
    messages << platform::printable_lines(failure.what())
             << "\nit is not known whether the rows were loaded" << std::endl;
    return exit_status::failed;
  } catch (const std::exception& failure) {
    messages << platform::printable_lines(failure.what()) << "\n" << nothing_loaded << std::endl;
    return exit_status::failed;
  }
}

}  // namespace korvex::host
