#include "host/commands/export_command.h"

#include <map>
#include <ostream>

#include "host/engine/layout_messages.h"
#include "host/parts/part_maker.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// What the output is already, if it would take the place of what it is made from.
std::optional<std::string> role_of_output(const std::string& output,
                                          const PreparedLayout& prepared) {
  DistinctFiles files;
  prepared.add_read_files(files);
  return output == "-" ? std::nullopt : files.write(output, "the output");
}

// A record of these dialects names its fields, so no two of them may have one name.
bool has_distinct_names(const PreparedLayout& prepared, const FormatChoices& format,
                        std::ostream& messages) {
  if (format.dialect != Dialect::json_lines && format.dialect != Dialect::sql) return true;
  std::map<std::string_view, std::uint32_t> lines;
  bool is_good = true;
  for (const PreparedItem& prepared_item : prepared.items()) {
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

int export_whole(RecordStream& stream, const PreparedLayout& prepared, const ExportOptions& options,
                 std::ostream& out, std::ostream& messages) {
  ReplacedOutput output(options.output, out);
  stream.go_to({0, static_cast<Steps>(prepared.layout().records)}, true);
  for (std::string_view bytes; output.failure().empty() && !(bytes = stream.next()).empty();) {
    output.write(bytes);
  }
  if (!stream.failure().empty()) {
    messages << stream.failure() << std::endl;
    return exit_status::failed;
  }
  output.finish();
  if (!output.failure().empty()) {
    messages << output.failure() << std::endl;
    return exit_status::failed;
  }
  if (!options.quiet && options.output != "-") {
    out << stream.records() << " records: " << platform::printable(options.output) << std::endl;
  }
  return exit_status::done;
}

}  // namespace

int run_export(const ExportOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  const int status = prepared.prepare(options.layout, options.records, messages,
                                      {.misread = MisreadTexts::refused});
  if (status != exit_status::done) return status;
  if (!options.format.in_code_page && print_replaced_characters(prepared.layout(), messages)) {
    return exit_status::wrong_usage;
  }
  if (const auto role = role_of_output(options.output, prepared)) {
    messages << platform::printable(options.output) << ": is " << *role
             << ", expected a file of its own" << std::endl;
    return exit_status::wrong_usage;
  }
  if (!has_distinct_names(prepared, options.format, messages)) return exit_status::wrong_usage;
  const OutputForm form = {.is_data_file = false, .format = options.format};
  if (options.part) {
    return make_part(prepared, {options.output, *options.part, form, options.force, options.quiet},
                     out, messages);
  }
  return export_whole(*stream_of(prepared, form), prepared, options, out, messages);
}

}  // namespace korvex::host
