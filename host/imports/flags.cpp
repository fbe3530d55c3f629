#include "host/imports/flags.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/guesses/meaning.h"
#include "host/layout/own_text.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 8> seldom_true = {
    "deleted", "archived", "banned", "locked", "admin", "superuser", "staff", "blocked"};
constexpr std::array<std::string_view, 7> mostly_true = {
    "active", "enabled", "verified", "confirmed", "visible", "published", "available"};

// The last word of a flag's name; empty for what is no flag of both values.
std::string flag_word(const ColumnSchema& column, const PlannedItem& item) {
  if (column.type != ColumnType::boolean || !item.values || item.values->listed.size() != 2) {
    return {};
  }
  const std::vector<std::string> words = name_words(column.name);
  return words.empty() ? std::string() : words.back();
}

}  // namespace

void weigh_flags(const TableSchema& table, std::vector<PlannedItem>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string word = flag_word(table.columns[i], items[i]);
    const auto is_among = [&](const auto& list) {
      return std::count(list.begin(), list.end(), word) > 0;
    };
    const bool is_seldom = is_among(seldom_true);
    if (!is_seldom && !is_among(mostly_true)) continue;
    items[i].values->keys = {{"weights", is_seldom ? "[19, 1]" : "[1, 9]"}};
    items[i].reason = is_seldom ? "by its name: seldom true" : "by its name: mostly true";
  }
}

void follow_flag(const TableSchema& table, std::size_t moment, const std::string& verb,
                 std::vector<PlannedItem>& items) {
  PlannedItem& item = items[moment];
  if (item.empty_share.empty()) return;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string word = flag_word(table.columns[i], items[i]);
    const bool is_same = word == verb;
    if (i == moment || (!is_same && word != "active" && word != "enabled")) continue;
    item.empty_share.clear();
    item.when = "{ " + toml_text(table.columns[i].name) + " = " +
                toml_texts({items[i].values->listed[is_same ? 1 : 0]}) + " }";
    return;
  }
}

}  // namespace korvex::host
