#include "host/imports/table_guesses.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "host/guesses/meaning.h"
#include "host/imports/calendar_days.h"
#include "host/imports/condition_parts.h"
#include "host/imports/flags.h"
#include "host/imports/reference_numbers.h"

namespace korvex::host {

namespace {

using M = Meaning;

struct NumberGuess {
  Meaning meaning;
  const char* least;
  const char* most;
};

constexpr std::array number_guesses = std::to_array<NumberGuess>({
    {M::price, "1", "500"},
    {M::quantity, "1", "10"},
    {M::stock, "0", "500"},
    {M::percentage, "0", "50"},
    {M::rating, "1", "5"},
    {M::age, "18", "90"},
    {M::year, "1990", "2025"},
    {M::month, "1", "12"},
    {M::weekday, "1", "7"},
    {M::hour, "0", "23"},
    {M::latitude, "-60", "70"},
    {M::longitude, "-180", "180"},
    {M::weight, "1", "50"},
    {M::file_size, "1000", "5000000"},
    {M::priority, "1", "5"},
});

// Where in the life of a record a moment is, the days up to it, and the words of a state that
// has got there.
struct Stage {
  Meaning meaning;
  int rank;
  int days;
  std::array<std::string_view, 6> words;
};

constexpr std::array stages = std::to_array<Stage>({
    {M::creation, 0, 0, {}},
    {M::begin, 1, 30, {}},
    {M::payment, 2, 14, {"paid", "bezahlt", "支払済"}},
    {M::shipment, 3, 7, {"shipped", "sent", "versandt", "dispatched", "出荷済"}},
    {M::delivery, 4, 7, {"delivered", "geliefert", "received", "配達済"}},
    {M::giving_back, 5, 30, {"returned", "refunded"}},
    {M::end, 5, 60, {"completed", "closed", "done", "finished", "resolved", "ended"}},
    {M::due, 2, 30, {}},
    {M::change, 2, 90, {}},
    {M::removal, 6, 90, {"deleted", "cancelled", "canceled", "archived", "storniert", "removed"}},
});

constexpr int begin_rank = 1;
constexpr int last_chained_rank = 4;
constexpr int removal_rank = 6;

const Stage* stage_of(Meaning meaning) {
  const auto found = std::find_if(stages.begin(), stages.end(),
                                  [&](const Stage& stage) { return stage.meaning == meaning; });
  return found == stages.end() ? nullptr : &*found;
}

// The stage that a state such as "Shipped" has got to; nothing for one that is none of them.
const Stage* stage_of_state(const std::string& state) {
  const std::vector<std::string> words = name_words(state);
  if (words.size() != 1) return nullptr;
  for (const Stage& stage : stages) {
    for (const std::string_view word : stage.words) {
      if (!word.empty() && word == words.front()) return &stage;
    }
  }
  return nullptr;
}

// What an address is of, when it is none of a street.
constexpr std::array<std::string_view, 12> other_addresses = {
    "mac",        "wallet",  "memory", "server", "host", "contract",
    "correspond", "comment", "pager",  "proxy",  "ip",   "ipv"};

bool is_number(const ColumnSchema& column) {
  switch (column.type) {
    case ColumnType::integer16:
    case ColumnType::integer32:
    case ColumnType::integer64:
    case ColumnType::decimal:
    case ColumnType::floating4:
    case ColumnType::floating8:
      return true;
    default:
      return false;
  }
}

bool is_whole(const ColumnSchema& column) {
  return column.type == ColumnType::integer32 || column.type == ColumnType::integer64;
}

std::string_view set_language(NameLanguage language) {
  if (language == NameLanguage::german) return "de";
  return language == NameLanguage::japanese ? "ja" : "en";
}

std::string seconds_text(std::chrono::year_month_day day) {
  return std::to_string(
      std::chrono::sys_seconds(std::chrono::sys_days(day)).time_since_epoch().count());
}

// Sets the bounds of a guess where the conditions leave both of them free or hold the guess.
bool set_bounds(const std::string& least, const std::string& most, ColumnFacts& facts) {
  if (facts.choices) return false;
  const std::string zero = "0";
  if (facts.least && is_below(least, facts.least->text.value_or(zero))) return false;
  if (facts.most && is_below(facts.most->text.value_or(zero), most)) return false;
  const bool is_open = facts.least && !facts.least->is_inclusive && facts.least->text == least;
  if (!is_open) facts.least = ValueBound{least, true};
  facts.most = ValueBound{most, true};
  return true;
}

}  // namespace

TableGuesses::TableGuesses(const ImportedTable& table, const KeyPlan& keys)
    : schema_(table.schema),
      kind_(kind_of_table(table.schema.bare_name)),
      rows_(table.schema.columns.size()) {
  std::map<NameLanguage, int> languages;
  for (std::size_t i = 0; i < schema_.columns.size(); ++i) {
    meanings_.push_back(keys.has_own_values(i) ? meaning_in(i) : std::nullopt);
    if (meanings_.back()) ++languages[meanings_.back()->language];
  }
  share_moments(table.facts.orders);
  NameLanguage most = NameLanguage::english;
  for (const auto& [language, count] : languages) {
    if (count > languages[most]) most = language;
  }
  language_ = set_language(most);
  const auto& sets = schema_.unique_sets;
  const bool has_number = !sets.empty() && sets.front().size() == 1 &&
                          keys.has_own_values(sets.front().front()) &&
                          is_number(schema_.columns[sets.front().front()]);
  if (has_number) number_ = schema_.columns[sets.front().front()].name;
}

// A text that a condition compares with one that holds moments holds them, too.
void TableGuesses::share_moments(const std::vector<ColumnOrder>& orders) {
  for (const ColumnOrder& order : orders) {
    auto& left = meanings_[order.left];
    auto& right = meanings_[order.right];
    if (schema_.columns[order.left].type != ColumnType::text) continue;
    if (left && is_moment(left->meaning) && !right) right = left;
    if (right && is_moment(right->meaning) && !left) left = right;
  }
}

std::optional<NameMeaning> TableGuesses::meaning_in(std::size_t column) const {
  const std::string& name = schema_.columns[column].name;
  auto meaning = find_meaning(name);
  if (meaning) {
    const bool is_other_address =
        meaning->meaning == M::street && !meaning->others.empty() &&
        std::count(other_addresses.begin(), other_addresses.end(), meaning->others.back()) > 0;
    return is_other_address ? std::nullopt : meaning;
  }
  // A code says nothing without its table.
  const std::vector<std::string> words = name_words(name);
  const bool is_code = !words.empty() && (words.back() == "code" || words.back() == "iso");
  if (!is_code) return std::nullopt;
  NameMeaning code{M::country_code, NameLanguage::english, words.back(), {}};
  if (kind_ == TableKind::countries) return code;
  code.meaning = M::language_code;
  if (kind_ == TableKind::languages) return code;
  code.meaning = M::currency_code;
  return kind_ == TableKind::currencies ? std::optional(code) : std::nullopt;
}

std::optional<std::size_t> TableGuesses::find(Meaning meaning,
                                              const std::vector<std::string>& others) const {
  for (std::size_t i = 0; i < meanings_.size(); ++i) {
    if (meanings_[i] && meanings_[i]->meaning == meaning && meanings_[i]->others == others) {
      return i;
    }
  }
  return std::nullopt;
}

TextCompany TableGuesses::company_of(std::size_t column, const NameMeaning& meaning) const {
  TextCompany company;
  company.table = meaning.others.empty() ? kind_ : kind_of_table(meaning.others.back());
  company.language = language_;
  const auto given = find(M::given_name, meaning.others);
  const auto family = find(M::family_name, meaning.others);
  const auto is_there = [&](const std::optional<std::size_t>& other) {
    return other && !schema_.columns[*other].nullable && *other != column;
  };
  if (is_there(given)) company.given_name = schema_.columns[*given].name;
  if (is_there(family)) company.family_name = schema_.columns[*family].name;
  company.number = number_;
  company.has_city = find(M::city, meaning.others).has_value();
  company.has_given = given.has_value();
  return company;
}

void TableGuesses::narrow(std::size_t column, const ImportPeriod& period, ColumnSchema& schema,
                          ColumnFacts& facts, PlannedItem& item) const {
  using namespace std::chrono;
  if (!meanings_[column]) return;
  const NameMeaning& meaning = *meanings_[column];
  const std::string reason = "by its name: \"" + meaning.phrase + "\"";
  if (is_moment(meaning.meaning) && schema.type == ColumnType::text && schema.length == 0 &&
      schema.declared_type != "text" && facts.regular.empty() && facts.like.empty() &&
      !facts.choices) {
    schema.type = meaning.phrase.ends_with("date") || meaning.meaning == M::birth
                      ? ColumnType::date
                      : ColumnType::timestamp;
    item.reason = reason;
  } else if (is_moment(meaning.meaning) && is_whole(schema)) {
    if (set_bounds(seconds_text(period.first), seconds_text(period.last), facts)) {
      item.reason = reason + ", in seconds since 1970";
    }
    return;
  }
  if (meaning.meaning == M::birth && !facts.is_bounded() &&
      (schema.type == ColumnType::date || schema.type == ColumnType::timestamp)) {
    // No range of days begins earlier, and who works on the first of the other days is of age.
    constexpr year first_year{1970};
    constexpr int youngest = 18;
    facts.least = ValueBound{sql_day(first_year / January / 2), true};
    facts.most = ValueBound{sql_day((period.first.year() - years(youngest)) / January / 1), true};
    item.reason = reason;
  }
  if (!is_number(schema)) return;
  for (const NumberGuess& guess : number_guesses) {
    if (guess.meaning != meaning.meaning) continue;
    const bool is_share = guess.meaning == M::percentage && schema.precision > 0 &&
                          schema.precision - schema.scale <= 1;
    const bool is_pay = meaning.phrase == "salary" || meaning.phrase == "gehalt";
    const std::string least = is_pay ? "20000" : guess.least;
    const std::string most = is_pay ? "90000" : is_share ? "0.5" : guess.most;
    if (set_bounds(least, most, facts)) item.reason = reason;
  }
}

std::optional<ColumnValues> TableGuesses::text_values(std::size_t column, const ColumnTask& task,
                                                      PlannedItem& item) {
  if (!meanings_[column]) {
    auto numbers = guess_reference_numbers(schema_.columns[column].name, task);
    if (!numbers) return std::nullopt;
    item.reason = "by its name: " + numbers->what;
    return std::move(numbers->values);
  }
  const NameMeaning& meaning = *meanings_[column];
  const TextCompany company = company_of(column, meaning);
  auto guess = guess_text(meaning.meaning, task, company);
  if (!guess) return std::nullopt;
  item.reason = "by its name, \"" + meaning.phrase + "\": " + guess->what;
  rows_[column] = guess->rows;
  return std::move(guess->values);
}

std::string TableGuesses::share_of_nulls(std::size_t column) const {
  if (!meanings_[column]) return "0.1";
  const NameMeaning& meaning = *meanings_[column];
  if (meaning.phrase == "middle name") return "0.5";
  switch (meaning.meaning) {
    case M::removal:
      return "0.95";
    case M::sentence:
    case M::end:
    case M::payment:
    case M::shipment:
    case M::delivery:
      return "0.3";
    case M::giving_back:
      return "0.9";
    default:
      return "0.1";
  }
}

std::vector<ColumnOrder> TableGuesses::orders() const {
  std::vector<ColumnOrder> found;
  for (std::size_t i = 0; i < meanings_.size(); ++i) {
    const Stage* const stage = meanings_[i] ? stage_of(meanings_[i]->meaning) : nullptr;
    if (stage == nullptr || stage->rank == 0) continue;
    // The last of the stages before it; what is in no chain follows the beginning.
    const bool is_chained = stage->meaning != M::due && stage->meaning != M::change &&
                            (stage->rank <= last_chained_rank || stage->meaning == M::giving_back);
    const int most = is_chained ? stage->rank - 1 : begin_rank;
    std::optional<std::size_t> before;
    int rank = -1;
    for (std::size_t j = 0; j < meanings_.size(); ++j) {
      const Stage* const other = meanings_[j] ? stage_of(meanings_[j]->meaning) : nullptr;
      if (other == nullptr || other->meaning == M::due || other->meaning == M::change) continue;
      // Of two beginnings, the nearest in front of the column is its own.
      if (other->rank > most || other->rank < rank || (other->rank == rank && j > i)) continue;
      if (schema_.columns[j].type != schema_.columns[i].type) continue;
      before = j;
      rank = other->rank;
    }
    if (!before) continue;
    found.push_back({*before, ColumnOrder::Kind::less_or_equal, i, stage->days, true});
  }
  return found;
}

// A state such as "shipped" decides which moments there are.
void TableGuesses::add_conditions(std::vector<PlannedItem>& items) const {
  const auto state = std::find_if(meanings_.begin(), meanings_.end(), [](const auto& meaning) {
    return meaning && meaning->meaning == M::status;
  });
  if (state == meanings_.end()) return;
  const auto place = static_cast<std::size_t>(state - meanings_.begin());
  if (!items[place].values || items[place].values->listed.empty()) return;
  const std::vector<std::string>& states = items[place].values->listed;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const Stage* const stage = meanings_[i] ? stage_of(meanings_[i]->meaning) : nullptr;
    if (stage == nullptr || stage->words.front().empty() || items[i].empty_share.empty()) continue;
    std::vector<std::string> reached;
    bool has_own = false;
    for (const std::string& each : states) {
      const Stage* const other = stage_of_state(each);
      if (other == nullptr || other->rank < stage->rank) continue;
      if (other->rank == removal_rank && stage->rank != removal_rank) continue;
      reached.push_back(each);
      has_own = has_own || other->rank == stage->rank;
    }
    if (!has_own) continue;
    items[i].empty_share.clear();
    items[i].when =
        "{ " + toml_text(schema_.columns[place].name) + " = " + toml_texts(reached) + " }";
    items[place].empty_share.clear();
  }
}

// Columns of one place, or one person, take one row, and are empty together.
void TableGuesses::add_groups(std::vector<PlannedItem>& items) const {
  std::map<std::string, std::vector<std::size_t>> groups;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!items[i].values || rows_[i].empty() || !meanings_[i]) continue;
    std::string name;
    for (const std::string& word : meanings_[i]->others) name += word + " ";
    groups[name + rows_[i]].push_back(i);
  }
  for (const auto& [name, members] : groups) {
    if (members.size() < 2) continue;
    // One of them says which way all of them go: one that must not come twice, if there is any.
    const auto shuffled = std::find_if(members.begin(), members.end(), [&](std::size_t i) {
      const auto& keys = items[i].values->keys;
      return std::any_of(keys.begin(), keys.end(),
                         [](const LayoutKey& key) { return key.value == toml_text("shuffled"); });
    });
    const std::string* empty = nullptr;
    const std::size_t giver = shuffled == members.end() ? members.front() : *shuffled;
    for (const std::size_t i : members) {
      if (i != giver) {
        std::erase_if(items[i].values->keys,
                      [](const LayoutKey& key) { return key.name == "order"; });
      }
      items[i].group = name;
      if (items[i].empty_share.empty()) continue;
      if (empty != nullptr) {
        items[i].empty_share.clear();
        items[i].empty_with = *empty;
      } else {
        empty = &schema_.columns[i].name;
      }
    }
  }
}

void TableGuesses::finish(std::vector<PlannedItem>& items) const {
  add_conditions(items);
  for (std::size_t i = 0; i < items.size(); ++i) {
    const bool is_removal = meanings_[i] && meanings_[i]->meaning == M::removal;
    if (is_removal) follow_flag(schema_, i, name_words(meanings_[i]->phrase).front(), items);
  }
  add_groups(items);
  weigh_flags(schema_, items);
}

}  // namespace korvex::host
