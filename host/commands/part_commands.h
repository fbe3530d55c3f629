#pragma once

#include <iosfwd>
#include <optional>

#include "host/commands/command_list.h"
#include "host/commands/commands.h"

namespace korvex::host {

// The commands around the parts of a file: plan them, and verify that they are there.
class PartCommands {
 public:
  // The commands stay tied to this object, which stays where it is.
  explicit PartCommands(CommandList& commands);
  PartCommands(const PartCommands&) = delete;
  PartCommands& operator=(const PartCommands&) = delete;

  // Runs the one that was given; the program's exit status, nothing when it was another command.
  std::optional<ExitStatus> run(std::ostream& out, std::ostream& messages) const;

 private:
  void add_verify_options(CLI::App& command);
  void add_plan_options(CLI::App& command);

  const Command* verify_ = nullptr;
  const Command* plan_ = nullptr;
  VerifyOptions verify_options_;
  PlanOptions plan_options_;
};

}  // namespace korvex::host
