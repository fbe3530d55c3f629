#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ostream>
#include <string_view>

#include "host/commands/commands.h"
#include "host/commands/common_options.h"
#include "host/commands/data_summary.h"
#include "host/engine/control_writer.h"
#include "host/engine/kept_settings.h"
#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/engine/settings_editor.h"
#include "host/layout/failure_text.h"
#include "host/layout/layout_reader.h"
#include "host/layout/run_files.h"
#include "host/parts/part_maker.h"
#include "host/process/exit_status.h"
#include "host/process/generating_threads.h"
#include "host/process/scratch_folder.h"
#include "host/process/signals.h"
#include "host/records/module_count.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/printable_text.h"
#include "run/record_writer.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace {

using Clock = std::chrono::steady_clock;

std::uint64_t count_lines(const std::string& path) {
  std::uint64_t lines = 0;
  platform::read_line_pieces(path, [&](std::string_view piece) {
    lines += static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n'));
    return true;
  });
  check_interruption();
  return lines;
}

// The output limit may have ended the file early, which the module counts as success.
RecordCount records_of(const Layout& layout, OutputOption output_option) {
  const FileVersion data(layout.data);
  const bool may_be_short =
      output_option == OutputOption::guarded && data.exists && S_ISREG(data.status.st_mode);
  return may_be_short ? RecordCount(count_lines(layout.data)) : layout.records;
}

// How many records the repeats give, for the module's question whether fewer are enough. What
// cannot be counted gives none.
std::uint64_t count_repeated_records(const Layout& layout, std::ostream& messages) {
  const ScratchFolder scratch;
  const auto copy = copy_layout(layout, scratch, messages);
  const auto count = copy ? module_count(*copy, true) : std::nullopt;
  return count ? count->data_items : 0;
}

ExitStatus generate(const Layout& layout, const GenerateOptions& options, bool has_repeats,
                    CreateData create_data, std::ostream& out, std::ostream& messages) {
  TemporaryControlFile control_file;
  if (const ErrorCode code = control_file.write(layout, ControlForm::short_form);
      code != error::none) {
    messages << platform::printable(layout.work) << ": " << numbered_message(code, layout) << "\n";
    return ExitStatus::failed;
  }
  const bool is_asked = has_repeats && options.output_option == OutputOption::guarded;
  const std::uint64_t repeated_records = is_asked ? count_repeated_records(layout, messages) : 0;
  const FileVersion before(layout.data);
  const Clock::time_point start = Clock::now();
  const ErrorCode result{create_data(control_file.path().c_str(), number_of(options.output_option),
                                     nullptr, repeated_records)};
  const int error_number = errno;
  const Clock::duration time = Clock::now() - start;
  if (result < error::none) check_interruption();
  if (result == error::cancelled) return ExitStatus::cancelled;
  if (result < error::none) {
    const std::string reason = reason_of(result, error_number);
    if (!reason.empty()) messages << reason << std::endl;
    return ExitStatus::failed;
  }
  // The module counts it as success when the user declines its question.
  const bool may_be_declined = repeated_records > layout.records.number();
  if (may_be_declined && FileVersion(layout.data).is(before)) {
    if (!options.quiet)
      out << "nothing generated: " << platform::printable(layout.data) << std::endl;
    return ExitStatus::done;
  }
  if (!options.quiet) {
    print_data_summary(layout, records_of(layout, options.output_option), time, out);
  }
  return ExitStatus::done;
}

// Answers whether the options go with a part, and says why not.
bool allows_part(const GenerateOptions& options, std::ostream& messages) {
  const char* refused = options.output_option == OutputOption::guarded ? "--output-option 2"
                        : options.settings_only                        ? "--settings-only"
                        : options.window                               ? "--window"
                                                                       : nullptr;
  if (refused != nullptr) messages << refused << " cannot be combined with --part" << std::endl;
  return refused == nullptr;
}

// The module makes whole files and has them to itself: a part is made without it.
ExitStatus generate_part(const GenerateOptions& options, std::ostream& out,
                         std::ostream& messages) {
  if (!allows_part(options, messages)) return ExitStatus::wrong_usage;
  PreparedLayout prepared;
  const Settings settings = options.keep_settings ? Settings::kept : Settings::of_layout;
  const ExitStatus status = prepared.prepare(options.layout, options.records, messages,
                                             {.settings = settings, .made_by = MadeBy::module});
  if (status != ExitStatus::done) return status;
  const Layout& layout = prepared.layout();
  if (!options.keep_settings) print_left_out(prepared.left_out(), layout, messages);
  make_folder(platform::folder_of(layout.data));
  return make_part(prepared, {layout.data, *options.part, {}, options.force, options.quiet}, out,
                   messages);
}

}  // namespace

ExitStatus run_generate(const GenerateOptions& options, CreateData create_data, std::ostream& out,
                        std::ostream& messages) {
  set_jobs(options.jobs, options.part ? UsualJobs::one : UsualJobs::for_all_processors);
  if (options.part) return generate_part(options, out, messages);
  // Settings that are kept may name other lists than the layout does.
  const MissingLists lists = options.keep_settings ? MissingLists::allowed : MissingLists::refused;
  const LayoutReading reading = read_module_layout(options.layout, options.records, lists);
  if (print_layout_errors(reading, messages)) return ExitStatus::wrong_usage;
  const Layout& layout = reading.layout;
  print_warnings(layout, messages);
  const Keeping keeping =
      options.keep_settings ? Keeping::all_items : Keeping::items_without_values;
  const auto kept = look_at_settings(layout, keeping, messages);
  if (!kept) return ExitStatus::failed;
  const bool has_further_lists = !kept->lists.empty();
  if (has_further_lists &&
      print_layout_errors(layout, find_file_conflicts(layout, kept->lists), messages)) {
    return ExitStatus::wrong_usage;
  }
  if (print_failures(kept->refused, layout, messages)) return ExitStatus::failed;
  if (options.keep_settings) {
    make_output_folders(layout);
    choose_interface(options.window);
    constexpr bool may_repeat = true;
    return generate(layout, options, may_repeat, create_data, out, messages);
  }
  const SettingsResult settings = write_settings_of(layout);
  if (print_failures(settings, layout, messages)) return ExitStatus::failed;
  print_left_out(settings.left_out, layout, messages);
  if (!options.settings_only) {
    choose_interface(options.window);
    return generate(layout, options, settings.repeated_items > 0, create_data, out, messages);
  }
  if (!options.quiet) {
    const std::size_t count = settings.items_with_settings;
    out << count << (count == 1 ? " item" : " items")
        << " with settings: " << platform::printable(layout.settings) << std::endl;
  }
  return ExitStatus::done;
}

}  // namespace korvex::host
