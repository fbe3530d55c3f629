#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <iosfwd>

#include "host/check_command.h"
#include "host/export_command.h"
#include "host/preview_command.h"

namespace korvex::host {

// The commands that look at a layout's records, or hand them on, beside the module's own output.
class ViewCommands {
 public:
  explicit ViewCommands(CLI::App& app);

  // Runs the one that was given; the program's exit status, nothing when it was another command.
  std::optional<int> run(std::ostream& out, std::ostream& messages) const;

 private:
  void add_check(CLI::App& app);
  void add_preview(CLI::App& app);
  void add_export(CLI::App& app);

  const CLI::App* check_ = nullptr;
  const CLI::App* preview_ = nullptr;
  const CLI::App* export_ = nullptr;
  CheckOptions check_options_;
  PreviewOptions preview_options_;
  ExportOptions export_options_;
};

}  // namespace korvex::host
