#include "host/sources/dependencies.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "host/sources/field.h"

namespace korvex::sources {

// Things that follow, and among how many records.
class Dependencies::Reached {
 public:
  std::uint64_t records(const Thing& thing) const {
    const auto found = things_.find(thing);
    return found == things_.end() ? 0 : found->second;
  }

  // Whether that is more than was reached before.
  bool raise(const Thing& thing, std::uint64_t records) {
    if (records <= this->records(thing)) return false;
    things_[thing] = records;
    return true;
  }

 private:
  std::map<Thing, std::uint64_t> things_;
};

void Dependencies::add(std::vector<Thing> from, Thing to, std::uint64_t records) {
  rules_.push_back({std::move(from), to, records});
}

void Dependencies::add_text_of_row(const TextOfRow& text, const Field& field, std::uint64_t rows) {
  Row& row = rows_[text.row];
  row.rows = rows;
  row.parts.push_back({text, &field});
}

void Dependencies::add_text_of_row(const TextOfRow& text, std::span<const std::string_view> list) {
  Row& row = rows_[text.row];
  row.rows = list.size();
  row.parts.push_back({.text = text, .list = list});
}

// Whether no two of the rows have the same of all these texts.
bool Dependencies::tell_row(const std::vector<const PartOfRow*>& known, std::uint64_t rows) {
  std::vector<const Field*> fields;
  std::vector<std::span<const std::string_view>> lists;
  for (const PartOfRow* part : known) {
    if (part->field != nullptr) {
      fields.push_back(part->field);
    } else {
      lists.push_back(part->list);
    }
  }
  if (lists.empty()) return fields.front()->uniqueness_with(fields, rows).different >= rows;
  std::set<std::vector<std::string_view>> texts;
  for (std::uint64_t row = 0; row < rows; ++row) {
    std::vector<std::string_view> text;
    for (const auto& list : lists) text.push_back(list[static_cast<std::size_t>(row)]);
    if (!texts.insert(std::move(text)).second) return false;
  }
  return true;
}

// Whether a row was reached that was not, or further. One text alone has told of its row already.
bool Dependencies::reach_rows(Reached& reached) const {
  bool is_further = false;
  for (const auto& [thing, row] : rows_) {
    std::vector<const PartOfRow*> known;
    std::uint64_t records = endless;
    for (const PartOfRow& part : row.parts) {
      const std::uint64_t known_records =
          std::min(part.text.records, reached.records(part.text.text));
      if (known_records == 0) continue;
      records = std::min(records, known_records);
      known.push_back(&part);
    }
    if (known.size() < 2 || records <= reached.records(thing)) continue;
    if (!tell_row(known, row.rows)) continue;
    is_further = reached.raise(thing, records) || is_further;
  }
  return is_further;
}

// Each pass applies all rules, until none reaches further. What a thing is reached with is the
// number of some rule, so that this ends.
std::uint64_t Dependencies::records_told_by(const std::vector<Thing>& known) const {
  Reached reached;
  for (const Thing& thing : known) reached.raise(thing, endless);
  for (bool is_further = true; is_further;) {
    is_further = false;
    for (const Rule& rule : rules_) {
      std::uint64_t records = rule.records;
      for (const Thing& thing : rule.from) records = std::min(records, reached.records(thing));
      is_further = reached.raise(rule.to, records) || is_further;
    }
    is_further = is_further || reach_rows(reached);
  }
  // Cycles side by side identify a record for as long as their common one. The further the
  // records go, the fewer of them are known.
  std::vector<std::pair<std::uint64_t, Cycle>> cycles;
  for (const ThingInCycle& in_cycle : cycles_) {
    const std::uint64_t records = reached.records(in_cycle.thing);
    if (records > 0) cycles.emplace_back(records, in_cycle.cycle);
  }
  std::sort(cycles.begin(), cycles.end(),
            [](const auto& left, const auto& right) { return left.first > right.first; });
  std::uint64_t told = reached.records(the_record);
  Cycle common;
  for (const auto& [records, cycle] : cycles) {
    common = common_cycle(common, cycle);
    told = std::max(told, std::min(records, common.length()));
  }
  return told;
}

}  // namespace korvex::sources
