#include "host/commands/check_command.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>

#include "host/engine/layout_messages.h"
#include "host/layout/item_texts.h"
#include "host/layout/own_items.h"
#include "host/process/exit_status.h"
#include "host/records/prediction.h"
#include "host/records/prepared_layout.h"
#include "host/records/uniqueness.h"
#include "host/text/text_table.h"
#include "platform/codepage.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

namespace fs = std::filesystem;

const std::string untold = "cannot be told in closed form";

std::string records_text(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " record" : " records");
}

std::string distinct_text(const ItemFacts& item) {
  if (item.distinct) return std::to_string(*item.distinct);
  return "at least " + std::to_string(item.different);
}

std::string plain_course(const ItemFacts& item) {
  if (!item.has_end() && item.distinct == 1) return "the same in every record";
  if (!item.period) return untold;
  if (item.has_end() && item.runs_empty) return "is empty after " + records_text(item.end);
  return "starts again after " + records_text(*item.period);
}

std::string repeated_course(const FieldFacts& field) {
  const ItemFacts& item = *field.values;
  std::string text = "repeat level " + std::to_string(field.level) + ": ";
  const std::uint64_t cycle = product(field.hold, item.end);
  if (field.hold == endless) {
    text += "keeps its first value";
  } else {
    text +=
        "a new value " + (field.hold == 1 ? "every record" : "every " + records_text(field.hold));
    if (cycle != endless) text += ", starts again after " + records_text(cycle);
  }
  return text + (item.runs_empty ? "; empty behind the repeats" : "");
}

void print_items(const PreparedLayout& prepared, const std::vector<FieldFacts>& fields,
                 std::ostream& out) {
  TextTable table;
  table.align_right(1);
  table.add({TextTable::plain("Item"), TextTable::plain("Values"), TextTable::plain("Course")});
  for (std::size_t i = 0; i < prepared.items().size(); ++i) {
    const TextTable::Cell name = TextTable::from_utf8(prepared.items()[i].item->name);
    const FieldFacts& field = fields[i];
    if (!field.values) {
      table.add({name, TextTable::plain("?"), TextTable::plain(untold)});
      continue;
    }
    const ItemFacts& item = *field.values;
    table.add({name, TextTable::plain(distinct_text(item)),
               TextTable::plain(field.is_repeated ? repeated_course(field) : plain_course(item))});
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

// What stands in the data file's place is overwritten, which makes room, too.
bool print_sizes(const PreparedLayout& prepared, const std::vector<FieldFacts>& fields,
                 const std::optional<RepeatCount>& prediction, std::ostream& out) {
  const Layout& layout = prepared.layout();
  const auto size = prepared.run().size(static_cast<Steps>(prepared.layout().records));
  const auto repeats = repeated_fields(fields);
  if (!repeats.empty()) {
    const Steps end = repeats.front()->repeats_end;
    const bool is_told = repeats.front()->values.has_value();
    out << "Repeats end:         "
        << (!is_told         ? untold
            : end == endless ? "never"
                             : "after " + records_text(end))
        << "\n";
  }
  out << "Records to generate: " << layout.records << "\n"
      << "Exact file size:     " << (size ? std::to_string(*size) + " bytes" : untold) << "\n";
  // The records of a table are loaded: no file, and no limit of one, is in their way.
  if (layout.kind == layout_kind::table) return true;
  out << "Predicted size:      "
      << (prediction ? predicted_size_text(*prediction) : "not foretold by the module") << "\n";
  const auto free = free_space(layout.data);
  if (!free) return true;
  std::error_code failure;
  const std::uintmax_t old = fs::is_regular_file(layout.data, failure)
                                 ? fs::file_size(layout.data, failure)
                                 : std::uintmax_t{0};
  const bool is_enough = !size || *size <= *free + (failure ? 0 : old);
  out << "Free on the disk:    " << *free << " bytes" << (is_enough ? "" : ", not enough") << "\n";
  return is_enough;
}

// One set of --unique.
struct UniqueSet {
  std::string names;
  std::vector<const FieldFacts*> fields;
};

std::string_view trimmed(std::string_view name) {
  constexpr const char* blanks = " \t";
  name.remove_prefix(std::min(name.find_first_not_of(blanks), name.size()));
  return name.substr(0, name.find_last_not_of(blanks) + 1);
}

// Null when no item, or more than one, has the name.
const FieldFacts* find_field(const std::string& name, const PreparedLayout& prepared,
                             const std::vector<FieldFacts>& fields, std::ostream& messages) {
  const FieldFacts* found = nullptr;
  for (std::size_t i = 0; i < prepared.items().size(); ++i) {
    if (!is_named(*prepared.items()[i].item, name)) continue;
    if (found != nullptr) {
      messages << "--unique: several items are named " << platform::printable(name) << std::endl;
      return nullptr;
    }
    found = &fields[i];
  }
  if (found == nullptr) {
    messages << "--unique: no item of the records is named " << platform::printable(name)
             << std::endl;
  }
  return found;
}

bool read_set(const std::string& names, const PreparedLayout& prepared,
              const std::vector<FieldFacts>& fields, UniqueSet& set, std::ostream& messages) {
  std::istringstream list(names);
  for (std::string text; std::getline(list, text, ',');) {
    const std::string name(trimmed(text));
    const FieldFacts* found = find_field(name, prepared, fields, messages);
    if (found == nullptr) return false;
    set.fields.push_back(found);
    set.names += (set.names.empty() ? "" : ", ") + platform::printable(name);
  }
  return !set.fields.empty();
}

bool print_uniqueness(const UniqueSet& set, const std::vector<FieldFacts>& fields,
                      std::int32_t count, std::ostream& out) {
  const auto records = static_cast<std::uint64_t>(count);
  const Uniqueness answer = uniqueness_of(set.fields, fields);
  out << "Unique " << set.names << ": ";
  const bool is_exact = answer.different == answer.repeated;
  if (records <= answer.different) {
    out << "yes, all " << records_text(records) << " differ";
    if (is_exact) out << "; a record more than " << answer.different << " would not";
  } else if (records > answer.repeated) {
    out << "no, record " << answer.repeated + 1 << " is "
        << (is_exact ? "the first that repeats" : "one that repeats") << " an earlier one";
  } else {
    out << untold << "; the first " << answer.different << " differ";
  }
  out << "\n";
  return records <= answer.different;
}

}  // namespace

int run_check(const CheckOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  std::optional<RepeatCount> prediction;
  const int status =
      prepared.prepare(options.layout, options.records, messages, {.prediction = &prediction});
  if (status != exit_status::done) return status;
  if (!prepared.is_plain()) {
    print_layout_errors(prepared.layout(), find_own_keys(prepared.layout()), messages);
    return exit_status::wrong_usage;
  }
  const std::vector<FieldFacts> fields = prepared.run().field_facts();
  std::vector<UniqueSet> sets(options.unique.size());
  for (std::size_t i = 0; i < sets.size(); ++i) {
    if (!read_set(options.unique[i], prepared, fields, sets[i], messages)) {
      return exit_status::wrong_usage;
    }
  }
  print_items(prepared, fields, out);
  bool is_good = print_sizes(prepared, fields, prediction, out);
  for (const UniqueSet& set : sets) {
    is_good = print_uniqueness(set, fields, prepared.layout().records, out) && is_good;
  }
  out.flush();
  return is_good ? exit_status::done : exit_status::failed;
}

}  // namespace korvex::host
