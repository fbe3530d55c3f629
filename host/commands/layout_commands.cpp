#include "host/commands/layout_commands.h"

#include <unistd.h>

#include <iostream>
#include <ostream>

#include "host/commands/common_options.h"
#include "host/layout/table_reader.h"
#include "host/process/exit_status.h"

namespace korvex::host {

LayoutCommands::LayoutCommands(CommandList& commands) {
  check_ = commands.add(
      "check", "Say what generating will give, without generating: values, sizes, uniqueness",
      [this](CLI::App& command) { add_check_options(command); });
  preview_ = commands.add("preview", "Show the first records as a table",
                          [this](CLI::App& command) { add_preview_options(command); });
  export_ = commands.add("export", "Write the records for another program",
                         [this](CLI::App& command) { add_export_options(command); });
  new_ = commands.add("new",
                      "Write a layout to start from; asks on a terminal for what no option gives",
                      [this](CLI::App& command) { add_new_options(command); });
  report_ = commands.add("report", "Write a page that shows what the records are like",
                         [this](CLI::App& command) { add_report_options(command); });
}

void LayoutCommands::add_check_options(CLI::App& command) {
  add_layouts(command, check_options_.layout);
  add_records(command, check_options_.records);
  command
      .add_option("--unique", check_options_.unique,
                  "items, separated by commas, in which all records must differ")
      ->take_all();
}

void LayoutCommands::add_preview_options(CLI::App& command) {
  add_layouts(command, preview_options_.layout);
  add_record_count(command, "-n,--records", preview_options_.records,
                   "number of records (default: the layout's, at most 20; 5 of each in a folder)");
}

void LayoutCommands::add_export_options(CLI::App& command) {
  add_layouts(command, export_options_.layout);
  command
      .add_option("-o,--output", export_options_.output,
                  "the file, - for standard output; for a folder of layouts, a folder")
      ->required();
  add_format(command, export_options_.format);
  add_records(command, export_options_.records);
  add_part(command, export_options_.part, export_options_.force);
  add_jobs(command, export_options_.jobs);
  command.add_flag("--quiet", export_options_.quiet, "print no line about the result");
}

void LayoutCommands::add_new_options(CLI::App& command) {
  command.add_option("-o,--output", new_options_.output,
                     "the layout file, which must not exist yet (default: standard output)");
  command.add_option("--kind", new_options_.kind, "record, table or iso (default: record)");
  command.add_option("--data", new_options_.data, "path of the data file (default: data.csv)");
  add_record_count(command, "--records", new_options_.records, "number of records (default: 1000)");
  command.add_option("--item", new_options_.items,
                     "NAME:ATTRIBUTE, and after it :SIZE and :DECIMALS where the attribute has "
                     "them; a + after the size for a signed number; once for each item");
}

void LayoutCommands::add_report_options(CLI::App& command) {
  add_layouts(command, report_options_.layout);
  command
      .add_option("-o,--output", report_options_.output, "the page (HTML), - for standard output")
      ->required();
}

std::optional<ExitStatus> LayoutCommands::run(std::ostream& out, std::ostream& messages) const {
  if (check_->parsed()) return run_check(check_options_, out, messages);
  if (preview_->parsed()) return run_preview(preview_options_, out, messages);
  if (report_->parsed()) return run_report(report_options_, out, messages);
  if (new_->parsed()) {
    const bool has_terminal = ::isatty(STDIN_FILENO) == 1;
    return run_new(new_options_, has_terminal ? &std::cin : nullptr, out, messages);
  }
  if (!export_->parsed()) return std::nullopt;
  if (!is_possible(export_options_.format, messages)) return ExitStatus::wrong_usage;
  if (export_options_.part && export_options_.output == "-") {
    messages << "--output is -, expected a file for --part" << std::endl;
    return ExitStatus::wrong_usage;
  }
  return run_export(export_options_, out, messages);
}

}  // namespace korvex::host
