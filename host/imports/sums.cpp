#include "host/imports/sums.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "host/guesses/meaning.h"
#include "host/imports/key_plan.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 4> total_words = {"total", "summe", "gesamtbetrag", "合計"};
// What a line may call its own part, the first that it has.
constexpr std::array<std::string_view, 6> part_words = {"total",  "subtotal", "amount",
                                                        "betrag", "price",    "金額"};
constexpr int digits_of_sums = 5;  // in front of the point

bool is_money(const ColumnSchema& column) {
  const bool is_wide = column.precision == 0 || column.precision - column.scale >= digits_of_sums;
  return column.type == ColumnType::decimal && column.scale >= 0 && is_wide;
}

// `total` or `order_total`, which nothing but a lower bound of 0 holds back.
bool is_total(const ImportedTable& table, std::size_t i) {
  const std::vector<std::string> words = name_words(table.schema.columns[i].name);
  const ColumnFacts& facts = table.facts.columns[i];
  const bool has_word = std::any_of(words.begin(), words.end(), [](const std::string& word) {
    return std::count(total_words.begin(), total_words.end(), word) > 0;
  });
  const bool is_free = !facts.choices && !facts.most &&
                       (!facts.least || (facts.least->text == "0" && facts.least->is_inclusive));
  return has_word && is_free && is_money(table.schema.columns[i]) &&
         !table.schema.columns[i].is_generated;
}

std::optional<std::size_t> find_part(const ImportedTable& table, int scale) {
  for (const std::string_view part : part_words) {
    for (std::size_t i = 0; i < table.schema.columns.size(); ++i) {
      const ColumnSchema& column = table.schema.columns[i];
      const std::vector<std::string> words = name_words(column.name);
      const bool fits = column.type == ColumnType::decimal && column.precision > 0 &&
                        column.scale <= scale && !column.is_generated;
      if (fits && !words.empty() && words.back() == part) return i;
    }
  }
  return std::nullopt;
}

// The one key that leads from records with parts to a table.
std::optional<SumSource> find_source(const DatabaseModel& model, std::size_t parent, int scale) {
  std::optional<SumSource> found;
  for (std::size_t child = 0; child < model.tables.size(); ++child) {
    const ImportedTable& table = model.tables[child];
    if (child == parent || table.is_kept) continue;
    for (const ForeignKey& key : table.schema.foreign_keys) {
      if (key.columns.size() != 1 || model.find(key) != parent) continue;
      const auto part = find_part(table, scale);
      if (!part) continue;
      if (found) return std::nullopt;
      found = SumSource{child, &key, *part};
    }
  }
  return found;
}

}  // namespace

Sums find_sums(const DatabaseModel& model) {
  Sums sums;
  for (std::size_t table = 0; table < model.tables.size(); ++table) {
    const ImportedTable& imported = model.tables[table];
    if (imported.is_kept) continue;
    for (std::size_t i = 0; i < imported.schema.columns.size(); ++i) {
      if (!is_total(imported, i)) continue;
      const auto source = find_source(model, table, imported.schema.columns[i].scale);
      if (!source) continue;
      // The records of a parent have to be known, which the key with each tells.
      const KeyPlan keys = plan_keys(
          model, source->table, 1, source->key, [](std::size_t) { return std::uint64_t{1}; }, true);
      const bool leads = keys.hub && keys.keys[*keys.hub].key == source->key &&
                         keys.has_own_values(source->column);
      if (leads) sums[{table, i}] = *source;
    }
  }
  return sums;
}

}  // namespace korvex::host
