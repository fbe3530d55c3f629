#include "host/commands/part_commands.h"

#include <charconv>
#include <limits>
#include <string_view>

#include "host/commands/common_options.h"
#include "host/process/exit_status.h"

namespace korvex::host {

namespace {

// `500M`: a number of bytes, with K of units of 1024, with M of 1024 of these, and so on.
std::optional<std::uint64_t> parse_size(std::string_view text) {
  constexpr std::string_view units = "KMGT";
  constexpr std::uint64_t factor = 1024;
  std::uint64_t size = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, size);
  if (failure != std::errc() || size == 0 || end - stop > 1) return std::nullopt;
  const std::size_t unit = stop == end ? 0 : units.find(*stop) + 1;
  if (stop != end && unit == 0) return std::nullopt;
  for (std::size_t i = 0; i < unit; ++i) {
    if (size > std::numeric_limits<std::uint64_t>::max() / factor) return std::nullopt;
    size *= factor;
  }
  return size;
}

std::string fault_of_size(const std::string& text) {
  if (parse_size(text)) return {};
  return '"' + platform::printable(text) +
         "\" is no size, expected a number of bytes such as 2000000, 500M or 1G";
}

}  // namespace

PartCommands::PartCommands(CommandList& commands) {
  verify_ =
      commands.add("verify", "Say whether files, or the parts of one, have the records of a layout",
                   [this](CLI::App& command) { add_verify_options(command); });
  plan_ = commands.add(
      "plan", "Print the script with which Slurm, GNU parallel, Kubernetes or make makes all parts",
      [this](CLI::App& command) { add_plan_options(command); });
}

void PartCommands::add_verify_options(CLI::App& command) {
  add_layout(command, verify_options_.layout);
  command.add_option("FILE", verify_options_.files,
                     "files, parts, or names of files that are in parts (default: the data file)");
  CLI::Option* content =
      command.add_flag("--content", verify_options_.content, "compare every byte");
  command
      .add_option("--sample", verify_options_.places,
                  "number of random places at which records are compared")
      ->check(number_from(1))
      ->type_name("K")
      ->excludes(content);
  add_jobs(command, verify_options_.jobs);
  command
      .add_option("--parts", verify_options_.parts,
                  "check N parts, also missing ones, and no whole file")
      ->check(number_from(1))
      ->type_name("N");
  add_format(command, verify_options_.format);
  add_records(command, verify_options_.records);
  command.add_flag("--keep-settings", verify_options_.keep_settings,
                   "the records of the settings file, without the values in the layout");
}

void PartCommands::add_plan_options(CLI::App& command) {
  add_layout(command, plan_options_.layout);
  command.add_option("--for", plan_options_.engine, "slurm, parallel, kubernetes or make")
      ->transform(one_of(plan_engines))
      ->type_name("TOOL")
      ->required();
  CLI::Option* parts = command.add_option("--parts", plan_options_.parts, "the number of parts")
                           ->check(number_from(1))
                           ->type_name("N");
  command
      .add_option_function<std::string>(
          "--max-bytes",
          [this](const std::string& text) { plan_options_.most_bytes = *parse_size(text); },
          "the largest size of a part, such as 500M or 1G")
      ->check(CLI::Validator(fault_of_size, "", ""))
      ->type_name("SIZE")
      ->excludes(parts);
  command.add_option("-o,--output", plan_options_.output,
                     "the file to export to (default: the data file, as generate makes it)");
  add_format(command, plan_options_.format);
  add_records(command, plan_options_.records);
}

std::optional<ExitStatus> PartCommands::run(std::ostream& out, std::ostream& messages) const {
  if (verify_->parsed()) {
    if (!is_possible(verify_options_.format, messages)) return ExitStatus::wrong_usage;
    return run_verify(verify_options_, has_format(verify_->app()), out, messages);
  }
  if (!plan_->parsed()) return std::nullopt;
  if (!is_possible(plan_options_.format, messages)) return ExitStatus::wrong_usage;
  return run_plan(plan_options_, has_format(plan_->app()), out, messages);
}

}  // namespace korvex::host
