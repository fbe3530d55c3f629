#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/sources/field.h"
#include "host/sources/line_source.h"
#include "host/sources/template_source.h"
#include "host/sources/text_list.h"
#include "host/ways/draw.h"

namespace korvex::sources {
namespace {

using FieldPointer = std::unique_ptr<Field>;

std::unique_ptr<Source> list(std::vector<std::string> values) {
  return make_list_source(TextList::of_values(std::move(values)));
}

std::vector<std::string> numbers(std::uint64_t count, const std::string& before = "") {
  std::vector<std::string> texts;
  for (std::uint64_t i = 0; i < count; ++i) texts.push_back(before + std::to_string(i));
  return texts;
}

std::shared_ptr<Groups> groups(std::uint64_t records, std::uint64_t parents, std::uint64_t most) {
  return std::make_shared<Groups>(
      *ways::GroupSizes::make({{7}}, records, parents, {0, most, ways::Shape::even, {}}));
}

std::string texts(Field& field, std::uint64_t first, std::uint64_t end) {
  std::string all;
  for (std::uint64_t record = first; record < end; ++record) {
    all += std::string(field.text(record).value_or("-")) + " ";
  }
  return all;
}

TEST(Fields, GoThroughTheirSourceAndStopOrRepeat) {
  Field repeated(list({"a", "", "c"}), forward(3, End::repeat));
  EXPECT_EQ(texts(repeated, 0, 5), "a - c a - ");
  Field once(list({"a", "b"}), shuffled({1}, 2, End::stop));
  EXPECT_EQ(texts(once, 2, 4), "- - ");
  EXPECT_EQ(texts(once, 0, 1) + texts(once, 1, 2), texts(once, 0, 2));
  EXPECT_EQ(once.different_records(), 2);
}

TEST(Fields, OfOneKeyTakeOneRow) {
  Field city(list({"Bonn", "Köln", "Ulm"}), shuffled({5}, 3, End::repeat));
  Field code(list({"Bonn", "Köln", "Ulm"}), shuffled({5}, 3, End::repeat));
  EXPECT_EQ(texts(city, 0, 30), texts(code, 0, 30));
}

TEST(Fields, AreEmptyByShareWithOthersAndUnlessOthersSayOtherwise) {
  constexpr std::uint64_t records = 2080;
  Field status(list({"new", "shipped", "returned"}), random({3}, 3));
  Field shipped(list(numbers(50)), random({4}, 50));
  shipped.add_emptiness(empty_unless(status, {"shipped", "returned"}));
  shipped.add_emptiness(empty_share({{5}}, *ways::parse_share("0.05"), records));
  Field carrier(list({"x"}), forward(1, End::repeat));
  carrier.add_emptiness(empty_with(shipped));
  Field same(list(numbers(50)), random({4}, 50));
  std::uint64_t empty_though_shipped = 0;
  for (std::uint64_t record = records; record-- > 0;) {
    const bool is_new = status.text(record) == "new";
    ASSERT_TRUE(!is_new || !shipped.text(record));
    empty_though_shipped += !is_new && !shipped.text(record);
    ASSERT_EQ(carrier.text(record).has_value(), shipped.text(record).has_value());
    // What is empty still uses up its index.
    ASSERT_TRUE(!shipped.text(record) || shipped.text(record) == same.text(record));
  }
  EXPECT_NEAR(static_cast<double>(empty_though_shipped), records * 0.05 * 2 / 3, 15);
}

TEST(Fields, OfKeysKnowParentAndLineAndDifferWithin) {
  constexpr std::uint64_t records = 500;
  const auto shared = groups(records, 200, 7);
  Field parent(list(numbers(200)), parent_of(shared));
  Field line(make_line_source(shared), forward());
  Field product(list(numbers(7)), shuffled_within({9}, 7, shared));
  std::set<std::string> lines;
  std::set<std::string> products;
  std::map<std::string, int> lasts;
  for (std::uint64_t record = 0; record < records; ++record) {
    const std::string key(*parent.text(record));
    lines.insert(key + "/" + std::string(*line.text(record)));
    products.insert(key + "/" + std::string(*product.text(record)));
    EXPECT_EQ(*line.text(record), std::to_string(++lasts[key]));
  }
  EXPECT_EQ(lines.size(), records);
  EXPECT_EQ(products.size(), records);
}

// Fields over all ways and sources, alone and in templates of up to four parts: what they say of
// their difference is held against their texts.
TEST(Fields, NeverClaimADifferenceThatIsNotThere) {
  std::uint64_t drawn = 0;
  const auto draw = [&](std::uint64_t bound) { return ways::draw_below({11}, drawn++, bound); };
  const auto draw_values = [&] {
    static const std::vector<std::string> pools[] = {
        numbers(30),           numbers(12, "1"), {"1", "12", "11", "2"}, {"a", "B", "cc", "ca"},
        {"a", "a1", "-", "1"}, {"x", "", "y"},   {"x", "y", "x"},        {"ä", "a", "Ä"},
        {"10", "20", "30"}};
    return pools[draw(std::size(pools))];
  };
  const auto draw_field = [&] {
    std::vector<std::string> values = draw_values();
    const std::uint64_t period = values.size();
    const ways::Key key{draw(1000)};
    const End end = draw(4) == 0 ? End::stop : End::repeat;
    const std::uint64_t way = draw(6);
    auto field =
        std::make_unique<Field>(list(values), way == 0   ? random(key, period)
                                              : way == 1 ? zipf(key, period, {})
                                              : way == 2 ? parent_of(groups(100, period, 100))
                                              : way == 3 ? forward(period, end)
                                                         : shuffled(key, period, end));
    if (draw(6) == 0) field->add_emptiness(empty_share({{draw(9)}}, {1, 3}, 100));
    return field;
  };
  std::uint64_t claims_of_templates = 0;
  for (int round = 0; round < 20'000; ++round) {
    std::vector<FieldPointer> parts;
    std::vector<ComposedPart> composed;
    const char* const literals[] = {"", "", "-", "1", "a"};
    for (std::uint64_t count = 1 + draw(4); count > 0; --count) {
      parts.push_back(draw_field());
      ComposedPart part = {literals[draw(std::size(literals))], parts.back().get(), {}};
      if (draw(5) == 0) part.filters.push_back(draw(2) == 0 ? Filter::lower : Filter::ascii);
      composed.push_back(part);
    }
    composed.push_back({literals[draw(std::size(literals))], nullptr, {}});
    parts.push_back(std::make_unique<Field>(make_template_source(composed), forward()));
    claims_of_templates += parts.back()->different_records() > 1;
    for (const FieldPointer& field : parts) {
      const std::uint64_t claimed = std::min<std::uint64_t>(field->different_records(), 100);
      const TextShape shape = field->shape();
      std::set<std::string> seen;
      for (std::uint64_t record = 0; record < claimed; ++record) {
        const std::string text(field->text(record).value_or(""));
        ASSERT_TRUE(seen.insert(text).second) << round << ": " << texts(*field, 0, claimed);
        ASSERT_TRUE(claimed == 1 || !text.empty());
        ASSERT_TRUE(!shape.never_empty || !text.empty());
        ASSERT_TRUE(!shape.size || *shape.size == text.size() || text.empty()) << text;
      }
    }
  }
  EXPECT_GT(claims_of_templates, 3000);
}

struct SplitCase {
  std::vector<std::string> first;
  const char* between;
  std::vector<std::string> second;
  bool is_first_known;
  bool is_second_known;
};

TEST(Templates, KnowWhichOfTheirPartsCanBeToldFromTheWhole) {
  const std::vector<std::string> names = {"Ann", "Bo"};
  const std::vector<std::string> codes = {"A1", "B2"};
  const SplitCase cases[] = {
      {names, "", numbers(20), true, true},  // digits from the back, then what is left
      {names, ".", names, false, false},     // a point could be in a name
      {numbers(20), "", names, true, true},
      {numbers(20), "", numbers(20), false, false},
      {numbers(20), "-", numbers(20), true, true},
      {numbers(20), "0", numbers(20), false, false},
      {codes, "", names, true, true},
      {codes, "", numbers(20), true, true},
      {{"A", "A1"}, "", numbers(20), false, false},
  };
  for (const SplitCase& test : cases) {
    Field first(list(test.first), random({1}, test.first.size()));
    Field second(list(test.second), random({2}, test.second.size()));
    const std::vector<bool> known =
        recoverable_parts({{"", &first, {}}, {test.between, &second, {}}, {"@x.org", nullptr, {}}});
    EXPECT_EQ(known, (std::vector<bool>{test.is_first_known, test.is_second_known, false}))
        << test.first[0] << test.between << test.second[0];
  }
}

}  // namespace
}  // namespace korvex::sources
