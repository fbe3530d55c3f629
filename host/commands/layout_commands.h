#pragma once

#include <functional>
#include <iosfwd>

#include "host/commands/command_list.h"
#include "host/commands/commands.h"

namespace korvex::host {

// The commands around a layout that write no data file: begin one, look at its records, hand them
// on.
class LayoutCommands {
 public:
  // The commands stay tied to this object, which stays where it is.
  explicit LayoutCommands(CommandList& commands);
  LayoutCommands(const LayoutCommands&) = delete;
  LayoutCommands& operator=(const LayoutCommands&) = delete;

  // Runs the one that was given; the program's exit status, nothing when it was another command.
  std::optional<ExitStatus> run(std::ostream& out, std::ostream& messages) const;

 private:
  void add_check_options(CLI::App& command);
  void add_preview_options(CLI::App& command);
  void add_export_options(CLI::App& command);
  void add_new_options(CLI::App& command);
  void add_report_options(CLI::App& command);

  const Command* check_ = nullptr;
  const Command* preview_ = nullptr;
  const Command* export_ = nullptr;
  const Command* new_ = nullptr;
  const Command* report_ = nullptr;
  CheckOptions check_options_;
  PreviewOptions preview_options_;
  ExportOptions export_options_;
  NewOptions new_options_;
  ReportOptions report_options_;
};

}  // namespace korvex::host
