#include <chrono>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <vector>

#include "host/commands/commands.h"
#include "host/commands/planned_rows.h"
#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/imports/database_import.h"
#include "host/layout/layout_reader.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::string_view sqlite_prefix = "sqlite:";
// What a layout on standard output goes by.
constexpr const char* standard_name = "layout.toml";

// The patterns between the commas of an option.
std::vector<std::string> patterns_of(const std::string& option) {
  std::vector<std::string> patterns;
  std::string pattern;
  for (const char letter : option + ",") {
    if (letter != ',') {
      if (letter != ' ' || !pattern.empty()) pattern += letter;
      continue;
    }
    if (!pattern.empty()) patterns.push_back(pattern);
    pattern.clear();
  }
  return patterns;
}

DatabaseImportOptions import_options(const ImportOptions& options, bool is_sqlite) {
  DatabaseImportOptions asked;
  asked.choice = {patterns_of(options.whole.tables), patterns_of(options.whole.except),
                  patterns_of(options.whole.keep)};
  asked.wish.records = options.records;
  asked.wish.scale = options.whole.scale;
  asked.is_plain = options.whole.is_plain;
  asked.is_sqlite = is_sqlite;
  asked.today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  asked.make_records = make_planned_rows;
  return asked;
}

// Where a file of the import goes.
struct Place {
  std::string path;       // empty for standard output
  bool is_given = false;  // by the user, so that what a link leads to is meant
};

std::vector<Place> places_of(const ImportOptions& options, const DatabaseImport& import) {
  const bool is_one = !options.table.empty();
  const std::string folder = !is_one                  ? options.output
                             : options.output.empty() ? "."
                                                      : platform::folder_of(options.output);
  std::vector<Place> places;
  for (const FileDraft& file : import.files) {
    places.push_back({platform::join_path(folder, file.name)});
  }
  if (is_one) places.front() = {options.output, true};
  return places;
}

// Refuses to write over what is there, unless that is wanted, and over the database itself ever.
void check_places(const ImportOptions& options, const std::vector<Place>& places) {
  DistinctFiles files;
  for (const std::string& file : database_files(options.database)) {
    files.read(file, "the database that is read");
  }
  for (const auto& [path, is_given] : places) {
    const std::string written = "another file of the import";
    const auto role = is_given ? files.write(path.empty() ? "/dev/stdout" : path, written)
                               : files.replace(path, written);
    if (role) throw std::invalid_argument(path + ": is " + *role + ", expected a file of its own");
  }
  for (const auto& [path, is_given] : places) {
    std::error_code ignored;
    const auto old = is_given ? std::filesystem::status(path, ignored)
                              : std::filesystem::symlink_status(path, ignored);
    if (std::filesystem::exists(old) && !path.empty() && !options.force) {
      throw std::runtime_error(path + " exists; --force replaces it");
    }
  }
}

// All of the files or none; the layouts last, as they lead to the lists.
void write_files(const std::vector<FileDraft>& files, const std::vector<Place>& places,
                 std::ostream& out) {
  std::vector<std::unique_ptr<ReplacedOutput>> outputs;
  const auto check = [](const ReplacedOutput& output) {
    if (!output.failure().empty()) throw std::runtime_error(output.failure());
  };
  for (std::size_t i = 0; i < files.size(); ++i) {
    const auto& [path, is_given] = places[i];
    make_folder(platform::folder_of(path));
    outputs.push_back(is_given ? std::make_unique<ReplacedOutput>(path.empty() ? "-" : path, out)
                               : std::make_unique<ReplacedOutput>(path));
    outputs.back()->write(files[i].content);
    outputs.back()->flush();
    check(*outputs.back());
  }
  check_interruption();
  for (auto output = outputs.rbegin(); output != outputs.rend(); ++output) {
    (*output)->finish();
    check(**output);
  }
}

DatabaseImport plan_import(const ImportOptions& options) {
  const bool is_sqlite = options.database.starts_with(sqlite_prefix);
  const auto database = open_database(options.database);
  return options.table.empty()
             ? import_database(*database, import_options(options, is_sqlite))
             : import_table(*database, options.table,
                            options.records.value_or(default_import_records), is_sqlite);
}

std::string counted(std::size_t count, const std::string& things) {
  return std::to_string(count) + " " + things + (count == 1 ? "" : "s");
}

ExitStatus import_files(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  const bool is_one = !options.table.empty();
  if (options.output.empty() && !is_one) {
    messages << "an import of all tables has no folder to go to, expected -o FOLDER" << std::endl;
    return ExitStatus::wrong_usage;
  }
  const DatabaseImport import = plan_import(options);
  for (const std::string& remark : import.remarks) {
    messages << platform::printable(remark) << "\n";
  }
  if (import.layouts == 0) throw std::runtime_error("the database has no table to import");
  if (is_one && import.items == 0)
    throw std::runtime_error(options.table + ": no column can become an item");
  if (is_one && import.gaps > 0) return ExitStatus::failed;
  const std::vector<Place> places = places_of(options, import);
  check_places(options, places);
  // What no run could use is said now.
  bool has_errors = false;
  for (std::size_t i = 0; i < import.layouts; ++i) {
    const std::string& path = places[i].path;
    const LayoutReading reading =
        parse_layout(import.files[i].content, path.empty() ? standard_name : path, std::nullopt,
                     MissingLists::allowed);
    has_errors = print_layout_errors(reading, messages) || has_errors;
  }
  if (is_one && has_errors) return ExitStatus::wrong_usage;
  write_files(import.files, places, out);
  if (options.output.empty()) return ExitStatus::done;
  out << (is_one ? counted(import.items, "item") : counted(import.layouts, "layout")) << ": "
      << platform::printable(options.output) << std::endl;
  if (import.gaps > 0) {
    messages << counted(import.gaps, "column") << (import.gaps == 1 ? " needs" : " need")
             << " a value: look for \"korvex: needs a value\" in "
             << platform::printable(options.output) << std::endl;
  }
  return import.gaps > 0 || has_errors ? ExitStatus::failed : ExitStatus::done;
}

}  // namespace

ExitStatus run_import(const ImportOptions& given, std::ostream& out, std::ostream& messages) {
  ImportOptions options = given;
  if (options.output == "-") options.output.clear();
  try {
    return import_files(options, out, messages);
  } catch (const std::invalid_argument& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return ExitStatus::wrong_usage;
  } catch (const std::exception& failure) {
    messages << platform::printable_lines(failure.what()) << std::endl;
    return ExitStatus::failed;
  }
}

}  // namespace korvex::host
