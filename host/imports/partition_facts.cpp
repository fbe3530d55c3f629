#include "host/imports/partition_facts.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/databases/sql_words.h"

namespace korvex::host {

namespace {

struct Bounds {
  std::optional<std::string> from;  // none: from the smallest
  std::optional<std::string> to;    // not included; none: to the largest
};

struct Partitions {
  bool has_default = false;
  std::vector<Bounds> ranges;
  std::vector<std::string> values;
};

// The first constant after a place; none for MINVALUE and MAXVALUE.
std::optional<std::string> constant_after(const std::vector<SqlWord>& words, std::size_t place) {
  std::string text;
  for (std::size_t i = place; i < words.size(); ++i) {
    const SqlWord& word = words[i];
    if (word.is_symbol('(')) continue;
    if (word.is_symbol(',') || word.is_symbol(')')) break;
    if (word.is_keyword("MINVALUE") || word.is_keyword("MAXVALUE")) return std::nullopt;
    text += word.text;
  }
  return text;
}

void add_bound(const std::string& bound, Partitions& partitions) {
  const std::vector<SqlWord> words = sql_words(bound, Brackets::are_symbols);
  Bounds range;
  bool is_range = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].is_keyword("DEFAULT")) partitions.has_default = true;
    if (words[i].is_keyword("FROM")) {
      is_range = true;
      range.from = constant_after(words, i + 1);
    }
    if (words[i].is_keyword("TO")) range.to = constant_after(words, i + 1);
    if (words[i].is_keyword("IN")) {
      for (std::size_t j = i + 1; j < words.size(); ++j) {
        if (words[j].kind == SqlWord::Kind::symbol || words[j].is_keyword("NULL")) continue;
        partitions.values.push_back(words[j].text);
      }
      break;
    }
  }
  if (is_range) partitions.ranges.push_back(std::move(range));
}

// Numbers by size, dates by their texts.
bool is_before(const Bounds& left, const Bounds& right) {
  if (!left.from || !right.from) return !left.from && right.from.has_value();
  if (left.from->size() != right.from->size() && left.from->find('-') == std::string::npos) {
    return left.from->size() < right.from->size();
  }
  return *left.from < *right.from;
}

void add_ranges(std::vector<Bounds> ranges, ColumnFacts& facts) {
  std::sort(ranges.begin(), ranges.end(), is_before);
  std::size_t best = 0;
  std::size_t best_size = 0;
  for (std::size_t begin = 0; begin < ranges.size();) {
    std::size_t end = begin + 1;
    while (end < ranges.size() && ranges[end].from == ranges[end - 1].to) ++end;
    if (end - begin > best_size) {
      best = begin;
      best_size = end - begin;
    }
    begin = end;
  }
  const Bounds run = {ranges[best].from, ranges[best + best_size - 1].to};
  if (run.from && !facts.least) facts.least = ValueBound{run.from, true};
  if (run.to && !facts.most) facts.most = ValueBound{run.to, false};
}

}  // namespace

void add_partition_facts(const TableSchema& table, const TableRules& rules, TableFacts& facts) {
  for (std::size_t column = 0; column < table.columns.size(); ++column) {
    Partitions partitions;
    for (const PartitionBound& bound : rules.partitions) {
      if (bound.column == column) add_bound(bound.text, partitions);
    }
    const bool is_partitioned = !partitions.ranges.empty() || !partitions.values.empty();
    // A row that goes to no partition is refused, as is a NULL.
    if (is_partitioned && !partitions.has_default) {
      if (!partitions.ranges.empty()) add_ranges(partitions.ranges, facts.columns[column]);
      if (!partitions.values.empty() && !facts.columns[column].choices) {
        facts.columns[column].choices = partitions.values;
      }
      facts.columns[column].is_never_null = true;
    }
  }
}

}  // namespace korvex::host
