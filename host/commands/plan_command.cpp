#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>

#include "host/commands/commands.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

std::string absolute(const std::string& path) {
  return std::filesystem::absolute(path).lexically_normal().string();
}

// The options that say how records are written.
std::vector<std::string> format_arguments(const FormatChoices& format) {
  std::vector<std::string> arguments;
  for (const auto& [name, dialect] : dialect_names) {
    if (dialect == format.dialect) arguments = {"--format", name};
  }
  if (format.in_code_page) arguments.insert(arguments.end(), {"--encoding", "cp932"});
  if (format.header) arguments.push_back("--header");
  if (!format.table.empty()) arguments.insert(arguments.end(), {"--table", format.table});
  return arguments;
}

void add(std::vector<std::string>& arguments, const std::vector<std::string>& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
}

bool has_control_characters(const std::vector<std::string>& arguments) {
  return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
    return std::any_of(argument.begin(), argument.end(),
                       [](char c) { return static_cast<unsigned char>(c) < ' '; });
  });
}

Plan plan_of(const PlanOptions& options, const PreparedLayout& prepared, std::uint64_t parts) {
  Plan plan;
  plan.parts = parts;
  const bool is_export = !options.output.empty();
  const std::string layout = absolute(options.layout);
  plan.whole = absolute(is_export ? options.output : prepared.layout().data);
  plan.making = {is_export ? "export" : "generate", layout};
  plan.verifying = {"verify", layout, plan.whole, "--parts", std::to_string(parts)};
  if (is_export) {
    add(plan.making, {"--output", plan.whole});
    add(plan.making, format_arguments(options.format));
    add(plan.verifying, format_arguments(options.format));
  }
  if (options.records) {
    add(plan.making, {"--records", std::to_string(options.records->number())});
    add(plan.verifying, {"--records", std::to_string(options.records->number())});
  }
  const std::set<std::string> folders = {platform::folder_of(layout),
                                         platform::folder_of(plan.whole)};
  plan.folders.assign(folders.begin(), folders.end());
  return plan;
}

ExitStatus refuse(std::ostream& messages, const std::string& text) {
  messages << text << std::endl;
  return ExitStatus::wrong_usage;
}

}  // namespace

ExitStatus run_plan(const PlanOptions& options, bool has_format, std::ostream& out,
                    std::ostream& messages) {
  if (!options.parts && !options.most_bytes) {
    return refuse(messages, "no number of parts, expected --parts or --max-bytes");
  }
  if (options.output.empty() && has_format) {
    return refuse(messages, "no file to export to, expected --output with the format");
  }
  if (options.output == "-") return refuse(messages, "--output is -, expected a file for parts");
  const bool is_export = !options.output.empty();
  PreparedLayout prepared;
  const ExitStatus status =
      prepared.prepare(options.layout, options.records, messages,
                       {.misread = is_export ? MisreadTexts::refused : MisreadTexts::warned,
                        .made_by = is_export ? MadeBy::anyone : MadeBy::module});
  if (status != ExitStatus::done) return status;
  const PartEstimate estimate(prepared, {.is_data_file = !is_export, .format = options.format});
  const std::uint64_t parts = options.parts
                                  ? static_cast<std::uint64_t>(*options.parts)
                                  : estimate.parts_below(*options.most_bytes, most_planned_parts);
  if (parts > most_planned_parts) {
    return refuse(messages, "more than " + std::to_string(most_planned_parts) +
                                " parts, expected fewer or larger ones");
  }
  const Plan plan = plan_of(options, prepared, parts);
  if (has_control_characters(plan.making)) {
    return refuse(messages, "a path or table has control characters, which a script can't name");
  }
  out << script_of(plan, options.engine, estimate) << std::flush;
  return ExitStatus::done;
}

}  // namespace korvex::host
