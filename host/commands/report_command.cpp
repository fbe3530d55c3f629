#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

#include "host/commands/commands.h"
#include "host/commands/report_page.h"
#include "host/layout/layout_paths.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
#include "host/records/forecast.h"
#include "host/records/layout_keys.h"
#include "host/records/moment_form.h"
#include "host/records/record_source.h"
#include "platform/codepage.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// Of longer tables, so many records are looked at, in runs from all over them.
constexpr std::uint64_t most_records = 20'000;
constexpr std::uint64_t run_length = 100;
constexpr std::size_t shown_records = 10;

std::string file_name(const std::string& path) { return std::string(platform::base_name(path)); }

// What an item of the program's own is made of.
std::string own_source(const ItemValues& values) {
  if (const auto* key = std::get_if<KeyValues>(&values.own)) {
    return "key: " + key->item.text + " of " + file_name(key->layout);
  }
  if (const auto* set = std::get_if<BuiltinValues>(&values.own)) {
    return "set " + set->set.text + (set->language.text.empty() ? "" : ", " + set->language.text);
  }
  if (const auto* list = std::get_if<ListValues>(&values.own)) {
    return list->file.empty() ? "list of " + std::to_string(list->values.size()) + " values"
                              : "list " + file_name(list->file);
  }
  if (const auto* line = std::get_if<LineValues>(&values.own)) {
    return "line: place within " + line->of.text;
  }
  if (const auto* offset = std::get_if<OffsetValues>(&values.own)) {
    return "offset: " + offset->of.text + " and " + offset->from.text + " to " + offset->to.text;
  }
  return values.own_keys.empty() ? "own" : values.own_keys.front().text;
}

std::string source_of(const LayoutItem& item) {
  if (item.values == nullptr) return "the settings that the settings file keeps";
  const ItemValues& values = *item.values;
  const auto text = [](const std::string& code_page) { return platform::to_utf8(code_page); };
  switch (values.source) {
    case ValueSource::initial:
      return "no value";
    case ValueSource::range:
      return "range " + text(values.texts.format) + ": " + text(values.texts.start) + " to " +
             text(values.texts.end);
    case ValueSource::attribute_default:
      return "the default of its attribute";
    case ValueSource::reference:
      return "reference to " + values.item_name;
    case ValueSource::enumeration:
      return "list " + file_name(values.file);
    case ValueSource::own:
      return own_source(values);
  }
  return {};
}

// Hands over the fields of some records; none after a failure.
template <typename Take>
void take_records(ReadableRecords& records, RecordNumber first, std::uint64_t count, Take take) {
  records.seek(first);
  for (std::vector<std::string_view> values; count > 0 && records.next(values); --count) {
    check_interruption();
    for (std::size_t i = 0; i < values.size(); ++i) take(i, values[i]);
  }
}

ReportedTable table_of(PreparedLayout& prepared) {
  const Layout& layout = prepared.layout();
  const Forecast forecast(prepared);
  ReportedTable table;
  table.name = layout.table.empty() ? file_name(layout.file) : layout.table;
  table.records = forecast.records();
  std::vector<MomentForm> forms;
  for (const PreparedItem& written : prepared.written()) {
    const LayoutItem& item = *written.item;
    forms.push_back(moment_form(item.attributes.attribute));
    table.columns.push_back({item.name, source_of(item), forecast.item(written.place).course,
                             ColumnSummary(item.attributes.attribute)});
  }
  ReadableRecords records(prepared, std::move(forms));
  const std::uint64_t looked_at = std::min(table.records, most_records);
  for (std::uint64_t done = 0; done < looked_at; done += run_length) {
    // Runs of the same length, evenly apart; all records where they are few.
    const std::uint64_t first =
        table.records <= most_records
            ? done
            : done / run_length * (table.records / (most_records / run_length));
    take_records(
        records, RecordNumber(first), std::min(run_length, looked_at - done),
        [&](std::size_t i, std::string_view value) { table.columns[i].summary.add(value); });
  }
  if (looked_at < table.records) {
    table.note = "the figures are from a sample of " + std::to_string(looked_at) + " of them";
  }
  take_records(records, {}, shown_records, [&](std::size_t i, std::string_view value) {
    if (i == 0) table.samples.emplace_back();
    table.samples.back().emplace_back(value);
  });
  if (!records.failure().empty()) table.note = records.failure();
  return table;
}

}  // namespace

ExitStatus run_report(const ReportOptions& options, std::ostream& out, std::ostream& messages) {
  const auto layouts = layouts_at(options.layout, messages);
  if (!layouts) return ExitStatus::wrong_usage;
  std::vector<std::unique_ptr<PreparedLayout>> prepared;
  std::map<std::string, std::size_t> places;
  DistinctFiles files;
  ExitStatus worst = ExitStatus::done;
  for (const std::string& layout : *layouts) {
    prepared.push_back(std::make_unique<PreparedLayout>());
    worst = worst_of(worst, prepared.back()->prepare(layout, std::nullopt, messages));
    places[settled_path(layout)] = places.size();
  }
  if (worst != ExitStatus::done) return worst;
  for (const auto& each : prepared) each->add_read_files(files);
  const auto role =
      options.output == "-" ? std::nullopt : files.write(options.output, "the report");
  if (role) {
    messages << platform::printable(options.output) << ": is " << *role
             << ", expected a file of its own" << std::endl;
    return ExitStatus::wrong_usage;
  }
  ReplacedOutput output(options.output, out);
  std::vector<ReportedTable> tables;
  for (const auto& each : prepared) {
    tables.push_back(table_of(*each));
    for (const LayoutKeyUse& key : keys_of(*each)) {
      const auto parent = places.find(key.parent);
      if (parent != places.end()) tables.back().parents.push_back(parent->second);
    }
  }
  output.write(report_page(file_name(settled_path(options.layout)), tables));
  return output.finish(messages) ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace korvex::host
