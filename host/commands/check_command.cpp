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
#include "host/records/engine_source.h"
#include "host/records/forecast.h"
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
               TextTable::plain(values_text(item.values)), TextTable::plain(item.course)});
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

// Of the data file. What stands in its place is overwritten, which makes room, too.
bool print_sizes(const PreparedLayout& prepared, const std::optional<RepeatCount>& prediction,
                 std::ostream& out) {
  const Layout& layout = prepared.layout();
  const auto size = prepared.run().size(static_cast<Steps>(layout.records));
  out << "Exact file size:     " << (size ? std::to_string(*size) + " bytes" : untold) << "\n";
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
  std::vector<std::size_t> items;
};

std::string_view trimmed(std::string_view name) {
  constexpr const char* blanks = " \t";
  name.remove_prefix(std::min(name.find_first_not_of(blanks), name.size()));
  return name.substr(0, name.find_last_not_of(blanks) + 1);
}

// Nothing when no item, or more than one, has the name.
std::optional<std::size_t> find_item(const std::string& name, const PreparedLayout& prepared,
                                     std::ostream& messages) {
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < prepared.items().size(); ++i) {
    if (!is_named(*prepared.items()[i].item, name)) continue;
    if (found) {
      messages << "--unique: several items are named " << platform::printable(name) << std::endl;
      return std::nullopt;
    }
    found = i;
  }
  if (!found) {
    messages << "--unique: no item of the records is named " << platform::printable(name)
             << std::endl;
  }
  return found;
}

bool read_set(const std::string& names, const PreparedLayout& prepared, UniqueSet& set,
              std::ostream& messages) {
  std::istringstream list(names);
  for (std::string text; std::getline(list, text, ',');) {
    const std::string name(trimmed(text));
    const auto found = find_item(name, prepared, messages);
    if (!found) return false;
    set.items.push_back(*found);
    set.names += (set.names.empty() ? "" : ", ") + platform::printable(name);
  }
  return !set.items.empty();
}

// Why not all records differ, where that is certain.
std::string repetition_text(const Forecast::Set& set, std::uint64_t records) {
  const sources::Uniqueness& uniqueness = set.uniqueness;
  std::string text = "no";
  const bool is_beyond_domain = records > set.combinations.most;
  if (is_beyond_domain) {
    text += (set.combinations.is_exact() ? ", " : ", at most ") +
            std::to_string(set.combinations.most) + " different values, " +
            sources::counted_records(records) + " asked";
  }
  if (uniqueness.is_exact()) {
    return text + (is_beyond_domain ? "; record " : ", record ") +
           std::to_string(uniqueness.repeated + 1) + " is the first that repeats an earlier one";
  }
  if (is_beyond_domain) return text;
  if (records == uniqueness.repeated + 1) return text + ", some of them are the same";
  return text + ", some of the first " + sources::counted_records(uniqueness.repeated + 1) +
         " are the same";
}

bool print_uniqueness(const UniqueSet& asked, const Forecast& forecast, std::ostream& out) {
  const std::uint64_t records = forecast.records();
  const Forecast::Set set = forecast.set(asked.items);
  const sources::Uniqueness& uniqueness = set.uniqueness;
  out << "Unique " << asked.names << ": ";
  if (records <= uniqueness.different) {
    out << "yes, all " << sources::counted_records(records) << " differ";
    if (uniqueness.is_exact() && uniqueness.different != endless) {
      out << "; a record more than " << uniqueness.different << " would not";
    }
  } else if (records > uniqueness.repeated) {
    out << repetition_text(set, records);
  } else {
    out << (set.doubts.empty() ? untold : "cannot be told: " + set.doubts);
    if (uniqueness.different > 1) out << "; the first " << uniqueness.different << " differ";
  }
  out << "\n";
  return records <= uniqueness.different;
}

}  // namespace

int run_check(const CheckOptions& options, std::ostream& out, std::ostream& messages) {
  PreparedLayout prepared;
  std::optional<RepeatCount> prediction;
  const int status =
      prepared.prepare(options.layout, options.records, messages, {.prediction = &prediction});
  if (status != exit_status::done) return status;
  std::vector<UniqueSet> sets(options.unique.size());
  for (std::size_t i = 0; i < sets.size(); ++i) {
    if (!read_set(options.unique[i], prepared, sets[i], messages)) return exit_status::wrong_usage;
  }
  const Forecast forecast(prepared);
  print_items(prepared, forecast, out);
  print_records(prepared, forecast, out);
  // Of the records that the program makes, the size is the format's business.
  bool is_good = !prepared.is_plain() || print_sizes(prepared, prediction, out);
  for (const UniqueSet& set : sets) is_good = print_uniqueness(set, forecast, out) && is_good;
  out.flush();
  return is_good ? exit_status::done : exit_status::failed;
}

}  // namespace korvex::host
