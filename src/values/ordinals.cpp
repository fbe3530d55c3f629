#include "values/ordinals.h"

#include <algorithm>
#include <array>
#include <cstddef>

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

namespace {

struct CodeRange {
  std::uint16_t first;
  std::uint16_t last;
};

// The assigned codes. A range runs on through the next row; within it, trail bytes that no
// character has are passed over.
constexpr std::array assigned_ranges = {
    CodeRange{0x8142, 0x81AC}, CodeRange{0x81B8, 0x81BF}, CodeRange{0x81C8, 0x81CE},
    CodeRange{0x81DA, 0x81E8}, CodeRange{0x81F0, 0x81F7}, CodeRange{0x81FC, 0x81FC},
    CodeRange{0x824F, 0x8258}, CodeRange{0x8260, 0x8279}, CodeRange{0x8281, 0x829A},
    CodeRange{0x829F, 0x82F1}, CodeRange{0x8340, 0x8396}, CodeRange{0x839F, 0x83B6},
    CodeRange{0x83BF, 0x83D6}, CodeRange{0x8440, 0x8460}, CodeRange{0x8470, 0x8491},
    CodeRange{0x849F, 0x84BE}, CodeRange{0x8740, 0x875D}, CodeRange{0x875F, 0x8775},
    CodeRange{0x877E, 0x879C}, CodeRange{0x889F, 0x9872}, CodeRange{0x989F, 0x9FFC},
    CodeRange{0xE040, 0xEAA4}, CodeRange{0xED40, 0xEEEC}, CodeRange{0xEEEF, 0xEEF6},
};

constexpr std::array<std::uint16_t, 6> appended_codes = {0xFA48, 0xFA49, 0x81CA,
                                                         0xFA55, 0xFA56, 0xFA57};

constexpr std::size_t ascending_count = full_width_count - appended_codes.size();

constexpr bool is_trail_byte(unsigned byte) { return byte >= 0x40 && byte <= 0xFC && byte != 0x7F; }

using Table = std::array<std::uint16_t, full_width_count>;

constexpr Table make_table() {
  Table table = {};
  std::size_t count = 0;
  for (const CodeRange& range : assigned_ranges) {
    for (unsigned code = range.first; code <= range.last; ++code) {
      if (is_trail_byte(code & 0xFF)) table[count++] = static_cast<std::uint16_t>(code);
    }
  }
  for (const std::uint16_t code : appended_codes) table[count++] = code;
  return table;
}

constexpr Table table = make_table();
static_assert(table[ascending_count - 1] == 0xEEF6 && table[full_width_count - 1] == 0xFA57);

}  // namespace

std::uint16_t full_width_code(std::int32_t index) { return table[static_cast<std::size_t>(index)]; }

std::int32_t full_width_index(std::uint16_t code) {
  const auto ascending_end = table.begin() + ascending_count;
  const auto place = std::lower_bound(table.begin(), ascending_end, code);
  if (place != ascending_end && *place == code) {
    return static_cast<std::int32_t>(place - table.begin());
  }
  const auto appended = std::find(ascending_end, table.end() - 1, code);
  return static_cast<std::int32_t>(appended - table.begin());
}

}  // namespace korvex
