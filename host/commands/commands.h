#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "host/parts/part.h"
#include "host/parts/plan.h"
#include "host/process/exit_status.h"
#include "host/records/record_format.h"
#include "run/record_writer.h"
#include "values/counts.h"

// What each command is given, and what it does.
namespace korvex::host {

struct CheckOptions {
  std::string layout;  // or a folder of layouts
  std::optional<RecordCount> records;
  std::vector<std::string> unique;  // each a set of item names with commas in between
};

// Says what generating a layout will give, without generating: values of each item and what comes
// after them, the size of the file, the room on the disk, and whether the records differ in sets
// of items. Writes nothing. Results go to `out`, messages to `messages`; the program's exit status,
// which is 1 also when the room is short or a set is not certainly different.
ExitStatus run_check(const CheckOptions& options, std::ostream& out, std::ostream& messages);

struct CountOptions {
  std::string layout;
  std::optional<RecordCount> records;
  bool window = false;
};

// The module's function that evaluates repeat settings.
using CheckRepeatCount = std::int32_t (*)(const char* control_file_path);

// Says how many records a layout's settings give and how large the file will be: what the module
// predicts, and the size that generating will really write. Changes no file of the user's: it works
// on a copy of the settings file. Results go to `out`, messages to `messages`; answers the
// program's exit status.
ExitStatus run_count(const CountOptions& options, CheckRepeatCount check, std::ostream& out,
                     std::ostream& messages);

// The module's functions that show a dialog.
using CreateFile = std::int32_t (*)(const char* control_file_path, void* parent,
                                    std::int32_t quotation_lock);
using ReplaceData = std::int32_t (*)(const char* control_file_path, void* parent);

struct EditOptions {
  std::string layout;
  std::optional<RecordCount> records;
  std::string item;  // where a value update begins; empty for the first item
};

// Lets the user edit a layout's settings in a dialog; `show` decides whether a data file is
// generated after it. A settings file that does not exist yet begins with the layout's values.
// Results go to `out`, messages to `messages`; answers the program's exit status.
ExitStatus run_edit(const EditOptions& options, CreateFile show, std::ostream& out,
                    std::ostream& messages);

// The same for one item's settings.
ExitStatus run_update(const EditOptions& options, ReplaceData show, std::ostream& out,
                      std::ostream& messages);

struct ExportOptions {
  std::string layout;  // or a folder of layouts
  std::string output;  // then a folder, too
  std::optional<RecordCount> records;
  FormatChoices format;
  std::optional<Part> part;
  std::optional<std::size_t> jobs;
  bool force = false;
  bool quiet = false;
};

// Writes the records of layouts for another program, a file for each, without touching the layout's
// own files. The output takes its place when it is complete; with `part` that part of it does. Data
// for standard output and the lines about the result go to `out`, messages to `messages`; answers
// the program's exit status.
ExitStatus run_export(const ExportOptions& options, std::ostream& out, std::ostream& messages);

struct GenerateOptions {
  std::string layout;
  std::optional<RecordCount> records;
  std::optional<Part> part;
  std::optional<std::size_t> jobs;
  bool force = false;
  OutputOption output_option = OutputOption::plain;
  bool settings_only = false;
  bool keep_settings = false;
  bool quiet = false;
  bool window = false;
};

// The module's function that generates a data file.
using CreateData = std::int32_t (*)(const char* control_file_path, std::int32_t output_option,
                                    void* parent, std::uint64_t repeat_item_count);

// Reads a layout, writes its settings and generates its data file; or one part of that file, and
// writes no settings and no log. Results go to `out`, messages to
// `messages`; answers the program's exit status.
ExitStatus run_generate(const GenerateOptions& options, CreateData create_data, std::ostream& out,
                        std::ostream& messages);

inline constexpr std::int32_t default_import_records = 1000;

// What only the import of a whole database takes.
struct WholeDatabaseOptions {
  std::string tables;  // patterns between commas, as all of these
  std::string except;
  std::string keep;
  std::optional<double> scale;
  bool is_plain = false;
};

struct ImportOptions {
  std::string database;
  std::string table;   // empty for all tables
  std::string output;  // of one table: empty or "-" for standard output; of all: a folder
  std::optional<std::int32_t> records;
  bool force = false;
  WholeDatabaseOptions whole;
};

// Writes a layout for a table of a database, and value lists beside it, or a folder of layouts for
// all of its tables. All of it or nothing: the files get their names at the end. Answers the
// program's exit status.
ExitStatus run_import(const ImportOptions& options, std::ostream& out, std::ostream& messages);

struct LoadOptions {
  std::string layout;  // or a folder of layouts
  std::string database;
  std::string table;  // empty for the layout's own
  std::optional<RecordCount> records;
  bool truncate = false;  // the tables are emptied first
  bool yes = false;       // nobody is asked whether they may be
  bool no_analyze = false;
  bool quiet = false;
};

// Generates the records of a layout into a table of a database, or those of all layouts of a folder
// into theirs, in one transaction: all of them or none. Writes no data file, and leaves the
// layouts' settings files as they are. Questions are answered from `in`, null where nobody can be
// asked. Results go to `out`, messages to `messages`; answers the program's exit status.
ExitStatus run_load(const LoadOptions& options, std::istream* in, std::ostream& out,
                    std::ostream& messages);

struct NewOptions {
  std::string output = "-";
  std::optional<std::string> kind;
  std::optional<std::string> data;
  std::optional<RecordCount> records;
  // NAME:ATTRIBUTE, with :SIZE and :DECIMALS where the attribute needs them; a + after the size
  // stands for a signed number.
  std::vector<std::string> items;
};

// Writes a layout to start from. What the options leave open is asked for on `messages` and
// answered on `in`, if somebody is there to answer; otherwise it has a default. A file that is
// there already is left alone. Answers the program's exit status.
ExitStatus run_new(const NewOptions& options, std::istream* in, std::ostream& out,
                   std::ostream& messages);

struct PlanOptions {
  std::string layout;
  PlanEngine engine = PlanEngine::parallel;
  std::optional<std::int32_t> parts;
  std::optional<std::uint64_t> most_bytes;  // in place of the number of parts
  std::string output;                       // empty: the data file, as generated
  FormatChoices format;
  std::optional<RecordCount> records;
};

// Prints the script with which an engine makes all parts of a file. `has_format`: the options say a
// format, which needs an output. The program's exit status.
ExitStatus run_plan(const PlanOptions& options, bool has_format, std::ostream& out,
                    std::ostream& messages);

struct PreviewOptions {
  std::string layout;                  // or a folder of layouts
  std::optional<RecordCount> records;  // else those of the layout, of many the first few
};

// Prints the first records of each layout as a table with the items' names. Writes no file. The
// table goes to `out`, messages to `messages`; answers the program's exit status.
ExitStatus run_preview(const PreviewOptions& options, std::ostream& out, std::ostream& messages);

struct ReportOptions {
  std::string layout;  // or a folder of layouts
  std::string output;
};

// Writes a page that shows what the records of layouts are like. Messages go to `messages`, the
// page to `out` where the output is "-"; answers the program's exit status.
ExitStatus run_report(const ReportOptions& options, std::ostream& out, std::ostream& messages);

struct SetsOptions {
  std::string name;  // of a set or of a column, empty for all
  std::string language = "en";
  std::optional<std::int32_t> rows;  // else the first few
  bool as_file = false;              // the whole table, as a file of data/sets
};

// Prints which sets come with the program, or the first rows of one. The tables go to `out`,
// messages to `messages`; answers the program's exit status.
ExitStatus run_sets(const SetsOptions& options, std::ostream& out, std::ostream& messages);

struct VerifyOptions {
  std::string layout;
  std::vector<std::string> files;  // none: the layout's data file
  std::optional<RecordCount> records;
  FormatChoices format;
  bool content = false;
  std::int32_t places = 0;
  std::int32_t parts = 0;
  bool keep_settings = false;
  std::optional<std::size_t> jobs;
};

// Says of files whether they hold the records of a layout: what is complete on `out`, what is not
// and why on `messages`. `has_format`: in the format of the options, else in that of the manifests
// beside the files, or as generated. The program's exit status, failed for what is not complete.
ExitStatus run_verify(const VerifyOptions& options, bool has_format, std::ostream& out,
                      std::ostream& messages);

}  // namespace korvex::host
