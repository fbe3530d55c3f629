#include "host/commands/check_sets.h"

#include <ostream>
#include <string_view>

#include "host/layout/item_texts.h"
#include "host/records/engine_source.h"
#include "host/records/engine_uniqueness.h"
#include "platform/printable_text.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

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

// Why not all records differ, where that is certain.
std::string repetition_text(const Forecast::Set& set, std::uint64_t records) {
  const sources::Uniqueness& uniqueness = set.uniqueness;
  std::string text = "no";
  const bool is_beyond_domain = records > set.combinations.most;
  if (is_beyond_domain) {
    text += (set.combinations.is_exact() ? ", " : ", at most ") +
            std::to_string(set.combinations.most) +
            (set.combinations.most == 1 ? " value, " : " different values, ") +
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

}  // namespace

std::optional<UniqueSet> read_set(const std::string& names, const PreparedLayout& prepared,
                                  std::ostream& messages) {
  UniqueSet set;
  for (std::string_view list = names; !list.empty();) {
    const std::string name(platform::trimmed(platform::take_until(list, ',')));
    const auto found = find_item(name, prepared, messages);
    if (!found) return std::nullopt;
    set.items.push_back(*found);
    set.names += (set.names.empty() ? "" : ", ") + platform::printable(name);
  }
  if (set.items.empty()) return std::nullopt;
  return set;
}

std::vector<UniqueSet> own_sets(const PreparedLayout& prepared) {
  std::vector<UniqueSet> sets;
  for (const std::vector<PlacedText>& names : prepared.layout().unique) {
    UniqueSet set;
    set.empty = EmptyValues::different;
    for (const PlacedText& name : names) {
      set.names += (set.names.empty() ? "" : ", ") + platform::printable(name.text);
      if (const auto item = prepared.find_item(name.text)) set.items.push_back(*item);
    }
    if (set.items.size() == names.size()) sets.push_back(std::move(set));
  }
  return sets;
}

SetAnswer answer_of(const UniqueSet& asked, const Forecast& forecast) {
  const std::uint64_t records = forecast.records();
  const Forecast::Set set = forecast.set(asked.items, asked.empty);
  const sources::Uniqueness& uniqueness = set.uniqueness;
  if (records <= uniqueness.different) {
    std::string text = "yes, all " + sources::counted_records(records) + " differ";
    if (uniqueness.is_exact() && uniqueness.different != endless) {
      text += "; more than " + std::to_string(uniqueness.different) + " would not";
    }
    return {true, text};
  }
  if (records > uniqueness.repeated) return {false, repetition_text(set, records)};
  std::string text = set.doubts.empty() ? untold : "cannot be computed in advance: " + set.doubts;
  if (uniqueness.different > 1) {
    text += "; the first " + std::to_string(uniqueness.different) + " differ";
  }
  return {false, text};
}

}  // namespace korvex::host
