#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "host/sources/field.h"
#include "host/sources/record_sources.h"
#include "host/sources/text_list.h"
#include "host/sources/uniqueness.h"
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
}

// Each of thirty tables takes two records of the one before.
TEST(Fields, EndLookupsThatGrowWithEachTable) {
  std::vector<FieldPointer> fields;
  fields.push_back(std::make_unique<Field>(list(numbers(50)), forward(50, End::repeat)));
  for (std::uint64_t table = 0; table < 30; ++table) {
    Field& before = *fields.back();
    const auto take = [&](std::uint64_t way) {
      fields.push_back(std::make_unique<Field>(make_key_source(before, 50), random({way}, 50)));
    };
    take(2 * table);
    Field& other = *fields.back();
    take(2 * table + 1);
    fields.back()->add_emptiness(empty_with(other));
    EXPECT_EQ(uniqueness_of(std::vector<const Field*>{&other, fields.back().get()}, 50).different,
              1);
  }
  EXPECT_THROW(fields.back()->text(0), BadValue);
  EXPECT_FALSE(fields.back()->shape().always_made);
  EXPECT_TRUE(fields[10]->text(0).has_value());
  EXPECT_TRUE(fields[10]->shape().always_made);
  // In a row, as far as that goes.
  for (const auto& field : {std::ref(*fields.back()), std::ref(*fields[10])}) {
    field.get().expect(0, 50);
    const bool is_made = field.get().shape().always_made;
    EXPECT_EQ(field.get().expected_texts().size(), is_made ? 50 : 0);
  }
}

TEST(Fields, OfOneKeyTakeOneRow) {
  Field city(list({"Bonn", "Köln", "Ulm"}), shuffled({5}, 3, End::repeat));
  Field code(list({"Bonn", "Köln", "Ulm"}), shuffled({5}, 3, End::repeat));
  EXPECT_EQ(texts(city, 0, 30), texts(code, 0, 30));
}

TEST(Fields, ReferToRecordsOfOtherTablesAndToEarlierOnesOfTheirOwn) {
  Field ids(list(numbers(40, "id")), shuffled({8}, 40, End::repeat));
  Field key(make_key_source(ids, 40), forward(40, End::repeat));
  EXPECT_EQ(texts(key, 40, 80), texts(ids, 0, 40));
  Field any(make_key_source(ids, 40), any_before({2}));
  Field tree(make_key_source(ids, 40), parent_of(std::make_shared<Groups>(*ways::Tree::make(
                                           {{2}}, 40, {3, 3, ways::Shape::constant, {}}))));
  EXPECT_EQ(texts(any, 0, 1) + texts(tree, 0, 1), "- - ");
  for (std::uint64_t record = 1; record < 40; ++record) {
    const std::string before = " " + texts(ids, 0, record);
    EXPECT_NE(before.find(" " + std::string(*any.text(record)) + " "), std::string::npos);
    EXPECT_EQ(tree.text(record), std::string(*ids.text((record - 1) / 3)));
  }
}

TEST(Fields, FoldTheirChildrenExactly) {
  constexpr std::uint64_t parents = 150;
  const auto shared = groups(400, parents, 7);
  Field key(list(numbers(parents)), parent_of(shared));
  key.add_emptiness(empty_share({{9}}, {1, 8}, 400));
  Field amount(list({"0.50", "-1.25", "12.00", "9.75", "100"}), random({6}, 5));
  amount.add_emptiness(empty_share({{7}}, {1, 4}, 400));
  const auto fold = [&](Fold how) {
    return std::make_unique<Field>(make_children_source({shared, &key, &amount}, {.fold = how}),
                                   forward());
  };
  const FieldPointer sum = fold(Fold::sum), count = fold(Fold::count), least = fold(Fold::least),
                     most = fold(Fold::most);
  std::vector<std::vector<double>> values(parents);
  for (std::uint64_t record = 0; record < 400; ++record) {
    const auto text = amount.text(record);
    if (!text || !key.text(record)) continue;
    values[shared->member(record)->parent].push_back(std::stod(std::string(*text)));
  }
  const auto number = [](Field& field, std::uint64_t record) {
    return std::stod(std::string(field.text(record).value_or("1e9")));
  };
  for (std::uint64_t parent = 0; parent < parents; ++parent) {
    std::vector<double>& own = values[parent];
    std::sort(own.begin(), own.end());
    EXPECT_EQ(number(*sum, parent), std::accumulate(own.begin(), own.end(), 0.0));
    EXPECT_EQ(number(*count, parent), static_cast<double>(own.size()));
    EXPECT_EQ(number(*least, parent), own.empty() ? 1e9 : own.front());
    EXPECT_EQ(number(*most, parent), own.empty() ? 1e9 : own.back());
  }
}

// Only the record whose value cannot be made goes without one, whatever is expected around it, and
// texts that take much memory come a few at a time.
TEST(Fields, GiveWhatTheyCanOfWhatIsExpected) {
  Field number(list({"1", "x", "2"}), forward(3, End::repeat));
  Field offset(make_offset_source(number, number_scale(0), {{1}}, {5, 5}), forward());
  offset.expect(3, 3);
  EXPECT_EQ(offset.expected_texts().size(), 1);
  EXPECT_EQ(texts(offset, 3, 4) + texts(offset, 5, 7), "6 7 6 ");
  EXPECT_THROW(offset.text(4), BadValue);

  const std::string large(20'000, 'x');
  Field wide(list({large}), forward(1, End::repeat));
  Field wider(make_template_source({{"", &wide, {}}, {"", &wide, {}}}), forward());
  wider.expect(0, TextBlock::most_texts);
  EXPECT_EQ(wider.expected_texts().size(), 1);
  EXPECT_EQ(texts(wider, 200, 201), large + large + " ");
}

TEST(Fields, FoldWhatIsNoNumberAsTextAlone) {
  const auto one = groups(4, 1, 4);
  Field text(list({"b", "10", "9", "a"}), forward(4, End::repeat));
  const auto fold = [&](FoldRules rules) {
    return texts(
        *std::make_unique<Field>(make_children_source({one, nullptr, &text}, rules), forward()), 0,
        2);
  };
  EXPECT_THROW(fold({.fold = Fold::sum, .decimals = 2}), BadValue);
  EXPECT_EQ(fold({.fold = Fold::least, .comparison = Comparison::as_numbers}), "9 - ");
  EXPECT_EQ(fold({.fold = Fold::least, .comparison = Comparison::as_texts}), "10 - ");
  EXPECT_EQ(fold({.fold = Fold::most, .comparison = Comparison::as_texts}), "b - ");
  EXPECT_EQ(fold({.fold = Fold::count}), "4 0 ");
}

TEST(Fields, LieAtADistanceFromOthers) {
  Field price(list({"10.00", "-0.50", "", "x", "1.005", "92233720368547758.00"}),
              forward(6, End::repeat));
  const auto offset = [&](Distance distance) {
    return Field(make_offset_source(price, number_scale(2), {{4}}, distance), forward());
  };
  Field fixed = offset({60, 60});
  EXPECT_EQ(texts(fixed, 0, 3), "10.60 0.10 - ");
  for (std::uint64_t record : {3, 4, 5}) EXPECT_THROW(fixed.text(record), BadValue) << record;
  Field drawn = offset({-3, 3});
  std::map<std::string, int> counts;
  for (std::uint64_t record = 0; record < 6000; record += 6) {
    ++counts[std::string(*drawn.text(record))];
  }
  EXPECT_EQ(counts.size(), 7);
  EXPECT_EQ(counts.begin()->first, "10.00");
  EXPECT_EQ(counts.rbegin()->first, "9.99");
  EXPECT_EQ(counts.count("9.97"), 1);
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

// Draws plans of every kind of field: over all ways and sources, with others in templates, and
// jointly.
class RandomPlan {
 public:
  static constexpr std::uint64_t records = 100;

  explicit RandomPlan(std::uint64_t seed) : key_{seed} {
    joint_ = std::make_shared<ways::JointShuffle>(
        *ways::JointShuffle::make({{seed}}, std::vector<std::uint64_t>{3, 4}));
    groups_ = groups(records, 10 + draw(60), draw(3) == 0 ? 100 : 15);
    add_joint(3, 0);
    add_joint(4, 1);
    add(list(numbers(groups_->parents(), "p")), parent_of(groups_));
    add(make_line_source(groups_), forward());
    add(list(numbers(20, "w")), shuffled_within(key(), 20, groups_));
    for (int i = 0; i < 3; ++i) add_list();
    add_group();
    add_key();
    add_tree();
    add_template();
    add_template();
  }

  std::uint64_t draw(std::uint64_t bound) { return ways::draw_below(key_, drawn_++, bound); }

  std::string line(std::uint64_t record) {
    std::string all;
    for (const FieldPointer& field : fields_) all += texts(*field, record, record + 1);
    return all;
  }

  std::vector<Field*> draw_fields() {
    std::vector<Field*> set = all_fields();
    std::erase_if(set, [&](Field*) { return draw(5) > 0; });
    if (draw(3) == 0) set.push_back(fields_.back().get());
    return set;
  }

  std::vector<Field*> all_fields() {
    std::vector<Field*> all;
    for (const FieldPointer& field : fields_) all.push_back(field.get());
    return all;
  }

 private:
  ways::Key key() { return {draw(1000)}; }
  End end() { return draw(4) == 0 ? End::stop : End::repeat; }

  void add(std::unique_ptr<Source> source, std::shared_ptr<Way> way) {
    fields_.push_back(std::make_unique<Field>(std::move(source), std::move(way)));
    if (draw(12) == 0) fields_.back()->add_emptiness(empty_share({{draw(9)}}, {1, 3}, records));
  }

  void add_joint(std::uint64_t period, std::size_t item) {
    add(list(numbers(period)), joint(joint_, item, end()));
  }

  std::vector<std::string> draw_values() {
    static const std::vector<std::string> pools[] = {
        numbers(130), numbers(12, "1"),      {"1", "12", "11", "2"}, {"a", "B", "cc", "ca"},
        {"a", "-"},   {"a", "a1", "-", "1"}, {"x", "", "y"},         {"x", "y", "x"},
        {"ä", "a"},   {"10", "20", "30"}};
    return pools[draw(std::size(pools))];
  }

  std::shared_ptr<Way> draw_way(std::uint64_t period) {
    switch (draw(7)) {
      case 0: {
        std::vector<ways::Fraction> weights;
        for (std::uint64_t i = 0; i < period; ++i) weights.push_back({draw(3), 1});
        weights.front().numerator = 1;
        return weighted({key()}, *ways::Proportions::of_weights(weights), records);
      }
      case 6:
        return random(key(), period);
      case 1:
        return zipf(key(), period, {});
      case 2:
        return parent_of(groups(records, period, records));
      case 3:
        return forward(period, end());
      default:
        return shuffled(key(), period, end());
    }
  }

  void add_list() {
    const std::vector<std::string> values = draw_values();
    add(list(values), draw_way(values.size()));
  }

  void add_group() {
    const std::shared_ptr<Way> way = draw_way(4);
    add(list({"a", "b", "c", "d"}), way);
    add(list({"x", "y", "x", "y"}), way);
  }

  void add_key() {
    const std::uint64_t parents = 1 + draw(40);
    const std::vector<std::string> values = draw_values();
    parents_.push_back(std::make_unique<Field>(list(values), draw_way(values.size())));
    add(make_key_source(*parents_.back(), parents), draw_way(parents));
  }

  void add_tree() {
    const auto tree = std::make_shared<Groups>(*ways::Tree::make(
        ways::KeyFor<ways::Use::each>{key()}, records, {1, 1 + draw(9), ways::Shape::even, {}}));
    add(list(numbers(records, "t")), parent_of(tree));
    add(make_line_source(tree), forward());
    add(list(numbers(9)), shuffled_within(key(), 9, tree));
  }

  void add_template() {
    static const char* const literals[] = {"", "", "-", "1", "a"};
    std::vector<ComposedPart> parts;
    for (std::uint64_t count = 1 + draw(4); count > 0; --count) {
      ComposedPart part = {
          literals[draw(std::size(literals))], fields_[draw(fields_.size())].get(), {}};
      if (draw(5) == 0) part.filters.push_back(draw(2) == 0 ? Filter::lower : Filter::ascii);
      parts.push_back(std::move(part));
    }
    parts.push_back({literals[draw(std::size(literals))], nullptr, {}});
    add(make_template_source(std::move(parts)), forward());
  }

  ways::Key key_;
  std::uint64_t drawn_ = 0;
  std::shared_ptr<ways::JointShuffle> joint_;
  std::shared_ptr<Groups> groups_;
  std::vector<FieldPointer> parents_;
  std::vector<FieldPointer> fields_;
};

TEST(Fields, GiveTheSameInAnyOrderOfRecords) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    RandomPlan in_a_row(seed);
    RandomPlan anyhow(seed);
    const ways::Permutation order({seed}, RandomPlan::records);
    std::map<std::uint64_t, std::string> scattered;
    for (std::uint64_t i = 0; i < RandomPlan::records; ++i) {
      scattered[order.at(i)] = anyhow.line(order.at(i));
    }
    for (const auto& [record, line] : scattered) ASSERT_EQ(in_a_row.line(record), line) << seed;
    RandomPlan expected(seed);
    std::uint64_t end = 0;  // of what is expected
    for (const auto& [record, line] : scattered) {
      if (record == end) {
        const std::size_t count = std::min(1 + expected.draw(90), RandomPlan::records - end);
        for (Field* field : expected.all_fields()) field->expect(end, count);
        end += count;
      }
      ASSERT_EQ(expected.line(record), line) << seed;
    }
  }
}

// What is said of sets of fields is held against their records.
TEST(Uniqueness, IsNeverClaimedWhereItIsNotNorDeniedWhereItIs) {
  std::uint64_t unique_sets = 0;
  std::uint64_t exact_answers = 0;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    RandomPlan plan(seed);
    for (int set = 0; set < 6; ++set) {
      const std::vector<Field*> fields = plan.draw_fields();
      const Uniqueness told = uniqueness_of(std::vector<const Field*>(fields.begin(), fields.end()),
                                            RandomPlan::records);
      unique_sets += told.different >= RandomPlan::records;
      exact_answers += told.different > 1 && told.different == told.repeated;
      std::set<std::vector<std::string>> seen;
      std::uint64_t different = RandomPlan::records;
      for (std::uint64_t record = 0; record < RandomPlan::records; ++record) {
        std::vector<std::string> values;
        for (Field* field : fields) {
          values.emplace_back(field->text(record).value_or(""));
        }
        if (!seen.insert(values).second) different = std::min(different, record);
      }
      ASSERT_GE(different, std::min(told.different, RandomPlan::records)) << seed;
      ASSERT_LE(seen.size(), told.repeated) << seed;
    }
  }
  EXPECT_GT(unique_sets, 100);
  EXPECT_GT(exact_answers, 25);
}

TEST(Uniqueness, IsKnownOfWhatIsMadeToBeUnique) {
  const auto joint_two = std::make_shared<ways::JointShuffle>(
      *ways::JointShuffle::make({{1}}, std::vector<std::uint64_t>{3, 40}));
  const auto shared = groups(500, 200, 7);
  Field first(list(numbers(3)), joint(joint_two, 0, End::repeat));
  Field second(list(numbers(40)), joint(joint_two, 1, End::repeat));
  Field parent(list(numbers(200)), parent_of(shared));
  Field line(make_line_source(shared), forward());
  Field within(list(numbers(7)), shuffled_within({9}, 7, shared));
  Field four(list(numbers(4)), forward(4, End::repeat));
  Field six(list(numbers(6)), forward(6, End::repeat));
  Field once(list(numbers(5)), forward(5, End::stop));
  Field shuffle(list(numbers(70)), shuffled({3}, 70, End::repeat));
  Field mail(
      make_template_source({{"", &second, {}}, {".", &shuffle, {}}, {"@x.org", nullptr, {}}}),
      forward());
  const auto told = [](std::vector<const Field*> fields) {
    const Uniqueness uniqueness = uniqueness_of(fields, 500);
    return std::pair(uniqueness.different, uniqueness.repeated);
  };
  using Pair = std::pair<std::uint64_t, std::uint64_t>;
  EXPECT_EQ(told({&first, &second}), Pair(120, 120));
  EXPECT_EQ(told({&first}), Pair(1, 3));
  EXPECT_EQ(told({&parent, &line}), Pair(endless, endless));
  EXPECT_EQ(told({&within, &parent}), Pair(endless, endless));
  EXPECT_EQ(told({&within, &line}), Pair(1, 35));
  EXPECT_EQ(told({&mail}), Pair(70, 2800));
  EXPECT_EQ(told({&mail, &first}), Pair(120, 8400));
  EXPECT_EQ(told({&four, &six}), Pair(12, 12));
  EXPECT_EQ(told({&four, &once}), Pair(9, 9));
  EXPECT_EQ(told({}), Pair(1, 1));
}

// What is predicted for single fields is held against their records.
TEST(TextFacts, HoldsInTheRecords) {
  std::map<std::string, std::uint64_t> exact;
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    RandomPlan plan(seed);
    for (Field* field : plan.all_fields()) {
      const TextFacts told = field->text_facts();
      const TextShape shape = field->shape();
      std::vector<std::string> texts;
      for (std::uint64_t record = 0; record < RandomPlan::records; ++record) {
        texts.emplace_back(field->text(record).value_or(""));
        const std::string& text = texts.back();
        const bool is_digits = text.find_first_not_of("0123456789") == std::string::npos;
        const bool has_digits = text.find_first_of("0123456789") != std::string::npos;
        ASSERT_TRUE(!text.empty() || !shape.never_empty) << seed;
        if (text.empty()) continue;
        ASSERT_EQ(shape.size.value_or(text.size()), text.size()) << seed;
        ASSERT_TRUE(is_digits || !shape.only_digits) << seed;
        ASSERT_TRUE(!has_digits || !shape.no_digits) << seed;
      }
      std::set<std::string> values(texts.begin(), texts.end());
      const auto empty = static_cast<std::uint64_t>(std::count(texts.begin(), texts.end(), ""));
      values.erase("");
      ASSERT_LE(values.size(), told.values.most) << seed;
      if (told.all_after <= RandomPlan::records) {
        ASSERT_GE(values.size(), told.values.least) << seed;
        exact["values"] += told.values.is_exact();
      }
      const Count told_empty = told.empty(RandomPlan::records);
      ASSERT_TRUE(told_empty.least <= empty && empty <= told_empty.most) << seed;
      exact["empty"] += told_empty.is_exact();
      if (!told.cycle) continue;
      for (std::uint64_t i = told.cycle->length(); i < RandomPlan::records; ++i) {
        ASSERT_EQ(texts[i], texts[i - told.cycle->period]) << seed;
      }
      exact["cycle"] += told.cycle->length() < RandomPlan::records;
    }
  }
  for (const char* what : {"values", "empty", "cycle"}) EXPECT_GT(exact[what], 200) << what;
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
