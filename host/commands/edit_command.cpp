#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <ostream>

#include "host/commands/commands.h"
#include "host/commands/data_summary.h"
#include "host/engine/control_writer.h"
#include "host/engine/kept_settings.h"
#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/engine/settings_editor.h"
#include "host/layout/failure_text.h"
#include "host/layout/item_texts.h"
#include "host/layout/layout_reader.h"
#include "host/layout/run_files.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "platform/codepage.h"
#include "platform/file.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::int32_t dialog_ok = 1;
constexpr std::int32_t dialog_cancelled = 2;
constexpr std::int32_t no_quotation_lock = 0;

bool gives_values(const Layout& layout) {
  return std::any_of(layout.items.begin(), layout.items.end(),
                     [](const LayoutItem& item) { return item.values != nullptr; });
}

// Puts settings that no longer fit out of the module's reach, which would delete them. False when
// that fails, which is reported to the user.
bool keep_unfit_settings(const KeptSettings& kept, const Layout& layout, std::ostream& messages) {
  if (!print_unfit_items(kept.refused.unfit, layout, messages)) return true;
  std::string name;
  const std::string failure = move_settings_aside(layout, name);
  messages << platform::printable(layout.settings)
           << (failure.empty() ? ": is now " : ": cannot become ") << platform::printable(name)
           << (failure.empty() ? "" : ": ") << failure << std::endl;
  return failure.empty();
}

// False when the layout's values were refused, which is reported to the user.
bool prepare_settings(const Layout& layout, std::ostream& messages) {
  make_output_folders(layout);
  std::error_code ignored;
  if (!gives_values(layout) || std::filesystem::exists(layout.settings, ignored)) return true;
  return !print_failures(write_settings_of(layout), layout, messages);
}

// The module neither says whether OK generated nor how long that took; the two files do: the
// settings are saved right before.
void print_generated(const Layout& layout, const FileVersion& data_before, std::ostream& out) {
  const FileVersion data(layout.data);
  if (!data.exists || data.is(data_before)) return;
  const auto time = data.written() - FileVersion(layout.settings).written();
  print_data_summary(layout, layout.records, std::max(time, std::chrono::nanoseconds(0)), out);
}

// The window can't say more than its number for it.
void warn_if_held(const std::string& settings, std::ostream& messages) {
  platform::File file;
  const auto cause = file.open_for_reading(settings, platform::Sharing::shared);
  if (cause != platform::FileCause::sharing_violation) return;
  messages << platform::printable(settings) << ": another program holds the file" << std::endl;
}

ExitStatus run_dialog(const Layout& layout, const std::function<std::int32_t(const char*)>& show,
                      std::ostream& out, std::ostream& messages) {
  const auto kept = look_at_settings(layout, Keeping::whole_level, messages);
  if (!kept) return ExitStatus::failed;
  if (print_layout_errors(layout, find_file_conflicts(layout, kept->lists), messages)) {
    return ExitStatus::wrong_usage;
  }
  if (!keep_unfit_settings(*kept, layout, messages) || !prepare_settings(layout, messages)) {
    return ExitStatus::failed;
  }
  TemporaryControlFile control_file;
  if (const ErrorCode code = control_file.write(layout, ControlForm::long_form);
      code != error::none) {
    messages << platform::printable(layout.work) << ": " << numbered_message(code, layout) << "\n";
    return ExitStatus::failed;
  }
  warn_if_held(layout.settings, messages);
  const FileVersion data_before(layout.data);
  const std::int32_t result = show(control_file.path().c_str());
  check_interruption();
  if (result == dialog_cancelled) return ExitStatus::cancelled;
  if (result != dialog_ok) return ExitStatus::failed;
  std::error_code ignored;
  const bool has_settings = std::filesystem::exists(layout.settings, ignored);
  out << (has_settings ? "settings: " : "no settings: ") << platform::printable(layout.settings)
      << std::endl;
  print_generated(layout, data_before, out);
  if (gives_values(layout)) {
    messages << "note: \"korvex generate\" writes the values of "
             << platform::printable(layout.file)
             << " over these settings, unless it is given --keep-settings" << std::endl;
  }
  return ExitStatus::done;
}

// The item's place in the layout, from 1; 0 when there is none of that name.
std::uint64_t position_of(const Layout& layout, const std::string& utf8_name) {
  const auto found =
      std::find_if(layout.items.begin(), layout.items.end(),
                   [&](const LayoutItem& item) { return is_named(item, utf8_name); });
  return found == layout.items.end() ? 0
                                     : static_cast<std::uint64_t>(found - layout.items.begin()) + 1;
}

}  // namespace

ExitStatus run_edit(const EditOptions& options, CreateFile show, std::ostream& out,
                    std::ostream& messages) {
  const LayoutReading reading = read_module_layout(options.layout, options.records);
  if (print_layout_errors(reading, messages)) return ExitStatus::wrong_usage;
  return run_dialog(
      reading.layout,
      [show](const char* control_path) { return show(control_path, nullptr, no_quotation_lock); },
      out, messages);
}

ExitStatus run_update(const EditOptions& options, ReplaceData show, std::ostream& out,
                      std::ostream& messages) {
  const LayoutReading reading = read_plain_layout(options.layout, options.records);
  if (print_layout_errors(reading, messages)) return ExitStatus::wrong_usage;
  Layout layout = reading.layout;
  // In place of the number of records the control file says with which item to begin.
  const std::uint64_t position = options.item.empty() ? 1 : position_of(layout, options.item);
  layout.records = RecordCount(position);
  if (position == 0) {
    messages << platform::printable(options.layout) << ": no item is named "
             << platform::printable(options.item) << std::endl;
    return ExitStatus::wrong_usage;
  }
  return run_dialog(
      layout, [show](const char* control_path) { return show(control_path, nullptr); }, out,
      messages);
}

}  // namespace korvex::host
