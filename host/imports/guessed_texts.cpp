#include "host/imports/guessed_texts.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "host/imports/set_values.h"
#include "host/layout/own_text.h"
#include "host/ways/mixing.h"

namespace korvex::host {

namespace {

// Fewer would not look like more than one.
constexpr std::size_t fewest_fitting = 5;
constexpr std::size_t made_texts = 300;  // of those that no set has
constexpr int email_digits = 6;
constexpr std::size_t digest_length = 64;

std::uint64_t draw(std::uint64_t index, std::uint64_t use, std::uint64_t below) {
  return ways::absorb(ways::absorb(use, index), below) % below;
}

class TextGuesser {
 public:
  TextGuesser(const ColumnTask& task, const TextCompany& company)
      : task_(task), company_(company), choices_(choices_of(task)), limit_(text_limit(task)) {}

  std::optional<GuessedText> guess(Meaning meaning) {
    switch (meaning) {
      case Meaning::given_name:
        return from_sets({"people.given", "people.given_ascii"}, "given names");
      case Meaning::family_name:
        return from_sets({"people.family", "people.family_ascii"}, "family names");
      case Meaning::full_name:
        return full_names();
      case Meaning::name:
        return names();
      case Meaning::title:
        return titles();
      case Meaning::sex:
        return from_sets({"people.sex"}, "the given name's");
      case Meaning::email:
        return emails();
      case Meaning::user_name:
        return task_.is_unique ? numbered("user", "") : from_sets({"email.user"}, "user names");
      case Meaning::phone:
        return task_.is_unique ? numbered("+1 202 555 ", "")
                               : from_sets({"phone.number"}, "numbers kept for fiction");
      case Meaning::street:
        return streets();
      case Meaning::city:
        return from_sets({"places.city", "places.city_ascii"}, "cities");
      case Meaning::region:
        return from_sets({"places.region"}, "regions");
      case Meaning::postcode:
        return from_sets({"places.postcode"}, "postcodes");
      case Meaning::country:
        if (company_.has_city) {
          return from_sets({"places.country", "places.country_code"}, "countries of the cities");
        }
        return from_sets({"countries.country", "countries.code3", "countries.code"}, "countries");
      case Meaning::country_code:
        if (company_.has_city) return from_sets({"places.country_code"}, "codes of countries");
        return from_sets({"countries.code"}, "codes of countries");
      case Meaning::company:
        return from_sets({"companies.company", "companies.company_ascii"}, "companies");
      case Meaning::industry:
        return from_sets({"companies.industry"}, "industries");
      case Meaning::job:
        return from_sets({"jobs.job"}, "jobs");
      case Meaning::department:
        return from_sets({"jobs.field"}, "fields of work");
      case Meaning::product:
        return from_sets({"products.product"}, "products");
      case Meaning::category:
        return from_sets({"products.category"}, "categories of products");
      case Meaning::colour:
        return from_sets({"colours.colour"}, "colours");
      case Meaning::colour_code:
        return from_sets({"colours.hex"}, "colours");
      case Meaning::language:
        return from_sets({"languages.language", "languages.code"}, "languages");
      case Meaning::language_code:
        return from_sets({"languages.code"}, "codes of languages");
      case Meaning::currency:
        if (company_.table == TableKind::countries) {
          return from_sets({"countries.currency"}, "their currencies");
        }
        return from_sets({"currencies.currency", "currencies.code"}, "currencies");
      case Meaning::currency_code:
        return from_sets({"currencies.code"}, "codes of currencies");
      case Meaning::sentence:
        return from_sets({"sentences.sentence"}, "sentences");
      case Meaning::domain_name:
        return from_sets({"companies.domain"}, "names that do not exist");
      default:
        return made(meaning);
    }
  }

 private:
  // The first of some sets whose values all fit, or else that has some that do.
  std::optional<GuessedText> from_sets(const std::vector<std::string>& names,
                                       const std::string& what) {
    for (const bool must_be_whole : {true, false}) {
      for (const std::string& name : names) {
        std::vector<std::string> values = set_values(name, company_.language);
        const std::size_t all = values.size();
        std::erase_if(values, [&](const std::string& value) { return !fits(value); });
        if (values.size() < std::min(fewest_fitting, all) || values.empty()) continue;
        const bool is_whole = values.size() == all;
        if (!is_whole && must_be_whole) continue;
        std::optional<GuessedText> text;
        if (is_whole && is_enough(name, all)) {
          text = builtin(name, all, what);
        } else {
          text = listed(std::move(values), what);
        }
        if (text) text->is_closed = is_closed(name);
        return text;
      }
    }
    return std::nullopt;
  }

  // There are no more countries than there are; of other names, more can be made.
  bool is_enough(const std::string& name, std::size_t size) const {
    if (!task_.is_unique) return true;
    if (task_.rows_there > 0 || set_repeats(name, company_.language)) return false;
    return is_closed(name) || size >= wanted();
  }

  static bool is_closed(const std::string& name) {
    return name.starts_with("countries.") || name.starts_with("languages.") ||
           name.starts_with("currencies.");
  }

  GuessedText builtin(const std::string& name, std::size_t size, const std::string& what) {
    GuessedText text;
    text.what = what;
    text.values.attributes = text_attributes(limit_);
    text.values.period = size;
    text.values.keys = {{"type", toml_text("builtin")},
                        {"set", toml_text(name)},
                        {"language", toml_text(company_.language)},
                        {"order", toml_text(task_.is_unique ? "shuffled" : "random")}};
    text.rows = rows_of(name);
    return text;
  }

  // Columns of one table of a set belong together: `people.given` goes with the sex.
  static std::string rows_of(const std::string& name) {
    const std::string set = name.substr(0, name.find('.'));
    if (set == "people") return name.starts_with("people.family") ? "family" : "person";
    return set == "places" ? "place" : set;
  }

  std::size_t wanted() const {
    return static_cast<std::size_t>(std::max<std::int64_t>(task_.records, 1));
  }

  bool fits(const std::string& value) const {
    const std::size_t size = character_count(value);
    const auto least = static_cast<std::size_t>(std::max(task_.facts.least_length.value_or(0), 0));
    if (!choices_.empty() && std::count(choices_.begin(), choices_.end(), value) == 0) return false;
    return size <= limit_ && size >= least;
  }

  // A list of its own: of a unique column as many as there are records, with numbers where they
  // are not enough.
  std::optional<GuessedText> listed(std::vector<std::string> values, const std::string& what) {
    if (task_.is_unique) {
      std::vector<std::string> held;
      if (task_.held) held = task_.held();
      const std::set<std::string> taken(held.begin(), held.end());
      std::vector<std::string> free;
      const std::vector<std::string> plain = values;
      for (int round = 1; free.size() < wanted() &&
                          round <= static_cast<int>(wanted()) + 1 + static_cast<int>(taken.size());
           ++round) {
        for (const std::string& value : plain) {
          std::string next = round == 1 ? value : value + " " + std::to_string(round);
          if (free.size() < wanted() && fits(next) && !taken.contains(next)) {
            free.push_back(std::move(next));
          }
        }
      }
      values = std::move(free);
    }
    std::erase_if(values, [&](const std::string& value) { return !fits(value); });
    if (values.empty()) return std::nullopt;
    GuessedText text;
    text.what = what;
    text.values.attributes = text_attributes(limit_);
    text.values.period = values.size();
    text.values.listed = std::move(values);
    text.values.keys = {{"order", toml_text(task_.is_unique ? "shuffled" : "random")}};
    return text;
  }

  GuessedText composed(const std::string& pattern, const std::string& what) {
    GuessedText text;
    text.what = what;
    text.values.attributes = text_attributes(limit_);
    text.values.period = std::numeric_limits<std::uint64_t>::max();
    text.values.keys = {{"type", toml_text("template")}, {"text", toml_text(pattern)}};
    return text;
  }

  bool has_person() const { return !company_.given_name.empty() && !company_.family_name.empty(); }

  std::optional<GuessedText> full_names() {
    constexpr std::size_t long_enough = 40;
    const bool is_japanese = company_.language == "ja";
    if (has_person() && limit_ >= long_enough && !task_.is_unique) {
      const std::string given = "{" + company_.given_name + "}";
      const std::string family = "{" + company_.family_name + "}";
      return composed(is_japanese ? family + " " + given : given + " " + family,
                      "the name in two columns");
    }
    const auto given = set_values("people.given", company_.language);
    const auto family = set_values("people.family", company_.language);
    if (given.empty() || family.empty()) return std::nullopt;
    std::set<std::string> known;
    std::vector<std::string> values;
    // The lower of two draws: common names are first.
    const auto common = [](std::uint64_t i, std::uint64_t use, std::size_t size) {
      return std::min(draw(i, use, size), draw(i, use + 1, size));
    };
    for (std::uint64_t i = 0; values.size() < made_texts && i < made_texts * 3; ++i) {
      const std::string& first = given[common(i, 1, given.size())];
      const std::string& last = family[common(i, 3, family.size())];
      std::string name = is_japanese ? last + " " + first : first + " " + last;
      if (known.insert(name).second) values.push_back(std::move(name));
    }
    return listed(std::move(values), "names of people");
  }

  std::optional<GuessedText> names() {
    switch (company_.table) {
      case TableKind::people:
        return full_names();
      case TableKind::companies:
        return guess(Meaning::company);
      case TableKind::products:
        return guess(Meaning::product);
      case TableKind::countries:
        return guess(Meaning::country);
      case TableKind::cities:
        return guess(Meaning::city);
      case TableKind::currencies:
        return guess(Meaning::currency);
      case TableKind::languages:
        return guess(Meaning::language);
      case TableKind::colours:
        return guess(Meaning::colour);
      case TableKind::categories:
        return guess(Meaning::category);
      case TableKind::jobs:
        return guess(Meaning::job);
      case TableKind::departments:
        return guess(Meaning::department);
      default:
        return std::nullopt;
    }
  }

  std::optional<GuessedText> titles() {
    if (company_.table == TableKind::products) return guess(Meaning::product);
    const bool is_job = company_.table == TableKind::jobs || company_.table == TableKind::people;
    if (is_job) return guess(Meaning::job);
    return guess(Meaning::sentence);
  }

  std::optional<GuessedText> emails() {
    constexpr std::size_t long_enough = 60;
    const bool is_latin = company_.language != "ja";
    if (has_person() && is_latin && limit_ >= long_enough && !company_.number.empty()) {
      return composed("{" + company_.given_name + "|ascii|lower}.{" + company_.family_name +
                          "|ascii|lower}{" + company_.number + "}@example.org",
                      "made of the name, at a domain that does not exist");
    }
    if (!task_.is_unique) return from_sets({"email.address"}, "addresses that belong to nobody");
    return numbered("user", "@example.org");
  }

  // Fixed text around a number that counts on.
  std::optional<GuessedText> numbered(const std::string& before, const std::string& after) {
    const std::size_t fixed = before.size() + after.size();
    if (limit_ < fixed + 2) return std::nullopt;
    const std::size_t digits = std::min<std::size_t>(email_digits, limit_ - fixed);
    auto values = counted_texts({before, '0', '9', digits, after}, task_);
    if (!values || values->period < wanted()) return std::nullopt;
    GuessedText text;
    text.what = "unique, and belong to nobody";
    text.values = std::move(*values);
    text.values.attributes = text_attributes(limit_);
    return text;
  }

  std::optional<GuessedText> streets() {
    constexpr std::uint64_t house_numbers = 150;
    std::vector<std::string> values;
    std::uint64_t i = 0;
    for (const std::string& street : set_values("streets.street", company_.language)) {
      const std::string number = std::to_string(draw(++i, 5, house_numbers) + 1);
      const bool is_after = company_.language == "de";
      values.push_back(company_.language == "ja" ? street
                       : is_after                ? street + " " + number
                                                 : number + " " + street);
    }
    return listed(std::move(values), "streets");
  }

  std::optional<GuessedText> made(Meaning meaning) {
    switch (meaning) {
      case Meaning::web_address: {
        std::vector<std::string> values = set_values("companies.domain", company_.language);
        for (std::string& value : values) value = "https://www." + value + "/";
        return listed(std::move(values), "addresses that do not exist");
      }
      case Meaning::network_address: {
        std::vector<std::string> values;
        for (std::uint64_t i = 0; i < made_texts; ++i) {
          values.push_back("10." + std::to_string(draw(i, 7, 256)) + "." +
                           std::to_string(draw(i, 8, 256)) + "." +
                           std::to_string(draw(i, 9, 254) + 1));
        }
        return listed(std::move(values), "addresses of a private network");
      }
      case Meaning::digest:
        return digests();
      case Meaning::time_zone:
        return listed({"UTC", "Europe/Berlin", "Europe/London", "America/New_York", "Asia/Tokyo"},
                      "time zones");
      case Meaning::locale:
        return listed({"en-US", "en-GB", "de-DE", "fr-FR", "es-ES", "ja-JP"}, "locales");
      case Meaning::media_type:
        return listed({"text/plain", "text/html", "image/png", "image/jpeg", "application/pdf"},
                      "types of files");
      case Meaning::status:
        if (company_.table == TableKind::orders) {
          return listed({"open", "paid", "shipped", "delivered", "cancelled"},
                        "states of an order");
        }
        return listed({"active", "inactive", "pending"}, "usual states");
      default:
        return std::nullopt;
    }
  }

  std::optional<GuessedText> digests() {
    static constexpr std::array hexadecimal = std::to_array("0123456789abcdef");
    const std::size_t length = std::min(digest_length, limit_);
    const std::size_t count = task_.is_unique ? wanted() : std::min(wanted(), made_texts);
    std::vector<std::string> values;
    for (std::size_t i = 0; i < count; ++i) {
      std::string text;
      for (std::size_t place = 0; place < length; ++place) {
        text += hexadecimal[draw(task_.rows_there + i, 100 + place, 16)];
      }
      values.push_back(std::move(text));
    }
    return listed(std::move(values), "hexadecimal digits");
  }

  const ColumnTask& task_;
  const TextCompany& company_;
  const std::vector<std::string>& choices_;  // that the column asks for; empty for any text
  const std::size_t limit_;
};

}  // namespace

std::optional<GuessedText> guess_text(Meaning meaning, const ColumnTask& task,
                                      const TextCompany& company) {
  const ColumnFacts& facts = task.facts;
  const bool excludes_texts = std::any_of(facts.excluded.begin(), facts.excluded.end(),
                                          [](const std::string& text) { return !text.empty(); });
  const bool is_free = facts.regular.empty() && facts.like.empty() && !excludes_texts &&
                       facts.json_type.empty() &&
                       facts.letter_case == ColumnFacts::LetterCase::any && !facts.is_bounded();
  // Choices are a list of their own, but a sex is the given name's where they have its words.
  const bool is_fitting = choices_of(task).empty() ? task.column.type == ColumnType::text
                                                   : meaning == Meaning::sex && company.has_given;
  if (!is_free || !is_fitting) return std::nullopt;
  auto guess = TextGuesser(task, company).guess(meaning);
  const bool is_short = guess && task.is_unique && !guess->is_closed &&
                        guess->values.period < static_cast<std::uint64_t>(task.records);
  return is_short ? std::nullopt : std::move(guess);
}

}  // namespace korvex::host
