#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>

#include "host/commands/commands.h"
#include "host/engine/layout_messages.h"
#include "host/layout/layout_paths.h"
#include "host/parts/part_maker.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/generating_threads.h"
#include "host/process/replaced_output.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// A layout and where its records go.
struct Export {
  std::unique_ptr<PreparedLayout> prepared;
  std::string output;
};

// A record of these dialects names its fields, so no two of them may have one name.
bool has_distinct_names(const PreparedLayout& prepared, const FormatChoices& format,
                        std::ostream& messages) {
  if (format.dialect != Dialect::json_lines && format.dialect != Dialect::sql) return true;
  std::map<std::string_view, std::uint32_t> lines;
  bool is_good = true;
  for (const PreparedItem& prepared_item : prepared.written()) {
    const LayoutItem& item = *prepared_item.item;
    const auto [first, is_new] = lines.try_emplace(item.name, item.place.line);
    if (is_new) continue;
    messages << platform::printable(prepared.layout().file) << ":" << item.place.line << ": item "
             << platform::printable(item.name) << ": the item on line " << first->second
             << " has the same name, expected different names for jsonl and sql" << std::endl;
    is_good = false;
  }
  return is_good;
}

// What a folder can't be asked for.
bool print_wrong_options(const ExportOptions& options, std::ostream& messages) {
  if (!is_folder(options.layout)) return false;
  const auto refuse = [&](const char* what) {
    messages << platform::printable(options.layout) << ": is a folder, expected a layout for "
             << what << std::endl;
    return true;
  };
  if (options.output == "-") return refuse("an output to standard output");
  if (options.records) return refuse("--records");
  return !options.format.table.empty() && refuse("--table");
}

// Beside the others of its folder, named after the layout.
std::string output_of(const std::string& layout, const ExportOptions& options) {
  if (!is_folder(options.layout)) return options.output;
  const auto dialect =
      std::find_if(dialect_names.begin(), dialect_names.end(),
                   [&](const auto& named) { return named.second == options.format.dialect; });
  const std::string name = std::string(platform::stem(layout)) + "." + dialect->first;
  return std::filesystem::path(options.output) / name;
}

ExitStatus prepare_export(const std::string& layout, const ExportOptions& options,
                          std::vector<Export>& exports, std::ostream& messages) {
  auto prepared = std::make_unique<PreparedLayout>();
  const ExitStatus status =
      prepared->prepare(layout, options.records, messages, {.misread = MisreadTexts::refused});
  if (status != ExitStatus::done) return status;
  if (!options.format.in_code_page && print_replaced_characters(prepared->layout(), messages)) {
    return ExitStatus::wrong_usage;
  }
  if (!has_distinct_names(*prepared, options.format, messages)) return ExitStatus::wrong_usage;
  exports.push_back({std::move(prepared), output_of(layout, options)});
  return ExitStatus::done;
}

// Says which outputs would take the place of what any of the layouts is made from. Answers whether
// there was one.
bool print_conflicts(const std::vector<Export>& exports, std::ostream& messages) {
  DistinctFiles files;
  for (const Export& each : exports) each.prepared->add_read_files(files);
  bool has_conflict = false;
  for (const Export& each : exports) {
    if (each.output == "-") continue;
    const auto role = files.write(each.output, "the output");
    if (!role) continue;
    messages << platform::printable(each.output) << ": is " << *role
             << ", expected a file of its own" << std::endl;
    has_conflict = true;
  }
  return has_conflict;
}

bool make_output_folder(const std::string& folder, std::ostream& messages) {
  std::error_code failure;
  std::filesystem::create_directories(folder, failure);
  if (!failure) return true;
  messages << platform::printable(folder) << ": " << failure.message() << std::endl;
  return false;
}

ExitStatus export_whole(const Export& each, const OutputForm& form, const ExportOptions& options,
                        std::ostream& out, std::ostream& messages) {
  const auto made = stream_of(*each.prepared, form);
  RecordStream& stream = *made;
  const Layout& layout = each.prepared->layout();
  ReplacedOutput output(each.output, out);
  const auto is_wanted = [&] { return output.failure().empty(); };
  take_bytes(stream, all_of(layout.records), true, is_wanted,
             [&](std::string_view bytes) { output.write(bytes); });
  if (!stream.failure().empty()) {
    if (is_folder(options.layout)) messages << platform::printable(layout.file) << ": ";
    messages << stream.failure() << std::endl;
    return ExitStatus::failed;
  }
  if (!output.finish(messages)) return ExitStatus::failed;
  if (!options.quiet && each.output != "-") {
    out << stream.records().number() << " records: " << platform::printable(each.output)
        << std::endl;
  }
  return ExitStatus::done;
}

}  // namespace

ExitStatus run_export(const ExportOptions& options, std::ostream& out, std::ostream& messages) {
  if (print_wrong_options(options, messages)) return ExitStatus::wrong_usage;
  const auto layouts = layouts_at(options.layout, messages);
  if (!layouts) return ExitStatus::wrong_usage;
  std::vector<Export> exports;
  ExitStatus worst = ExitStatus::done;
  for (const std::string& layout : *layouts) {
    worst = worst_of(worst, prepare_export(layout, options, exports, messages));
  }
  if (worst != ExitStatus::done) return worst;
  if (print_conflicts(exports, messages)) return ExitStatus::wrong_usage;
  if (is_folder(options.layout) && !make_output_folder(options.output, messages)) {
    return ExitStatus::failed;
  }
  set_jobs(options.jobs, options.part ? UsualJobs::one : UsualJobs::for_all_processors);
  const OutputForm form = {.is_data_file = false, .format = options.format};
  for (const Export& each : exports) {
    const ExitStatus status =
        options.part ? make_part(*each.prepared,
                                 {each.output, *options.part, form, options.force, options.quiet},
                                 out, messages)
                     : export_whole(each, form, options, out, messages);
    if (status != ExitStatus::done) return status;
  }
  return ExitStatus::done;
}

}  // namespace korvex::host
