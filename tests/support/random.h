#pragma once

#include <cstdint>
#include <random>

namespace korvex::test {

using Random = std::mt19937_64;

// The same numbers with every library, which std::uniform_int_distribution does not promise.
inline std::uint64_t below(Random& random, std::uint64_t end) { return random() % end; }

}  // namespace korvex::test
