#include "host/ways/key.h"

#include <algorithm>
#include <cstddef>

#include "host/ways/mixing.h"

namespace korvex::ways {
namespace {

constexpr std::size_t word_size = 8;

// The first bytes of a text as a number, the first byte lowest, whatever the machine's own order.
std::uint64_t first_word(std::string_view text) {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < std::min(word_size, text.size()); ++i) {
    word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
  }
  return word;
}

// The size goes first, so that bytes can't move from one text to the next.
std::uint64_t absorb_text(std::uint64_t state, std::string_view text) {
  state = absorb(state, text.size());
  for (; !text.empty(); text.remove_prefix(std::min(word_size, text.size()))) {
    state = absorb(state, first_word(text));
  }
  return state;
}

}  // namespace

std::uint64_t key_bits(const KeyOrigin& origin, Use use) {
  std::uint64_t state = absorb(0, origin.seed);
  state = absorb_text(state, origin.layout_salt);
  state = absorb_text(state, origin.item_salt);
  return absorb(state, static_cast<std::uint64_t>(use));
}

}  // namespace korvex::ways
