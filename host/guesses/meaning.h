#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// What a column is for, as far as its name says so beyond doubt.
enum class Meaning {
  // texts
  given_name,
  family_name,
  full_name,
  name,  // of what the table is about
  title,
  sex,
  email,
  user_name,
  phone,
  street,
  city,
  region,
  postcode,
  country,
  country_code,
  company,
  industry,
  job,
  department,
  product,
  category,
  colour,
  colour_code,
  language,
  language_code,
  currency,
  currency_code,
  sentence,
  web_address,
  domain_name,
  network_address,
  time_zone,
  locale,
  media_type,
  digest,
  status,
  // numbers
  price,
  quantity,
  stock,
  percentage,
  rating,
  age,
  year,
  month,
  weekday,
  hour,
  latitude,
  longitude,
  weight,
  file_size,
  priority,
  // moments
  birth,
  creation,  // of the row
  begin,
  change,
  payment,
  shipment,
  delivery,
  giving_back,
  end,
  due,
  removal,
};

constexpr bool is_moment(Meaning meaning) { return meaning >= Meaning::birth; }

// A language of names and of the built-in sets.
enum class NameLanguage { english, german, japanese };

struct NameMeaning {
  Meaning meaning;
  NameLanguage language;
  std::string phrase;               // of the name, that says so
  std::vector<std::string> others;  // the words in front of it
};

// The meaning of a column's name, by its last words: `billing_city` is a city, `city_id` is none.
// A moment may end in `at`, `on`, `date` or `time`.
std::optional<NameMeaning> find_meaning(std::string_view name);

// What the rows of a table are, by the words of its name.
enum class TableKind {
  people,
  companies,
  products,
  countries,
  cities,
  currencies,
  languages,
  colours,
  categories,
  jobs,
  departments,
  writings,
  orders,
  other,
};
TableKind kind_of_table(std::string_view name);

// The words of a column's or table's name, in small letters: it is cut where no letter is,
// where a capital follows a small letter, in front of the last of several capitals, and between
// letters and digits. ä, ö, ü and ß become ae, oe, ue and ss.
std::vector<std::string> name_words(std::string_view name);

// Words that a column's name can end with, with blanks in between, and what they say.
struct Phrase {
  std::string_view words;
  Meaning meaning;
  NameLanguage language;
};

std::span<const Phrase> known_phrases();

}  // namespace korvex::host
