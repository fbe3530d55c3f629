#include "host/sources/source.h"

namespace korvex::sources {

void Source::append_all(std::span<const std::uint64_t> indices, TextBlock& out) {
  std::string text;
  for (const std::uint64_t index : indices) {
    if (out.is_full()) return;
    text.clear();
    append(index, text);
    out.add_copy(text);
  }
}

}  // namespace korvex::sources
