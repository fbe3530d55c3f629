#include "host/commands/import_command.h"

#include <filesystem>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "host/commands/import_folder.h"
#include "host/databases/table_import.h"
#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/layout/layout_reader.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// What a layout on standard output goes by.
const std::string standard_name = "layout.toml";

// A file that stands in the way of one that the import would write; empty when there is none.
std::string file_in_the_way(const ImportOptions& options, const TableImport& import) {
  if (options.force) return {};
  std::error_code ignored;
  if (!options.output.empty() && std::filesystem::exists(options.output, ignored)) {
    return options.output;
  }
  for (const auto& list : import.lists) {
    // A link counts, wherever it leads.
    const auto old = std::filesystem::symlink_status(list->path(), ignored);
    if (std::filesystem::exists(old)) return list->path();
  }
  return {};
}

// Says which file of the import would take the place of the database, of what SQLite keeps beside
// that, or of another file of the import. Answers whether there was one.
bool print_conflict(const ImportOptions& options, const TableImport& import,
                    std::ostream& messages) {
  DistinctFiles files;
  for (const std::string& file : database_files(options.database)) {
    files.read(file, "the database that is read");
  }
  const std::string written = "another file of the import";
  bool is_conflict = false;
  const auto check = [&](const std::string& path, const std::optional<std::string>& role) {
    if (!role || is_conflict) return;
    is_conflict = true;
    messages << platform::printable(path) << ": is " << *role << ", expected a file of its own"
             << std::endl;
  };
  const std::string output = options.output.empty() ? "/dev/stdout" : options.output;
  check(output, files.write(output, written));
  for (const auto& list : import.lists) check(list->path(), files.replace(list->path(), written));
  return is_conflict;
}

// Writes the layout and keeps the lists, neither unless both can be had. Answers what went wrong.
std::string keep(const TableImport& import, const std::string& text, const std::string& path,
                 std::ostream& out) {
  make_folder(platform::folder_of(path));
  ReplacedOutput output(path.empty() ? "-" : path, out);
  output.write(text);
  output.flush();
  if (!output.failure().empty()) return output.failure();
  for (const auto& list : import.lists) list->keep();
  output.finish();
  return output.failure();
}

int import_into(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  const std::string folder = options.output.empty() ? "." : platform::folder_of(options.output);
  const auto database = open_database(options.database);
  TableImport import = import_table(*database, options.table,
                                    options.records.value_or(default_import_records), folder);
  for (const std::string& remark : import.remarks) {
    messages << platform::printable(options.table) << ": " << platform::printable(remark) << "\n";
  }
  for (const std::string& error : import.errors) {
    messages << platform::printable(options.table) << ": error: " << platform::printable(error)
             << "\n";
  }
  if (!import.errors.empty()) return exit_status::failed;
  if (print_conflict(options, import, messages)) return exit_status::wrong_usage;
  if (const std::string path = file_in_the_way(options, import); !path.empty()) {
    messages << platform::printable(path) << " exists; --force replaces it\n";
    return exit_status::failed;
  }
  std::ostringstream text;
  write_layout(import.layout, text);
  // What no run could use, say a layout in the place of its own log, is not written.
  const std::string name = options.output.empty() ? standard_name : options.output;
  if (print_layout_errors(parse_layout(text.str(), name, std::nullopt), messages)) {
    return exit_status::wrong_usage;
  }
  check_interruption();
  if (const std::string failure = keep(import, text.str(), options.output, out); !failure.empty()) {
    messages << failure << "\n";
    return exit_status::failed;
  }
  if (!options.output.empty()) {
    const std::size_t count = import.layout.items.size();
    out << count << (count == 1 ? " item: " : " items: ") << platform::printable(options.output)
        << std::endl;
  }
  return exit_status::done;
}

}  // namespace

int run_import(const ImportOptions& given, std::ostream& out, std::ostream& messages) {
  ImportOptions options = given;
  if (options.output == "-") options.output.clear();
  try {
    return options.table.empty() ? import_folder(options, out, messages)
                                 : import_into(options, out, messages);
  } catch (const std::invalid_argument& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return exit_status::wrong_usage;
  } catch (const std::exception& failure) {
    messages << platform::printable_lines(failure.what()) << std::endl;
    return exit_status::failed;
  }
}

}  // namespace korvex::host
