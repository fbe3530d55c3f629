#pragma once

#include <cstdint>

#include "host/ways/key.h"

// Numbers drawn evenly and with replacement: for each record one, that follows from the key and the
// record alone. Without bias: a draw that would favour some numbers is repeated (Lemire: "Fast
// Random Integer Generation in an Interval", 2019). Some 3 ns.
namespace korvex::ways {

// From 0 up to, but not including, `bound`, which is at least 1.
std::uint64_t draw_below(Key key, std::uint64_t record, std::uint64_t bound);

// From `least` to `most`, both included; `least` is no more than `most`. All of the 64 bits if need
// be.
std::int64_t draw_between(Key key, std::uint64_t record, std::int64_t least, std::int64_t most);

}  // namespace korvex::ways
