#pragma once

#include <cstdint>

#include "host/ways/numbers.h"

// How numbers become others that look random: the one place where all drawing begins. The steps are
// those of SplitMix64 (Steele, Lea, Flood: "Fast Splittable Pseudorandom Number Generators", 2014)
// with the constants of its variant 13 (Stafford). Never to be changed: all data follows from them.
namespace korvex::ways {

// 2^64 divided by the golden ratio, made odd.
constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;

// Every bit of the result depends on every bit of the word; no two words have one result.
constexpr std::uint64_t scatter(std::uint64_t word) {
  word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9;
  word = (word ^ (word >> 27)) * 0x94D049BB133111EB;
  return word ^ (word >> 31);
}

// The state after another word. States that follow from one state by the words 0, 1, 2 and so on
// are a stream of random numbers.
constexpr std::uint64_t absorb(std::uint64_t state, std::uint64_t word) {
  return scatter(state + golden * (word + 1));
}

// The upper half of a product: `fraction` of 2^64 parts, taken of `whole`.
constexpr std::uint64_t part_of(std::uint64_t fraction, std::uint64_t whole) {
  return static_cast<std::uint64_t>((Wide{fraction} * whole) >> 64);
}

}  // namespace korvex::ways
