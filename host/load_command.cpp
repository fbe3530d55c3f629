#include "host/load_command.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <ostream>
#include <stdexcept>

#include "format/error_codes.h"
#include "format/records.h"
#include "host/comma_marks.h"
#include "host/exit_status.h"
#include "host/generated_records.h"
#include "host/interrupt.h"
#include "host/layout_messages.h"
#include "host/layout_reader.h"
#include "host/load_plan.h"
#include "host/printable_text.h"
#include "host/scratch_folder.h"

namespace korvex::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view unknown_character = "\xEF\xBF\xBD";
constexpr std::int64_t percents = 100;
constexpr const char* nothing_loaded = "nothing was loaded";

// The layout as this load uses it: on a copy of its settings file, so that the user's own stays as
// it is, and without quotation marks, so that a field is what stands between two commas.
Layout on_copy(const Layout& layout, const std::string& folder) {
  std::optional<Layout> copy = copy_layout(layout, folder);
  if (folder.empty() || !copy) throw std::runtime_error(layout.settings + ": cannot be copied");
  copy->data = folder + "/records";
  copy->quotation = 0;
  return *copy;
}

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

class Load {
 public:
  Load(const Layout& layout, bool has_marks, const LoadPlan& plan, const TableSchema& table,
       CreateData create_data)
      : layout_(layout),
        plan_(plan),
        table_(table),
        create_data_(create_data),
        reader_(plan.forms, layout.kind != layout_kind::third, has_marks) {}

  // Answers the number of rows. Throws what the parts of a load throw.
  std::int64_t run(Database& database) {
    GeneratedRecords records(layout_, create_data_);
    const auto loader = database.begin_load(table_, plan_.columns);
    LoadProgress progress(layout_.records);
    RowFields fields;
    std::int64_t rows = 0;
    for (std::string_view line; records.next(line);) {
      InterruptWatch::check();
      read(line, rows + 1, fields);
      loader->add(fields);
      progress.update(++rows);
    }
    progress.show_checking();
    loader->finish();
    return rows;
  }

  // The refused row with its values. It has passed by then, so the records are made once more up to
  // it: generating is by far the fastest part of a load, and the same settings give the same bytes.
  std::string describe(const RefusedRow& row) {
    GeneratedRecords records(layout_, create_data_);
    RowFields fields;
    std::int64_t number = 0;
    for (std::string_view line; records.next(line);) {
      ++number;
      if (row.record > 0 ? number < row.record : number < row.first) continue;
      if (row.record == 0 && number > row.last) break;
      if (!reader_.read(line, fields)) break;
      if (row.record > 0 || row.is_row(fields)) return place(number, row.columns, fields);
    }
    return plan_.columns.size() == 1 ? "item " + plan_.item_names.front() : "a record";
  }

 private:
  void read(std::string_view line, std::int64_t number, RowFields& fields) {
    if (!reader_.read(line, fields)) {
      throw DatabaseError("record " + std::to_string(number) +
                          " has another number of fields than " +
                          std::to_string(plan_.columns.size()) +
                          ": a comma stands in one of its values: " + printable(line));
    }
    if (line.find(unknown_character) == std::string_view::npos) return;
    const auto bad = std::find_if(fields.begin(), fields.end(), [](std::string_view field) {
      return field.find(unknown_character) != std::string_view::npos;
    });
    throw DatabaseError(place(number, {static_cast<std::size_t>(bad - fields.begin())}, fields) +
                        ": the value has bytes that are no character of code page 932");
  }

  std::string place(std::int64_t number, const std::vector<std::size_t>& columns,
                    const RowFields& fields) const {
    std::string text = "record " + std::to_string(number);
    const bool has_columns = !columns.empty();
    for (std::size_t i = 0; i < (has_columns ? columns.size() : fields.size()); ++i) {
      const std::size_t field = has_columns ? columns[i] : i;
      text += ", item " + printable(plan_.item_names[field]) + ", value ";
      text += fields[field].empty() ? "NULL" : "\"" + printable(fields[field]) + "\"";
    }
    return text;
  }

  const Layout& layout_;
  const LoadPlan& plan_;
  const TableSchema& table_;
  const CreateData create_data_;
  RecordReader reader_;
};

int load(const LoadOptions& options, const Layout& own, CreateData create_data, std::ostream& out,
         std::ostream& messages) {
  const auto database = open_database(options.database);
  const TableSchema table = database->read_schema(options.table);
  const ScratchFolder scratch;
  const Layout layout = on_copy(own, scratch.path());
  const SettingsResult settings = write_settings_of(layout);
  if (print_failures(settings, own, messages)) return exit_status::failed;
  print_left_out(settings, own, messages);
  const LoadPlan plan = plan_load(layout, settings.left_out, table);
  Load run(layout, mark_commas(layout), plan, table, create_data);
  const Clock::time_point start = Clock::now();
  try {
    const std::int64_t rows = run.run(*database);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    char time[32];
    std::snprintf(time, sizeof time, "%.3f", seconds);
    if (!options.quiet) out << rows << " records, " << time << " s: " << table.name << std::endl;
    return exit_status::done;
  } catch (const RowRefused& refused) {
    messages << table.name << ": " << run.describe(refused.row) << ": " << refused.what() << "\n"
             << nothing_loaded << std::endl;
    return exit_status::failed;
  }
}

}  // namespace

int run_load(const LoadOptions& options, CreateData create_data, std::ostream& out,
             std::ostream& messages) {
  const LayoutReading reading = read_layout(options.layout, options.records, MissingLists::refused);
  if (print_layout_errors(reading, messages)) return exit_status::wrong_usage;
  print_warnings(reading.layout, messages);
  const InterruptWatch watch;
  try {
    return load(options, reading.layout, create_data, out, messages);
  } catch (const Interrupted& interrupted) {
    messages << nothing_loaded << std::endl;
    return interrupted.exit_status;
  } catch (const std::invalid_argument& wrong) {
    messages << wrong.what() << std::endl;
    return exit_status::wrong_usage;
  } catch (const PlanError& wrong) {
    messages << wrong.what() << std::endl;
    return exit_status::wrong_usage;
  } catch (const std::exception& failure) {
    messages << failure.what() << std::endl;
    return exit_status::failed;
  }
}

}  // namespace korvex::host
