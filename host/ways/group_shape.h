#pragma once

#include <cstdint>
#include <vector>

#include "host/ways/zipf.h"

namespace korvex::ways {

// How the sizes of groups spread between their bounds.
enum class Shape {
  constant,  // as equal as can be
  even,      // evenly, as far to both sides of their mean as the bounds allow
  zipf,      // a few large groups and many small ones, by Zipf's law
};

// How much more than the least each of some groups has, so that they have `extra` together and none
// has more than `width`. `extra` is at most groups * width, `groups` up to 2,047, and both numbers
// up to `most_records`. Neighbours are alike. The skew matters to Shape::zipf alone.
std::vector<std::uint64_t> spread_extra(Shape shape, Skew skew, std::uint64_t groups,
                                        std::uint64_t extra, std::uint64_t width);

}  // namespace korvex::ways
