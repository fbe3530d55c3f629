#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>

#include "host/commands/check_sets.h"
#include "host/commands/commands.h"
#include "host/engine/layout_messages.h"
#include "host/layout/layout_paths.h"
#include "host/layout/own_items.h"
#include "host/process/exit_status.h"
#include "host/records/engine_source.h"
#include "host/records/engine_uniqueness.h"
#include "host/records/forecast.h"
#include "host/records/module_count.h"
#include "host/records/prepared_layout.h"
#include "host/text/text_table.h"
#include "platform/codepage.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

namespace fs = std::filesystem;

std::string values_text(const sources::Count& values) {
  if (values.is_exact()) return std::to_string(values.most);
  if (values.most == sources::endless) {
    return values.least == 0 ? "?" : "at least " + std::to_string(values.least);
  }
  const std::string most = std::to_string(values.most);
  return values.least <= 1 ? "up to " + most : std::to_string(values.least) + " to " + most;
}

void print_items(const PreparedLayout& prepared, const Forecast& forecast, std::ostream& out) {
  TextTable table;
  table.align_right(1);
  table.add({TextTable::plain("Item"), TextTable::plain("Values"), TextTable::plain("Course")});
  for (std::size_t i = 0; i < prepared.items().size(); ++i) {
    const Forecast::Item item = forecast.item(i);
    table.add({TextTable::from_utf8(prepared.items()[i].item->name),
               TextTable::plain(values_text(item.values)),
               TextTable::plain(item.course +
                                (prepared.items()[i].item->is_hidden() ? "; not written" : ""))});
    for (const PassedEnd& passed : item.passed_ends) {
      table.add({{},
                 {},
                 TextTable::plain(platform::exact_printable_from_code_page(passed.format) +
                                  " runs past its end value after " + std::to_string(passed.after) +
                                  " values")});
    }
  }
  for (const LayoutItem* item : prepared.left_out()) {
    table.add({TextTable::from_utf8(item->name), TextTable::plain("0"),
               TextTable::plain("not in the records: no values and no settings")});
  }
  table.print(out);
}

// The room where the data file will be, in the nearest folder that is there.
std::optional<std::uintmax_t> free_space(const std::string& data) {
  std::error_code failure;
  fs::path folder = fs::absolute(platform::folder_of(data), failure);
  while (!folder.empty() && !fs::exists(folder, failure) && folder != folder.parent_path()) {
    folder = folder.parent_path();
  }
  const fs::space_info space = fs::space(folder, failure);
  if (failure) return std::nullopt;
  return space.available;
}

void print_records(const PreparedLayout& prepared, const Forecast& forecast, std::ostream& out) {
  const auto repeats = repeated_fields(forecast.engine_fields());
  if (!repeats.empty()) {
    const Steps end = repeats.front()->repeats_end;
    const bool is_told = repeats.front()->values.has_value();
    out << "Repeats end:         "
        << (!is_told         ? untold
            : end == endless ? "never"
                             : "after " + sources::counted_records(end))
        << "\n";
  }
  out << (prepared.is_plain() ? "Records to generate: " : "Records to export:   ")
      << forecast.records() << "\n";
}

// Of the data file. What is in its place is overwritten, which makes room, too.
bool print_sizes(const PreparedLayout& prepared, const std::optional<RepeatCount>& count,
                 std::ostream& out) {
  const Layout& layout = prepared.layout();
  const auto size = prepared.run().size(layout.records);
  out << "Exact file size:     " << (size ? decimal_text(*size) + " bytes" : untold) << "\n";
  // The records of a table are loaded: no file, and no limit of one, is in their way.
  if (layout.kind == layout_kind::table) return true;
  out << "Predicted size:      "
      << (count ? predicted_size_text(*count) : "not predicted by the module") << "\n";
  const auto free = free_space(layout.data);
  if (!free) return true;
  std::error_code failure;
  const std::uintmax_t old = fs::is_regular_file(layout.data, failure)
                                 ? fs::file_size(layout.data, failure)
                                 : std::uintmax_t{0};
  const bool is_enough = !size || *size <= ByteCount{*free} + (failure ? 0 : old);
  out << "Free on the disk:    " << *free << " bytes" << (is_enough ? "" : ", not enough") << "\n";
  return is_enough;
}

}  // namespace

ExitStatus run_check(const CheckOptions& options, std::ostream& out, std::ostream& messages) {
  if (is_folder(options.layout)) return check_folder(options, out, messages);
  PreparedLayout prepared;
  std::optional<RepeatCount> count;
  const auto count_copy = [&](const Layout& copy, const SettingsResult& settings) {
    count = module_count(copy, settings.repeated_items > 0);
    return ExitStatus::done;
  };
  const ExitStatus status =
      prepared.prepare(options.layout, options.records, messages,
                       {.trial = Trial::thorough, .look_at_settings = count_copy});
  if (status != ExitStatus::done) return status;
  std::vector<UniqueSet> sets = own_sets(prepared);
  for (const std::string& names : options.unique) {
    const auto set = read_set(names, prepared, messages);
    if (!set) return ExitStatus::wrong_usage;
    sets.push_back(*set);
  }
  const Forecast forecast(prepared);
  print_items(prepared, forecast, out);
  print_records(prepared, forecast, out);
  // Of the records that the program makes, the size is the format's business.
  bool is_good = !prepared.is_plain() || print_sizes(prepared, count, out);
  for (const UntoldFit& fit : prepared.untold()) {
    const bool is_own = fit.layout == prepared.layout().file;
    out << "Fit " << platform::printable(fit.item + (is_own ? "" : " of " + fit.layout)) << ": "
        << untold_fit << "\n";
    is_good = false;
  }
  for (const UniqueSet& set : sets) {
    const SetAnswer answer = answer_of(set, forecast);
    out << "Unique " << set.names << ": " << answer.text << "\n";
    is_good = is_good && answer.holds;
  }
  out.flush();
  return is_good ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace korvex::host
