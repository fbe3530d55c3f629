#include "host/import_command.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <system_error>

#include "host/exit_status.h"
#include "host/interrupt.h"
#include "host/table_import.h"
#include "platform/path.h"

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

void write_output(const TableImport& import, const std::string& path, std::ostream& out) {
  if (path.empty()) {
    write_layout(import.layout, out);
    out.flush();
    return;
  }
  const std::string temporary = path + ".part";
  std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
  write_layout(import.layout, stream);
  stream.close();
  std::error_code failure(stream ? 0 : errno, std::generic_category());
  if (!failure) std::filesystem::rename(temporary, path, failure);
  if (!failure) return;
  std::remove(temporary.c_str());
  throw std::system_error(failure, path);
}

int import_into(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  const std::string folder = options.output.empty() ? "." : platform::folder_of(options.output);
  const auto database = open_database(options.database);
  TableImport import = import_table(*database, options.table, options.records, folder);
  for (const std::string& remark : import.remarks) {
    messages << options.table << ": " << remark << "\n";
  }
  for (const std::string& error : import.errors) {
    messages << options.table << ": error: " << error << "\n";
  }
  if (!import.errors.empty()) return exit_status::failed;
  if (const std::string path = file_in_the_way(options, import); !path.empty()) {
    messages << path << " exists; --force replaces it\n";
    return exit_status::failed;
  }
  InterruptWatch::check();
  for (const auto& list : import.lists) list->keep();
  write_output(import, options.output, out);
  if (!options.output.empty()) {
    const std::size_t count = import.layout.items.size();
    out << count << (count == 1 ? " item: " : " items: ") << options.output << std::endl;
  }
  return exit_status::done;
}

}  // namespace

int run_import(const ImportOptions& options, std::ostream& out, std::ostream& messages) {
  const InterruptWatch watch;
  try {
    return import_into(options, out, messages);
  } catch (const Interrupted& interrupted) {
    return interrupted.exit_status;
  } catch (const std::invalid_argument& wrong) {
    messages << wrong.what() << std::endl;
    return exit_status::wrong_usage;
  } catch (const std::exception& failure) {
    messages << failure.what() << std::endl;
    return exit_status::failed;
  }
}

}  // namespace korvex::host
