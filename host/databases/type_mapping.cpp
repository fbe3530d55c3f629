#include "host/databases/type_mapping.h"

#include <algorithm>
#include <limits>

#include "values/records.h"

namespace korvex::host {

namespace {

// Attributes that fix their digits.
constexpr std::int32_t integer_digits = 10;
constexpr std::int32_t small_integer_digits = 5;
constexpr std::int32_t date_digits = 8;
constexpr std::int32_t time_digits = 6;
constexpr std::int32_t timestamp_digits = 15;

constexpr std::int32_t default_text_length = 40;
constexpr std::int32_t max_letters = 5;
constexpr std::int32_t text_number_digits = 10;
// Enough for every value of a column that repeats, and short to read.
constexpr std::int64_t readable_numbers = 1000;
constexpr int readable_digits = 3;
// More decimals than anybody compares leave room for the digits in front of the point.
constexpr int max_decimals = 9;
constexpr int default_decimals = 2;
constexpr int floating4_digits = 6;
constexpr int floating8_digits = 15;

constexpr std::int64_t calendar_days = 24'856;  // 1970-01-01 to 2038-01-19
constexpr std::int64_t seconds_of_day = 86'400;
constexpr std::int64_t seconds_of_range = 2'147'451'248;  // 1970-01-01 09:00:00 to the last one

std::int64_t power(std::int64_t base, int exponent) {
  std::int64_t result = 1;
  for (int i = 0; i < exponent; ++i) result *= base;
  return result;
}

int digits_of(std::int64_t number) { return static_cast<int>(std::to_string(number).size()); }

MappedColumn ranged(const ItemAttributes& attributes, const std::string& format,
                    const std::string& start, const std::string& end, std::int64_t distinct) {
  MappedColumn mapped;
  mapped.attributes = attributes;
  mapped.values.source = ValuesDraft::Source::range;
  mapped.values.format = format;
  mapped.values.start = start;
  mapped.values.end = end;
  mapped.distinct_values = distinct;
  return mapped;
}

ItemAttributes signed_number(Attribute attribute, int digits, int decimals) {
  return {attribute, 1, digits + 1 + (decimals > 0 ? 1 : 0), digits, decimals};
}

ItemAttributes text_of(std::int32_t length) { return {attribute::character, 1, length, length, 0}; }

// Whole numbers up to `highest`. A unique column goes on behind the largest number that it holds;
// no values remain where that leaves less than a range, which has two.
MappedColumn whole_numbers(const ItemAttributes& attributes, std::int64_t highest,
                           const ColumnUse& use) {
  const std::int64_t start =
      use.is_unique && use.largest ? std::clamp<std::int64_t>(*use.largest, 0, highest) + 1 : 1;
  const std::int64_t end = use.is_unique ? highest : std::min(highest, readable_numbers);
  if (start >= end) return ranged(attributes, "%1U", "0", "1", use.is_unique ? 0 : 2);
  return ranged(attributes, "%" + std::to_string(digits_of(end)) + "D", std::to_string(start),
                std::to_string(end), end - start + 1);
}

MappedColumn wide_integers(const ColumnUse& use) {
  return whole_numbers(signed_number(attribute::number, max_number_digits, 0),
                       power(10, max_number_digits) - 1, use);
}

// An integer column of SQLite is a wide one in spite of its name, should its rows need that.
MappedColumn integers(const ColumnSchema& column, const ItemAttributes& attributes,
                      std::int64_t highest, const ColumnUse& use) {
  const MappedColumn mapped = whole_numbers(attributes, highest, use);
  const bool is_too_short = use.largest && mapped.distinct_values < use.records;
  return column.takes_wide_integers && is_too_short ? wide_integers(use) : mapped;
}

// Numbers of `digits` digits, of which `decimals` stand behind the point.
std::optional<MappedColumn> decimals(const ItemAttributes& attributes, const ColumnUse& use) {
  const int after = std::min(attributes.decimals, max_decimals);
  const int room = std::min(attributes.digits - attributes.decimals, max_number_digits - after);
  if (room < 0) return std::nullopt;
  if (after == 0) return whole_numbers(attributes, power(10, room) - 1, use);
  const int before = use.is_unique ? room : std::min(room, readable_digits);
  const std::string smallest = "0." + std::string(static_cast<std::size_t>(after - 1), '0') + "1";
  const std::string end = (before == 0 ? "0" : std::string(static_cast<std::size_t>(before), '9')) +
                          "." + std::string(static_cast<std::size_t>(after), '9');
  const std::string size = before == 0 ? "" : std::to_string(before);
  MappedColumn mapped = ranged(attributes, "%" + size + "." + std::to_string(after) + "D", smallest,
                               end, power(10, before + after) - 1);
  mapped.values.increment = smallest;
  return mapped;
}

// The sizes that a decimal column has without saying so are those of the largest item.
std::optional<MappedColumn> decimal_column(const ColumnSchema& column, const ColumnUse& use) {
  if (column.scale < 0 || (column.precision > 0 && column.scale > column.precision)) {
    return std::nullopt;
  }
  if (column.precision == 0) {
    return decimals(signed_number(attribute::number, max_number_digits, default_decimals), use);
  }
  const bool is_wide = column.precision > max_number_digits;
  return decimals(signed_number(is_wide ? attribute::number : attribute::decimal, column.precision,
                                column.scale),
                  use);
}

// Texts of a form. Those of a unique column go on behind the largest that it holds.
struct CountedTexts {
  std::string start;
  std::string end;
  std::int64_t left = 0;  // from start to end
};

CountedTexts count_texts(const TextForm& form, const ColumnUse& use) {
  const std::int64_t base = form.highest - form.lowest + 1;
  const bool is_number = form.lowest == '0';
  CountedTexts texts = {std::string(form.count, form.lowest), std::string(form.count, form.highest),
                        power(base, static_cast<int>(form.count))};
  // The number that is left out is 0.
  std::optional<std::string> last;
  if (is_number) last = texts.start;
  if (use.is_unique && use.largest_text) {
    if (const auto largest = use.largest_text(form)) {
      last = largest->substr(form.before.size(), form.count);
    }
  }
  if (!last) return texts;
  std::int64_t used = 0;
  for (const char letter : *last) used = used * base + (letter - form.lowest);
  texts.left -= used + 1;
  // A range has at least two values.
  if (texts.left < 2) return {texts.start, texts.end, 0};
  std::string next = *last;
  std::size_t place = next.size() - 1;
  for (; next[place] == form.highest; --place) next[place] = form.lowest;
  ++next[place];
  texts.start = is_number ? next.substr(next.find_first_not_of('0')) : next;
  return texts;
}

TextForm letters_form(std::size_t count) { return {"", 'A', 'Z', count, ""}; }
TextForm digits_form(const std::string& before, std::size_t count) {
  return {before, '0', '9', count, ""};
}

MappedColumn text_column(std::int32_t length, const ColumnUse& use) {
  const std::int32_t count = std::min(length, max_letters);
  CountedTexts words = count_texts(letters_form(static_cast<std::size_t>(count)), use);
  std::string format = "%" + std::to_string(count) + "S";
  if (use.is_unique && words.left < use.records && length > max_letters) {
    const std::int32_t digits = std::min(length, text_number_digits);
    words = count_texts(digits_form("", static_cast<std::size_t>(digits)), use);
    format = "%" + std::to_string(digits) + "U";
  }
  return ranged(text_of(length), format, words.start, words.end, words.left);
}

// Fixed text in front of a number in a character item.
MappedColumn numbered_text(const std::string& before, int digits, const ColumnUse& use) {
  const auto count = static_cast<std::size_t>(digits);
  const CountedTexts numbers = count_texts(digits_form(before, count), use);
  return ranged(text_of(static_cast<std::int32_t>(before.size() + count)),
                before + "'%" + std::to_string(digits) + "U", numbers.start, numbers.end,
                numbers.left);
}

// A word in the quotation marks of JSON.
MappedColumn json_column(const ColumnUse& use) {
  TextForm form = letters_form(max_letters);
  form.before = form.behind = "\"";
  const CountedTexts words = count_texts(form, use);
  return ranged(text_of(default_text_length), "\"'%5S'\"", words.start, words.end, words.left);
}

}  // namespace

bool has_listed_values(const ColumnSchema& column) {
  return column.type == ColumnType::boolean || column.type == ColumnType::choice;
}

std::optional<MappedColumn> map_column(const ColumnSchema& column, const ColumnUse& use) {
  const bool unique = use.is_unique;
  switch (column.type) {
    case ColumnType::integer16:
      return integers(column, signed_number(attribute::small_integer, small_integer_digits, 0),
                      std::numeric_limits<std::int16_t>::max(), use);
    case ColumnType::integer32:
      return integers(column, signed_number(attribute::integer, integer_digits, 0),
                      std::numeric_limits<std::int32_t>::max(), use);
    case ColumnType::integer64:
      return wide_integers(use);
    case ColumnType::decimal:
      return decimal_column(column, use);
    case ColumnType::floating4:
      return decimals(signed_number(attribute::number, floating4_digits, default_decimals), use);
    case ColumnType::floating8:
      return decimals(signed_number(attribute::number, floating8_digits, default_decimals), use);
    case ColumnType::text:
      return text_column(column.length > 0 ? column.length : default_text_length, use);
    case ColumnType::date:
      return ranged({attribute::date, 0, date_digits, date_digits, 0}, "%4YMD",
                    unique ? "19700101" : "20240101", unique ? "20380119" : "20241231",
                    unique ? calendar_days : 366);
    case ColumnType::time:
      return ranged({attribute::time, 0, time_digits, time_digits, 0}, "%T", "000000", "235959",
                    seconds_of_day);
    case ColumnType::timestamp:
      return ranged({attribute::timestamp, 0, timestamp_digits, timestamp_digits, 0}, "%TS",
                    unique ? "19700101 090000" : "20240101 000000",
                    unique ? "20380119 031407" : "20241231 235959",
                    unique ? seconds_of_range : 366 * seconds_of_day);
    case ColumnType::uuid:
      return numbered_text("00000000-0000-4000-8000-", 12, use);
    case ColumnType::hex_binary:
      return numbered_text("\\x", text_number_digits, use);
    case ColumnType::binary:
      return text_column(text_number_digits, use);
    case ColumnType::json:
      return json_column(use);
    case ColumnType::interval:
      return ranged(text_of(8), "%T", "000000", "235959", seconds_of_day);
    case ColumnType::boolean: {
      // Where the two are numbers, they are numbers for other programs, too.
      if (column.choices.empty() || column.choices.front() != "0") return std::nullopt;
      return ranged(signed_number(attribute::decimal, 1, 0), "%1D", "0", "1", 2);
    }
    case ColumnType::choice:
    case ColumnType::unknown:
      return std::nullopt;
  }
  return std::nullopt;
}

MappedColumn map_text_form(const TextForm& form, const ColumnUse& use) {
  const CountedTexts texts = count_texts(form, use);
  const char directive = form.lowest == '0' ? 'U' : form.lowest == 'a' ? 's' : 'S';
  const std::string before = form.before.empty() ? "" : "'" + form.before + "'";
  const std::string behind = form.behind.empty() ? "" : "'" + form.behind + "'";
  const auto length =
      static_cast<std::int32_t>(form.before.size() + form.count + form.behind.size());
  return ranged(text_of(length), before + "%" + std::to_string(form.count) + directive + behind,
                texts.start, texts.end, texts.left);
}

ItemAttributes attributes_for_list(const ColumnSchema& column, std::size_t longest_value) {
  const std::int32_t own = column.type == ColumnType::text && column.length > 0 ? column.length : 1;
  return text_of(std::max(own, static_cast<std::int32_t>(longest_value)));
}

}  // namespace korvex::host
