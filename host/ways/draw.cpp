#include "host/ways/draw.h"

#include <cassert>

#include "host/ways/mixing.h"

namespace korvex::ways {

std::uint64_t draw_below(Key key, std::uint64_t record, std::uint64_t bound) {
  assert(bound > 0);
  std::uint64_t drawn = absorb(key.bits, record);
  Wide product = Wide{drawn} * bound;
  if (static_cast<std::uint64_t>(product) < bound) [[unlikely]] {
    // 2^64 modulo the bound: so many draws are too many to share out evenly.
    const std::uint64_t excess = (std::uint64_t{0} - bound) % bound;
    for (std::uint64_t attempt = 0; static_cast<std::uint64_t>(product) < excess; ++attempt) {
      drawn = absorb(drawn, attempt);
      product = Wide{drawn} * bound;
    }
  }
  return static_cast<std::uint64_t>(product >> 64);
}

std::int64_t draw_between(Key key, std::uint64_t record, std::int64_t least, std::int64_t most) {
  assert(least <= most);
  const std::uint64_t numbers =
      static_cast<std::uint64_t>(most) - static_cast<std::uint64_t>(least) + 1;
  const bool is_every_number = numbers == 0;
  const std::uint64_t drawn =
      is_every_number ? absorb(key.bits, record) : draw_below(key, record, numbers);
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(least) + drawn);
}

}  // namespace korvex::ways
