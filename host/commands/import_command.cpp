#include "host/commands/import_command.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "host/databases/table_import.h"
#include "host/exit_status.h"
#include "host/layout/output_folders.h"
#include "host/process/interrupt_watch.h"
#include "host/process/replaced_output.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// A file that stands in the way of one that the import would write; empty when there is none.
std::string file_in_the_way(const ImportOptions& options, const TableImport& import) {
  if (options.force) return {};
  std::error_code ignored;
  if (!options.output.empty() && std::filesystem::exists(options.output, ignored)) {
    return options.output;
  }
  for (const auto& list : import.lists) {
    if (std::filesystem::exists(list->path(), ignored)) return list->path();
  }
  return {};
}

// A path of the import that is the database itself, whatever its name; empty when there is none.
std::string path_of_database(const ImportOptions& options, const TableImport& import,
                             const Database& database) {
  std::vector<std::string> paths = {options.output};
  for (const auto& list : import.lists) paths.push_back(list->path());
  const auto found = std::find_if(paths.begin(), paths.end(), [&](const std::string& path) {
    std::error_code is_absent;
    return std::filesystem::equivalent(path, database.file(), is_absent);
  });
  return found == paths.end() ? "" : *found;
}

// A path that two of the files would have, perhaps by a link; empty when each has its own.
std::string path_of_two(const ImportOptions& options, const TableImport& import) {
  std::vector<std::string> paths = {options.output.empty() ? "/dev/stdout" : options.output};
  for (const auto& list : import.lists) paths.push_back(list->path());
  std::set<std::filesystem::path> places;
  for (const std::string& path : paths) {
    std::error_code failure;
    const auto place = std::filesystem::weakly_canonical(std::filesystem::absolute(path), failure);
    if (!places.insert(failure ? std::filesystem::path(path) : place).second) return path;
  }
  return {};
}

// Writes the layout and keeps the lists, neither unless both can be had. Answers what went wrong.
std::string keep(const TableImport& import, const std::string& path, std::ostream& out) {
  make_folder(platform::folder_of(path));
  std::ostringstream text;
  write_layout(import.layout, text);
  ReplacedOutput output(path.empty() ? "-" : path, out);
  output.write(text.str());
  output.flush();
  if (!output.failure().empty()) return output.failure();
  for (const auto& list : import.lists) list->keep();
  output.finish();
  return output.failure();
}

int import_into(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  const std::string folder = options.output.empty() ? "." : platform::folder_of(options.output);
  const auto database = open_database(options.database);
  // Up to here there was nothing to undo, and nothing that an orderly end could interrupt.
  const InterruptWatch watch;
  TableImport import = import_table(*database, options.table, options.records, folder);
  for (const std::string& remark : import.remarks) {
    messages << platform::printable(options.table) << ": " << platform::printable(remark) << "\n";
  }
  for (const std::string& error : import.errors) {
    messages << platform::printable(options.table) << ": error: " << platform::printable(error)
             << "\n";
  }
  if (!import.errors.empty()) return exit_status::failed;
  if (const std::string path = path_of_database(options, import, *database); !path.empty()) {
    messages << platform::printable(path)
             << ": is the database that is read, expected a file of its own\n";
    return exit_status::wrong_usage;
  }
  if (const std::string path = path_of_two(options, import); !path.empty()) {
    messages << platform::printable(path)
             << ": would be two files of the import, expected a layout of another name\n";
    return exit_status::wrong_usage;
  }
  if (const std::string path = file_in_the_way(options, import); !path.empty()) {
    messages << platform::printable(path) << " exists; --force replaces it\n";
    return exit_status::failed;
  }
  InterruptWatch::check();
  if (const std::string failure = keep(import, options.output, out); !failure.empty()) {
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
    return import_into(options, out, messages);
  } catch (const Interrupted& interrupted) {
    return interrupted.exit_status;
  } catch (const std::invalid_argument& wrong) {
    messages << platform::printable_lines(wrong.what()) << std::endl;
    return exit_status::wrong_usage;
  } catch (const std::exception& failure) {
    messages << platform::printable_lines(failure.what()) << std::endl;
    return exit_status::failed;
  }
}

}  // namespace korvex::host
