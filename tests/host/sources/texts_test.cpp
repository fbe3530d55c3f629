#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/sources/decimal.h"
#include "host/sources/letter_forms.h"
#include "host/sources/record_sources.h"
#include "host/sources/text_list.h"

namespace korvex::sources {
namespace {

struct LetterCase {
  const char* text;
  const char* lower;
  const char* upper;
  const char* ascii;
};

TEST(Letters, ChangeInEveryScriptAndStayWhereThereIsNothingToChange) {
  const LetterCase cases[] = {
      {"Hello, 1!", "hello, 1!", "HELLO, 1!", "Hello, 1!"},
      {"Straße ÄÖÜ", "straße äöü", "STRASSE ÄÖÜ", "Strasse AOU"},
      {"Łódź Ångström Œuvre", "łódź ångström œuvre", "ŁÓDŹ ÅNGSTRÖM ŒUVRE", "Lodz Angstrom OEuvre"},
      {"ÿ Ÿ ȷ Ž ž ĸ", "ÿ ÿ ȷ ž ž ĸ", "Ÿ Ÿ ȷ Ž Ž ĸ", "y Y j Z z k"},
      {"Nguyễn Đức", "nguyễn đức", "NGUYỄN ĐỨC", "Nguyen Duc"},
      {"e\u0301", "e\u0301", "E\u0301", "e"},
      {"Σίσυφος", "σίσυφος", "ΣΊΣΥΦΟΣ", ""},
      {"Ёлка", "ёлка", "ЁЛКА", ""},
      {"\uFF21\uFF42\uFF11", "\uFF41\uFF42\uFF11", "\uFF21\uFF22\uFF11", "Ab1"},
      {"O’Brien – “x”…", "o’brien – “x”…", "O’BRIEN – “X”…", "O'Brien - \"x\"..."},
      {"山田", "山田", "山田", ""},
      {"\U00010400", "\U00010428", "\U00010400", ""},
      {"İıſẞ", "iıſß", "İISẞ", "IisSS"},
      {"a\xFF", "a\xFF", "A\xFF", "a\xFF"},
  };
  for (const LetterCase& test : cases) {
    EXPECT_EQ(lower_case(test.text), test.lower);
    EXPECT_EQ(upper_case(test.text), test.upper);
    EXPECT_EQ(ascii_form(test.text), test.ascii);
  }
}

struct SumCase {
  const char* first;
  const char* second;
  const char* sum;  // empty when one is no number or there is no room
};

TEST(Decimals, AddUpExactlyOrNotAtAll) {
  const SumCase cases[] = {
      {"1", "2", "3"},
      {"0.10", "0.2", "0.30"},
      {"-0.5", "0.25", "-0.25"},
      {"-3.75", "+3.75", "0.00"},
      {"0012.50", "-.5", ""},
      {"999999999999999999", "0.000000000000000001", "999999999999999999.000000000000000001"},
      {"999999999999999999", "999999999999999999", "1999999999999999998"},
      {"1000000000000000000", "1", ""},
      {"0.1234567890123456789", "1", ""},
      {"1.", "1", ""},
      {"", "1", ""},
      {"-", "1", ""},
      {"1e3", "1", ""},
      {"1.2.3", "1", ""},
      {"--1", "1", ""},
  };
  for (const SumCase& test : cases) {
    std::optional<Decimal> sum = Decimal::parse(test.first);
    const std::optional<Decimal> second = Decimal::parse(test.second);
    if (!second || !sum || !sum->add(*second)) sum.reset();
    std::string text;
    if (sum) sum->append(text);
    EXPECT_EQ(text, test.sum) << test.first << " + " << test.second;
  }
  Decimal large = *Decimal::parse("999999999999999999");
  int doublings = 0;
  while (doublings < 20 && large.add(Decimal(large))) ++doublings;
  EXPECT_EQ(doublings, 7);
}

struct LinesCase {
  std::string content;
  std::vector<std::string> lines;
  std::string refusal;
};

TEST(TextLists, AreReadFromLinesOfAnyEnd) {
  const LinesCase cases[] = {
      {"", {}, ""},
      {"a\nb", {"a", "b"}, ""},
      {"\xEF\xBB\xBF"
       "a\r\n\r\nä\n",
       {"a", "", "ä"},
       ""},
      {"\n", {""}, ""},
      {"a\rb\n", {"a\rb"}, ""},
      {"a\nb\xE4\nc", {}, "line 2 is not UTF-8"},
      {"\xED\xA0\x80", {}, "line 1 is not UTF-8"},
  };
  for (const LinesCase& test : cases) {
    const ways::Result<TextList> read = TextList::of_lines(test.content);
    ASSERT_EQ(static_cast<bool>(read), test.refusal.empty()) << test.content;
    if (!read) {
      EXPECT_EQ(read.reason(), test.refusal);
      continue;
    }
    ASSERT_EQ(read->size(), test.lines.size()) << test.content;
    for (std::size_t i = 0; i < test.lines.size(); ++i) EXPECT_EQ((*read)[i], test.lines[i]);
  }
  const TextList texts = TextList::of_values({"b", "", "a", "-0", "1", "+1.00", "01", "b", "0"});
  EXPECT_EQ(texts.text_facts(Comparison::as_texts).values, Count::of(7));
  EXPECT_EQ(texts.text_facts(Comparison::as_numbers).values, Count::of(4));
  EXPECT_EQ(texts.uniqueness(Comparison::as_texts).different, 7);
  EXPECT_EQ(texts.uniqueness(Comparison::as_numbers).different, 5);
}

struct TemplateCase {
  const char* text;
  const char* parts;  // literals in quotes, items, filters
  int fault_offset;
};

TEST(Templates, AreReadOrSayWhereTheyAreWrong) {
  const TemplateCase cases[] = {
      {"", "", -1},
      {"plain }} text", "'plain } text'", -1},
      {"plain } text", "", 6},
      {"{FIRST|lower}.{LAST|ascii|lower}{ID}@x", "''FIRST|0 '.'LAST|2|0 ''ID '@x'", -1},
      {"{{{A}}}", "'{'A '}'", -1},
      {"{{A}", "", 3},
      {"ab{", "", 2},
      {"ab{ID", "", 2},
      {"ab{}", "", 3},
      {"ab{|lower}", "", 3},
      {"ä{A|lower|}", "", 11},
      {"{A|Upper}", "", 3},
  };
  for (const TemplateCase& test : cases) {
    std::vector<TemplatePart> parts;
    const std::optional<TemplateFault> fault = parse_template(test.text, parts);
    ASSERT_EQ(fault ? static_cast<int>(fault->offset) : -1, test.fault_offset) << test.text;
    if (fault) continue;
    std::string all;
    for (const TemplatePart& part : parts) {
      all += (all.empty() ? "'" : " '") + part.literal + "'" + part.item;
      for (const Filter filter : part.filters) {
        all += "|" + std::to_string(static_cast<int>(filter));
      }
    }
    EXPECT_EQ(all, test.parts) << test.text;
  }
}

TEST(Templates, PutTogetherWhatThereIs) {
  const auto make = [](const char* value, bool is_empty) {
    auto field = std::make_unique<Field>(make_list_source(TextList::of_values({value})),
                                         forward(1, End::repeat));
    if (is_empty) field->add_emptiness(empty_share({}, {1, 1}, 1));
    return field;
  };
  const auto first = make("Zoë", false);
  const auto middle = make("Q", true);
  const auto whole = [](std::vector<ComposedPart> parts) {
    Field field(make_template_source(std::move(parts)), forward());
    return std::string(field.text(0).value_or("no value"));
  };
  EXPECT_EQ(whole({{"<", first.get(), {Filter::ascii, Filter::upper}},
                   {"|", middle.get(), {}},
                   {">", nullptr, {}}}),
            "<ZOE|>");
  EXPECT_EQ(whole({{"<", middle.get(), {}}, {">", nullptr, {}}}), "no value");
  EXPECT_EQ(whole({{"plain", nullptr, {}}}), "plain");
}

}  // namespace
}  // namespace korvex::sources
