#pragma once

#include <cstdint>
#include <memory>

#include "host/sources/field.h"
#include "host/sources/scale.h"
#include "host/ways/key.h"

namespace korvex::sources {

// How far from another value, both ends included, in units of its scale. `least` is no more than
// `most`.
struct Distance {
  std::int64_t least = 0;
  std::int64_t most = 0;
};

// The value of another field of the same record, which must outlive the source, plus a distance
// that is drawn evenly. No value where the other has none. A value that is none of the scale, or
// too near to its end, is a BadValue.
std::unique_ptr<Source> make_offset_source(Field& of, std::unique_ptr<Scale> scale,
                                           ways::KeyFor<ways::Use::order> key, Distance distance);

}  // namespace korvex::sources
