#include "host/count_command.h"

#include <cstdlib>
#include <filesystem>
#include <ostream>

#include "control/error_texts.h"
#include "entry/failure_report.h"
#include "format/error_codes.h"
#include "format/reconcile.h"
#include "generate/generate_data_file.h"
#include "generate/repeat_count.h"
#include "host/control_writer.h"
#include "host/exit_status.h"
#include "host/interface_choice.h"
#include "host/layout_messages.h"
#include "platform/codepage.h"

namespace korvex::host {

namespace {

namespace fs = std::filesystem;

// A folder for this count's own files, removed with all of them at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = (fs::temp_directory_path() / "korvex-count-XXXXXX").string();
    if (::mkdtemp(name.data()) != nullptr) path_ = name;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// The layout with a copy of its settings file in place of it; nothing when that cannot be copied.
std::optional<Layout> on_copy(const Layout& layout, const std::string& folder) {
  Layout copy = layout;
  copy.settings = folder + "/settings.fif";
  copy.work = folder;
  std::error_code failure;
  if (fs::exists(layout.settings, failure)) fs::copy_file(layout.settings, copy.settings, failure);
  if (failure && failure != std::errc::no_such_file_or_directory) return std::nullopt;
  return copy;
}

// What the module computes from the settings; false when it cannot.
bool count_items(bool has_repeats, const std::string& control_path, RepeatCount& count) {
  ClColMain main;
  main.control_path = control_path;
  main.set_run_mode(run_mode::settings_only);
  return main.load() == 0 && reconcile(main) > 0 && !main.mismatch &&
         count_data_items(main, has_repeats, count) == 0;
}

void print_prediction(const RepeatCount& count, std::ostream& out) {
  out << "Data items:          " << count.data_items << "\n"
      << "Predicted size:      ";
  if (count.predicted_bytes == too_large) {
    out << "too large (above CheckFileSizeMax)\n";
  } else {
    out << count.predicted_bytes << " bytes (data items x item lengths)\n";
  }
}

// The module's report with the number of the bad line, which no path in front of it may swallow.
std::string failure_text(std::int32_t code, const ClGenerateDataFile& generator) {
  const std::string text = describe_failure(code, generator.main).text;
  const std::string& context = generator.main.message_context;
  if (generator.bad_line == 0 || !text.starts_with(context)) return text;
  return context +
         fill_number(text.substr(context.size()), static_cast<std::uint64_t>(generator.bad_line));
}

int print_exact_size(const Layout& layout, std::ostream& out, std::ostream& messages) {
  TemporaryControlFile control_file;
  std::int32_t code = control_file.write(layout, ControlForm::short_form);
  std::uint64_t bytes = 0;
  ClGenerateDataFile generator;
  if (code == 0) {
    generator.main.control_path = control_file.path();
    code = generator.measure(bytes);
  }
  if (code == error::cancelled) return exit_status::cancelled;
  if (code != 0) {
    messages << platform::message_to_utf8(failure_text(code, generator)) << "\n";
    return exit_status::failed;
  }
  out << "Records to generate: " << layout.records << "\n"
      << "Exact file size:     " << bytes << " bytes" << std::endl;
  return exit_status::done;
}

int count(const Layout& layout, bool has_repeats, CheckRepeatCount check, std::ostream& out,
          std::ostream& messages) {
  TemporaryControlFile control_file;
  if (const std::int32_t code = control_file.write(layout, ControlForm::long_form); code != 0) {
    messages << layout.work << ": " << numbered_message(code, layout) << "\n";
    return exit_status::failed;
  }
  const std::int32_t verdict = check(control_file.path().c_str());
  RepeatCount items;
  if (verdict == 0 && count_items(has_repeats, control_file.path(), items)) {
    print_prediction(items, out);
  }
  out << "DGCheckRepeatCnt:    " << verdict
      << (verdict == 0 ? " (the settings can be evaluated)" : " (the settings cannot be evaluated)")
      << std::endl;
  return verdict == 0 ? print_exact_size(layout, out, messages) : exit_status::failed;
}

}  // namespace

int run_count(const CountOptions& options, CheckRepeatCount check, std::ostream& out,
              std::ostream& messages) {
  const LayoutReading reading = read_layout(options.layout, options.records);
  if (print_layout_errors(reading, messages)) return exit_status::wrong_usage;
  print_warnings(reading.layout, messages);
  choose_interface(options.window);
  const ScratchFolder scratch;
  if (scratch.path().empty()) {
    messages << "no folder for temporary files can be made" << std::endl;
    return exit_status::failed;
  }
  const std::optional<Layout> layout = on_copy(reading.layout, scratch.path());
  if (!layout) {
    messages << reading.layout.settings << ": "
             << numbered_message(error::cannot_open, reading.layout) << std::endl;
    return exit_status::failed;
  }
  const SettingsResult settings = write_settings_of(*layout);
  if (print_failures(settings, reading.layout, messages)) return exit_status::failed;
  return count(*layout, settings.repeated_items > 0, check, out, messages);
}

}  // namespace korvex::host
