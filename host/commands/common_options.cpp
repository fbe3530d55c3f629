#include "host/commands/common_options.h"

#include <algorithm>
#include <ostream>

namespace korvex::host {

namespace {

const std::vector<std::pair<std::string, bool>> encodings = {{"utf-8", false}, {"cp932", true}};

}  // namespace

void add_format(CLI::App& command, FormatChoices& format) {
  command.add_option("--format", format.dialect, "csv, tsv, jsonl or sql (default: csv)")
      ->transform(one_of(dialect_names))
      ->type_name("FORMAT");
  command.add_option("--encoding", format.in_code_page, "utf-8 or cp932 (default: utf-8)")
      ->transform(one_of(encodings))
      ->type_name("ENCODING");
  command.add_flag("--header", format.header, "csv, tsv: a first line with the names");
  command.add_option("--table", format.table,
                     "sql: the table (default: the layout's, or the data file's name)");
}

bool has_format(const CLI::App& command) {
  constexpr const char* options[] = {"--format", "--encoding", "--header", "--table"};
  return std::any_of(std::begin(options), std::end(options),
                     [&](const char* option) { return command.count(option) > 0; });
}

bool is_possible(const FormatChoices& format, std::ostream& messages) {
  const bool is_good = format.dialect != Dialect::json_lines || !format.in_code_page;
  if (!is_good) messages << "--encoding is cp932, expected utf-8 for --format jsonl" << std::endl;
  return is_good;
}

}  // namespace korvex::host
