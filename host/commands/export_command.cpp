#include "host/commands/export_command.h"

#include <map>
#include <ostream>

#include "host/databases/sql_names.h"
#include "host/engine/layout_messages.h"
#include "host/layout/failure_text.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
#include "host/records/record_source.h"
#include "host/text/code_page_text.h"
#include "platform/codepage.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// The records as the chosen dialect takes them.
class Exporter {
 public:
  Exporter(PreparedLayout& prepared, const FormatChoices& choices)
      : prepared_(prepared), choices_(choices), source_(prepared) {
    choices_.table = choices.table.empty() ? quoted_name(platform::stem(prepared.layout().data))
                                           : quoted_path(choices.table);
    for (const PreparedItem& item : prepared.items()) {
      names_.push_back(item.item->name);
      if (!choices_.in_code_page) continue;
      // The layout says where it has a name that the code page lacks, which leaves it empty here.
      names_.back() = platform::from_utf8(item.item->name).value_or(std::string());
    }
    format_ = make_record_format(choices_, names_, prepared.items());
  }

  // False when a value cannot be written; the reason is on `messages`.
  bool write(ReplacedOutput& output, std::ostream& messages) {
    std::vector<std::string_view> fields;
    std::vector<std::string> values(names_.size());
    std::string text;
    format_->begin(text);
    while (output.failure().empty() && source_.next(fields)) {
      ++records_;
      check_interruption();
      for (std::size_t i = 0; i < fields.size(); ++i) {
        if (encode(fields[i], values[i])) continue;
        messages << "record " << records_ << ", item "
                 << platform::printable(prepared_.items()[i].item->name) << ": "
                 << bad_text(fields[i]) << std::endl;
        return false;
      }
      format_->append(values, text);
      output.write(text);
      text.clear();
    }
    format_->end(text);
    output.write(text);
    if (source_.failure().empty()) return true;
    messages << source_.failure() << std::endl;
    return false;
  }

  std::int64_t records() const { return records_; }

 private:
  bool encode(std::string_view value, std::string& encoded) {
    if (source_.encoding() == TextEncoding::code_page) return encode_code_page(value, encoded);
    if (!choices_.in_code_page) {
      encoded = value;
      return true;
    }
    const auto text = exact_code_page_text(value);
    encoded = text.value_or(std::string());
    return text.has_value();
  }

  std::string bad_text(std::string_view value) const {
    if (source_.encoding() == TextEncoding::utf8) {
      return platform::printable(value) +
             " has characters that code page 932 lacks, expected --encoding utf-8";
    }
    return platform::printable_from_code_page(value) +
           " has bytes without meaning in code page 932, expected characters";
  }

  bool encode_code_page(std::string_view value, std::string& encoded) {
    const bool is_whole = decoder_.decode(value, encoded);
    if (choices_.in_code_page) encoded = value;
    return is_whole;
  }

  PreparedLayout& prepared_;
  FormatChoices choices_;
  RecordSource source_;
  CodePageDecoder decoder_;
  std::vector<std::string> names_;
  std::unique_ptr<RecordFormat> format_;
  std::int64_t records_ = 0;
};

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

}  // namespace

int run_export(const ExportOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  const int status =
      prepared.prepare(options.layout, options.records, messages, MisreadTexts::refused);
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
  Exporter exporter(prepared, options.format);
  ReplacedOutput output(options.output, out);
  if (output.failure().empty() && !exporter.write(output, messages)) return exit_status::failed;
  output.finish();
  if (!output.failure().empty()) {
    messages << output.failure() << std::endl;
    return exit_status::failed;
  }
  if (!options.quiet && options.output != "-") {
    out << exporter.records() << " records: " << platform::printable(options.output) << std::endl;
  }
  return exit_status::done;
}

}  // namespace korvex::host
