#include "host/guesses/meaning.h"

#include <algorithm>
#include <array>

#include "platform/text_lines.h"

namespace korvex::host {

namespace {

struct KindWord {
  std::string_view word;
  TableKind kind;
};

constexpr std::array kind_words = std::to_array<KindWord>({
    {"customer", TableKind::people},
    {"user", TableKind::people},
    {"person", TableKind::people},
    {"people", TableKind::people},
    {"employee", TableKind::people},
    {"author", TableKind::people},
    {"actor", TableKind::people},
    {"staff", TableKind::people},
    {"contact", TableKind::people},
    {"member", TableKind::people},
    {"student", TableKind::people},
    {"teacher", TableKind::people},
    {"patient", TableKind::people},
    {"doctor", TableKind::people},
    {"client", TableKind::people},
    {"artist", TableKind::people},
    {"guest", TableKind::people},
    {"passenger", TableKind::people},
    {"player", TableKind::people},
    {"kunde", TableKind::people},
    {"kunden", TableKind::people},
    {"mitarbeiter", TableKind::people},
    {"benutzer", TableKind::people},
    {"personen", TableKind::people},
    {"顧客", TableKind::people},
    {"社員", TableKind::people},
    {"company", TableKind::companies},
    {"supplier", TableKind::companies},
    {"vendor", TableKind::companies},
    {"organization", TableKind::companies},
    {"shipper", TableKind::companies},
    {"publisher", TableKind::companies},
    {"brand", TableKind::companies},
    {"firma", TableKind::companies},
    {"firmen", TableKind::companies},
    {"lieferant", TableKind::companies},
    {"lieferanten", TableKind::companies},
    {"product", TableKind::products},
    {"item", TableKind::products},
    {"article", TableKind::products},
    {"produkt", TableKind::products},
    {"produkte", TableKind::products},
    {"artikel", TableKind::products},
    {"商品", TableKind::products},
    {"country", TableKind::countries},
    {"laender", TableKind::countries},
    {"city", TableKind::cities},
    {"town", TableKind::cities},
    {"currency", TableKind::currencies},
    {"language", TableKind::languages},
    {"color", TableKind::colours},
    {"colour", TableKind::colours},
    {"category", TableKind::categories},
    {"kategorie", TableKind::categories},
    {"job", TableKind::jobs},
    {"department", TableKind::departments},
    {"post", TableKind::writings},
    {"task", TableKind::writings},
    {"issue", TableKind::writings},
    {"ticket", TableKind::writings},
    {"news", TableKind::writings},
    {"book", TableKind::writings},
    {"film", TableKind::writings},
    {"movie", TableKind::writings},
    {"album", TableKind::writings},
    {"track", TableKind::writings},
    {"event", TableKind::writings},
    {"project", TableKind::writings},
    {"order", TableKind::orders},
    {"bestellung", TableKind::orders},
    {"bestellungen", TableKind::orders},
    {"注文", TableKind::orders},
});

std::string joined(const std::vector<std::string>& words, std::size_t begin) {
  std::string text;
  for (std::size_t i = begin; i < words.size(); ++i) text += (i == begin ? "" : " ") + words[i];
  return text;
}

// As one of the table's words has it: `companies` is `company`, `customers` is `customer`.
std::string singular(const std::string& word) {
  if (word.size() > 3 && word.ends_with("ies")) return word.substr(0, word.size() - 3) + "y";
  if (word.size() > 3 && word.ends_with("s") && word != "news") {
    return word.substr(0, word.size() - 1);
  }
  return word;
}

const Phrase* find_phrase(std::string_view words) {
  const auto all = known_phrases();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Phrase& phrase) { return phrase.words == words; });
  return found == all.end() ? nullptr : &*found;
}

// A moment is known by its verb: `paid_on` and `paid_date` are `paid`, `closed_on` is `closed at`,
// `starts` is `start`.
const Phrase* find_moment(const std::string& words) {
  for (const std::string_view end : {" at", " on", " date", " time", ""}) {
    if (!words.ends_with(end)) continue;
    const std::string verb = words.substr(0, words.size() - end.size());
    for (const std::string& form : {verb, verb + " at", singular(verb)}) {
      if (end.empty() && form != singular(verb)) continue;
      const Phrase* const found = find_phrase(form);
      if (found != nullptr && is_moment(found->meaning)) return found;
    }
  }
  return nullptr;
}

}  // namespace

std::optional<NameMeaning> find_meaning(std::string_view name) {
  std::vector<std::string> words = name_words(name);
  // `address_2` is another address.
  while (words.size() > 1 && platform::is_digit(words.back().front())) {
    words.pop_back();
  }
  // The longest phrase that ends the name.
  for (std::size_t begin = 0; begin < words.size(); ++begin) {
    const std::string end = joined(words, begin);
    const Phrase* found = find_phrase(end);
    if (found == nullptr) found = find_moment(end);
    if (found == nullptr) continue;
    return NameMeaning{found->meaning,
                       found->language,
                       end,
                       {words.begin(), words.begin() + static_cast<std::ptrdiff_t>(begin)}};
  }
  return std::nullopt;
}

// The last word says what a row is: `customer_orders` are orders.
TableKind kind_of_table(std::string_view name) {
  const std::vector<std::string> words = name_words(name);
  if (words.empty()) return TableKind::other;
  for (const std::string& word : {words.back(), singular(words.back())}) {
    const auto found = std::find_if(kind_words.begin(), kind_words.end(),
                                    [&](const KindWord& each) { return each.word == word; });
    if (found != kind_words.end()) return found->kind;
  }
  return TableKind::other;
}

}  // namespace korvex::host
