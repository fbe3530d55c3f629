#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace korvex {

// Where the fields of one item are in the lines of a block: at the same distance from a place of
// each line.
struct FieldPlaces {
  char* base = nullptr;
  const std::size_t* lines = nullptr;
  std::size_t offset = 0;
  std::size_t room = 0;  // after each field, whose bytes are written later
};

// The end of an element's text, which changes from line to line, and its place in the field.
struct TurningTail {
  const char* wheel_place = nullptr;
  std::ptrdiff_t wheel_step = 0;
  std::size_t size = 0;
  std::size_t offset = 0;
};

// Writes `field` into the first `count` lines, exactly, with the next tail in each line.
void write_fields(const FieldPlaces& places, std::int64_t count, std::string_view field,
                  const TurningTail& tail);

// Writes one more tail into fields that have been written.
void write_tails(const FieldPlaces& places, std::int64_t count, const TurningTail& tail);

// Writes a text of its own into each line, with `closing` after it, which must not be empty. The
// texts have one size and are one after the other; `first` is the first of them.
void write_texts(const FieldPlaces& places, std::int64_t count, std::string_view first,
                 std::string_view closing);

}  // namespace korvex
