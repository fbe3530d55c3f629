// Data that a version of the ways has given once, it gives for ever: vectors.txt is only added to.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "host/ways/draw.h"
#include "host/ways/group_sizes.h"
#include "host/ways/key.h"
#include "host/ways/pairs.h"
#include "host/ways/permutation.h"
#include "host/ways/shares.h"
#include "host/ways/shuffle.h"
#include "host/ways/tree.h"
#include "host/ways/zipf.h"

namespace korvex::ways {
namespace {

// What a scheme gives for each of the numbers after its arguments.
using Answer = std::function<std::string(std::uint64_t)>;

std::string text(std::uint64_t number) { return std::to_string(number); }
std::string text(std::int64_t number) { return std::to_string(number); }
std::string text(const IndexPair& pair) { return text(pair.lower) + ":" + text(pair.upper); }
std::string text(const Member& member) { return text(member.parent) + ":" + text(member.place); }

template <class Ask>
Answer answer(Ask ask) {
  return [ask](std::uint64_t number) mutable { return text(ask(number)); };
}

template <class Scheme>
Answer at(Scheme scheme) {
  return answer([scheme](std::uint64_t record) mutable { return scheme.at(record); });
}

class Arguments {
 public:
  explicit Arguments(const std::string& line) {
    std::istringstream words(line);
    for (std::string word; words >> word;) words_.push_back(word == "-" ? "" : word);
  }

  const std::string& word(std::size_t i) const { return words_.at(i); }
  std::uint64_t number(std::size_t i) const { return std::stoull(word(i), nullptr, 0); }
  std::int64_t signed_number(std::size_t i) const { return std::stoll(word(i)); }
  Fraction fraction(std::size_t i) const { return *parse_fraction(word(i)); }
  Key key() const { return {number(1)}; }

  // From an argument to the last one.
  std::vector<Fraction> fractions(std::size_t first) const {
    std::vector<Fraction> values;
    for (std::size_t i = first; i < words_.size(); ++i) values.push_back(fraction(i));
    return values;
  }

 private:
  std::vector<std::string> words_;
};

const std::map<std::string, Use> uses = {{"order", Use::order},     {"empty", Use::empty},
                                         {"weights", Use::weights}, {"group", Use::group},
                                         {"each", Use::each},       {"joint", Use::joint}};

const std::map<std::string, Shape> shapes_by_name = {
    {"constant", Shape::constant}, {"even", Shape::even}, {"zipf", Shape::zipf}};

const std::map<std::string, std::function<Answer(const Arguments&)>> schemes = {
    {"key",
     [](const Arguments& given) {
       return answer([given](std::uint64_t seed) {
         return key_bits({seed, given.word(1), given.word(2)}, uses.at(given.word(3)));
       });
     }},
    {"draw_below",
     [](const Arguments& given) {
       return answer([given](std::uint64_t record) {
         return draw_below(given.key(), record, given.number(2));
       });
     }},
    {"draw_between",
     [](const Arguments& given) {
       return answer([given](std::uint64_t record) {
         return draw_between(given.key(), record, given.signed_number(2), given.signed_number(3));
       });
     }},
    {"permutation",
     [](const Arguments& given) {
       return at(Permutation(given.key(), given.number(2), {given.number(3), given.number(4)}));
     }},
    {"shuffle", [](const Arguments& given) { return at(Shuffle(given.key(), given.number(2))); }},
    {"joint",
     [](const Arguments& given) {
       const std::uint64_t periods[] = {given.number(2), given.number(3)};
       JointShuffle joint = *JointShuffle::make({given.key()}, periods);
       return answer([joint](std::uint64_t record) mutable {
         return IndexPair{joint.at(record, 0), joint.at(record, 1)};
       });
     }},
    {"within",
     [](const Arguments& given) {
       ShuffleWithin within(given.key(), given.number(2));
       return answer([given, within](std::uint64_t member) mutable {
         return within.at(given.number(3), member);
       });
     }},
    {"pairs", [](const Arguments& given) { return at(PairShuffle(given.key(), given.number(2))); }},
    {"shares",
     [](const Arguments& given) {
       ExactShares shares(given.key(), *Proportions::of_weights(given.fractions(3)),
                          given.number(2));
       return answer([shares](std::uint64_t record) mutable { return shares.category_of(record); });
     }},
    {"power",
     [](const Arguments& given) {
       return answer([given](std::uint64_t x) { return negative_power(x, given.fraction(1)); });
     }},
    {"zipf",
     [](const Arguments& given) {
       return at(Zipf(given.key(), given.number(2), *Skew::make(given.fraction(3))));
     }},
    {"groups",
     [](const Arguments& given) {
       const GroupBounds bounds = {
           given.number(4), given.number(5), shapes_by_name.at(given.word(6)), {}};
       const GroupSizes groups =
           *GroupSizes::make({given.key()}, given.number(2), given.number(3), bounds);
       return answer([groups](std::uint64_t record) { return groups.member(record); });
     }},
    {"tree",
     [](const Arguments& given) {
       const GroupBounds bounds = {
           given.number(3), given.number(4), shapes_by_name.at(given.word(5)), {}};
       const Tree tree = *Tree::make({given.key()}, given.number(2), bounds);
       return answer([tree](std::uint64_t record) { return tree.member(record)->parent; });
     }},
};

TEST(Vectors, AreWhatVersionOneGives) {
  std::ifstream file(KORVEX_WAYS_VECTORS);
  ASSERT_TRUE(file);
  for (std::string line; std::getline(file, line);) {
    if (line.front() == '#') continue;
    const std::size_t colon = line.find(" : ");
    const std::size_t equals = line.find(" = ");
    ASSERT_TRUE(colon < equals && equals != std::string::npos) << line;
    const Arguments given(line.substr(0, colon));
    const Answer ask = schemes.at(given.word(0))(given);
    std::istringstream asked(line.substr(colon + 2, equals - colon - 2));
    std::string answers;
    for (std::uint64_t number = 0; asked >> number;) answers += " " + ask(number);
    EXPECT_EQ(line.substr(equals + 2), answers) << line;
  }
}

}  // namespace
}  // namespace korvex::ways
