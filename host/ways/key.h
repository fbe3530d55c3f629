#pragma once

#include <cstdint>
#include <string_view>

namespace korvex::ways {

// What a key decides. Two decisions with one key would be correlated: were emptiness drawn with the
// key of the order, always the same values would be the empty ones.
enum class Use : std::uint64_t {
  order = 1,    // which value an item takes
  empty = 2,    // whether it has one
  weights = 3,  // which value it takes, by exact shares
  group = 4,    // the order of items that take one row
  each = 5,     // how many records belong to each parent
  joint = 6,    // the order of combinations
};

// What random numbers are drawn from. The same on every machine.
struct Key {
  std::uint64_t bits = 0;
};

template <Use use>
struct KeyFor : Key {};

// What keys are made of. Texts are UTF-8 and taken byte by byte: how a character is composed, and
// its case, make a difference.
struct KeyOrigin {
  std::uint64_t seed = 0;
  std::string_view layout_salt;
  std::string_view item_salt;  // or the name of the group or joint order
};

// The hash that a key is. Every pair of texts, and every way to divide a text in two, has a key of
// its own, up to chance. Costs some nanoseconds for each 8 bytes.
std::uint64_t key_bits(const KeyOrigin& origin, Use use);

template <Use use>
KeyFor<use> make_key(const KeyOrigin& origin) {
  return {key_bits(origin, use)};
}

}  // namespace korvex::ways
