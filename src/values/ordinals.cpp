#include "values/ordinals.h"

#include "values/full_width_table.h"

namespace korvex {

namespace {

constexpr std::int64_t letter_base = 26;

std::uint16_t code_at(const char* text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const auto trail = static_cast<unsigned char>(text[1]);
  return static_cast<std::uint16_t>((lead << 8) | trail);
}

// The digits of `ordinal`, most significant first, handed to `write(position, digit)` until one is
// outside 0 to base - 1.
template <typename Write>
void write_digits(std::int64_t ordinal, std::int64_t base, std::size_t count, Write write) {
  for (std::size_t position = 0; position < count; ++position) {
    std::int64_t power = 1;
    for (std::size_t i = position + 1; i < count && power <= INT32_MAX; ++i) power *= base;
    const std::int64_t digit = ordinal / power;
    if (digit < 0 || digit >= base) return;
    write(position, digit);
    ordinal -= digit * power;
  }
}

std::int32_t wrap(std::uint32_t value) { return static_cast<std::int32_t>(value); }

}  // namespace

std::int32_t letters_to_ordinal(char base_letter, std::string_view text) {
  std::uint32_t ordinal = 0;
  for (const char letter : text) {
    ordinal = ordinal * static_cast<std::uint32_t>(letter_base) +
              static_cast<std::uint32_t>(letter - base_letter);
  }
  return wrap(ordinal);
}

void ordinal_to_letters(char base_letter, std::int32_t ordinal, char* text, std::size_t size) {
  write_digits(ordinal, letter_base, size, [&](std::size_t position, std::int64_t digit) {
    text[position] = static_cast<char>(base_letter + digit);
  });
}

std::int32_t full_width_to_ordinal(std::string_view text) {
  std::uint32_t ordinal = 0;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    ordinal = ordinal * static_cast<std::uint32_t>(full_width_count) +
              static_cast<std::uint32_t>(full_width_index(code_at(text.data() + i)));
  }
  return wrap(ordinal);
}

void ordinal_to_full_width(std::int32_t ordinal, char* text, std::size_t size) {
  write_digits(ordinal, full_width_count, size / 2, [&](std::size_t position, std::int64_t digit) {
    const std::uint16_t code = full_width_code(static_cast<std::int32_t>(digit));
    text[2 * position] = static_cast<char>(code >> 8);
    text[2 * position + 1] = static_cast<char>(code & 0xFF);
  });
}

}  // namespace korvex
