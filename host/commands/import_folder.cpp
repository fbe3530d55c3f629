#include "host/commands/import_folder.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <vector>

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

DatabaseImportOptions import_options(const ImportOptions& options) {
  DatabaseImportOptions asked;
  asked.choice = {patterns_of(options.whole.tables), patterns_of(options.whole.except),
                  patterns_of(options.whole.keep)};
  asked.wish.records = options.records;
  asked.wish.scale = options.whole.scale;
  asked.is_plain = options.whole.is_plain;
  asked.is_sqlite = options.database.starts_with(sqlite_prefix);
  asked.today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  return asked;
}

// Refuses to write over what is there, unless that is wanted, and over the database itself ever.
void check_places(const ImportOptions& options, const std::vector<std::string>& paths) {
  DistinctFiles files;
  for (const std::string& file : database_files(options.database)) {
    files.read(file, "the database that is read");
  }
  for (const std::string& path : paths) {
    if (const auto role = files.replace(path, "another file of the import")) {
      throw std::invalid_argument(path + ": is " + *role + ", expected a file of its own");
    }
    std::error_code ignored;
    const bool is_there = std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
    if (is_there && !options.force) {
      throw std::runtime_error(path + " exists; --force replaces it");
    }
  }
}

void write_files(const std::vector<FileDraft>& files, const std::vector<std::string>& paths) {
  std::vector<std::unique_ptr<ReplacedOutput>> outputs;
  const auto check = [](const ReplacedOutput& output) {
    if (!output.failure().empty()) throw std::runtime_error(output.failure());
  };
  for (std::size_t i = 0; i < files.size(); ++i) {
    outputs.push_back(std::make_unique<ReplacedOutput>(paths[i]));
    outputs.back()->write(files[i].content);
    outputs.back()->flush();
    check(*outputs.back());
  }
  check_interruption();
  for (const auto& output : outputs) {
    output->finish();
    check(*output);
  }
}

}  // namespace

int import_folder(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  if (options.output.empty()) {
    messages << "an import of all tables has no folder to go to, expected -o FOLDER" << std::endl;
    return exit_status::wrong_usage;
  }
  const auto database = open_database(options.database);
  const DatabaseImport import = import_database(*database, import_options(options));
  for (const std::string& remark : import.remarks) {
    messages << platform::printable(remark) << "\n";
  }
  if (import.layouts == 0) throw std::runtime_error("the database has no table to import");
  std::vector<std::string> paths;
  for (const FileDraft& file : import.files) {
    paths.push_back(platform::join_path(options.output, file.name));
  }
  check_places(options, paths);
  // What no run could use is said now.
  bool has_errors = false;
  for (std::size_t i = 0; i < import.layouts; ++i) {
    const LayoutReading reading =
        parse_layout(import.files[i].content, paths[i], std::nullopt, MissingLists::allowed);
    has_errors = print_layout_errors(reading, messages) || has_errors;
  }
  make_folder(options.output);
  write_files(import.files, paths);
  out << import.layouts << (import.layouts == 1 ? " layout: " : " layouts: ")
      << platform::printable(options.output) << std::endl;
  if (import.gaps > 0) {
    messages << import.gaps << (import.gaps == 1 ? " column needs" : " columns need")
             << " a value: look for \"korvex: needs a value\" in "
             << platform::printable(options.output) << std::endl;
  }
  return import.gaps > 0 || has_errors ? exit_status::failed : exit_status::done;
}

}  // namespace korvex::host
