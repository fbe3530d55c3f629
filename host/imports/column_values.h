#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "formatlang/default_settings.h"
#include "host/databases/table_rules.h"
#include "host/databases/table_schema.h"
#include "host/imports/table_facts.h"
#include "host/layout/layout_writer.h"

namespace korvex::host {

// The days that dates are drawn from: whole years before the import.
struct ImportPeriod {
  std::chrono::year_month_day first;
  std::chrono::year_month_day last;
};

// What a layout has its values from.
enum class DraftForm {
  ways,      // draws and shuffles, in UTF-8
  settings,  // ranges and lists from their first value on, in code page 932, as every command takes
};

// A column that needs values of its own.
struct ColumnTask {
  const ColumnSchema& column;
  const ColumnFacts& facts;
  const TypeShape* shape = nullptr;  // of a type that is unknown otherwise; null for any other
  ImportPeriod period = {};
  DraftForm form = DraftForm::ways;
  std::int64_t records = 0;
  bool is_unique = false;
  bool is_followed = false;         // by a later moment, which is to have room
  bool counts_on = false;           // one number after the other, as keys do
  bool has_readable_texts = false;  // words for a text of which nothing is known
  bool is_fresh = false;            // none of what the column holds already, which is:
  std::uint64_t rows_there = 0;
  std::optional<std::int64_t> largest = {};
  std::function<std::optional<std::string>(const TextForm&)> largest_text = {};
  std::function<std::vector<std::string>()> held = {};  // all of it
};

// Values for a column. Where `listed` has some, they are the values of a list, which may need a
// file; the keys are then those beside it.
struct ColumnValues {
  ItemAttributes attributes = {};
  std::vector<LayoutKey> keys;
  std::vector<std::string> listed;
  std::uint64_t period = 0;  // how many different values there are
  bool is_measured = false;  // numbers, days or moments that an offset can start from
  // Of numbers, in units of their last decimal.
  std::int64_t least = 0;
  std::int64_t most = 0;
};

// Nothing where no value is known that the database would take.
std::optional<ColumnValues> make_values(const ColumnTask& task);

// The way of a column: `shuffled` where no value may come twice.
std::string order_of(bool is_unique);

// Numbers as the type and its conditions allow; nothing for another type, and where none is
// allowed.
std::optional<ColumnValues> make_numbers(const ColumnTask& task);

// Numbers from `least` to `most`, in units of the last of `decimals`, drawn or shuffled.
ColumnValues number_values(std::int64_t least, std::int64_t most, int decimals, bool is_unique);

// The item that a column's type names, for numbers; nothing for another type.
std::optional<ItemAttributes> number_attributes(const ColumnSchema& column);

// The values of a range with their way. Nothing for one that the library refuses.
std::optional<ColumnValues> range_values(const ItemAttributes& item, const RangeTexts& texts,
                                         bool is_unique);

// Texts of a form, which go on after the largest that a unique column holds.
std::optional<ColumnValues> counted_texts(const TextForm& form, const ColumnTask& task);

// A number of units as SQL has it.
std::string decimal_text(std::int64_t units, int decimals);

// The values of a list with their way.
ColumnValues listed(std::vector<std::string> values, bool is_unique);

// The texts that a unique column holds, in order.
std::vector<std::string> held_by(const ColumnTask& task);

// Days or moments as the conditions of a column for dates or timestamps allow.
ColumnValues make_moments(const ColumnTask& task);

// Times of the day, for a column for them or for intervals. Nothing where the column holds them
// all.
std::optional<ColumnValues> make_times(const ColumnTask& task);

// Days, or moments between their midnights, of a column for dates or timestamps.
ColumnValues moment_values(const ColumnSchema& column, const ImportPeriod& period, bool is_unique);

// A text item with room for `length` characters.
ItemAttributes text_attributes(std::size_t length);

// An item for sums of numbers with so many decimals.
ItemAttributes sum_attributes(int decimals);

// What a column's conditions or its type let one choose from; empty for anything else.
const std::vector<std::string>& choices_of(const ColumnTask& task);

// How many characters a text column takes, the least that its conditions ask for, and the most.
std::size_t text_limit(const ColumnTask& task);

}  // namespace korvex::host
