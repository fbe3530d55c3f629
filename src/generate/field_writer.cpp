#include "generate/field_writer.h"

#include <cstring>

#include "generate/wheel.h"

namespace korvex {

namespace {

// The loops below know the sizes of what they copy: a store instead of a call for each.

template <std::size_t tail_size>
void write_tails_of(const FieldPlaces& places, std::int64_t count, TurningTail tail) {
  char* const out = places.base + places.offset + tail.offset;
  for (std::int64_t i = 0; i < count; ++i) {
    std::memcpy(out + places.lines[i], tail.wheel_place, tail_size);
    tail.wheel_place += tail.wheel_step;
  }
}

// A field of one or two chunks, which overlap where it is shorter than both.
template <std::size_t chunk_size, std::size_t tail_size>
void write_fields_of(const FieldPlaces& places, std::int64_t count, std::string_view field,
                     TurningTail tail) {
  const std::size_t last = field.size() - chunk_size;
  struct Chunk {
    char bytes[chunk_size];
  } first_chunk, last_chunk;
  std::memcpy(&first_chunk, field.data(), chunk_size);
  std::memcpy(&last_chunk, field.data() + last, chunk_size);
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i) {
    char* const out = base + places.lines[i];
    std::memcpy(out, &first_chunk, chunk_size);
    std::memcpy(out + last, &last_chunk, chunk_size);
    std::memcpy(out + tail.offset, tail.wheel_place, tail_size);
    tail.wheel_place += tail.wheel_step;
  }
}

void write_long_fields(const FieldPlaces& places, std::int64_t count, std::string_view field) {
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i) {
    std::memcpy(base + places.lines[i], field.data(), field.size());
  }
}

template <std::size_t tail_size>
void write_fields_with(const FieldPlaces& places, std::int64_t count, std::string_view field,
                       const TurningTail& tail) {
  if (field.size() > 32) {
    write_long_fields(places, count, field);
    write_tails_of<tail_size>(places, count, tail);
  } else if (field.size() >= 16) {
    write_fields_of<16, tail_size>(places, count, field, tail);
  } else if (field.size() >= 8) {
    write_fields_of<8, tail_size>(places, count, field, tail);
  } else if (field.size() >= 4) {
    write_fields_of<4, tail_size>(places, count, field, tail);
  } else if (field.size() >= 2) {
    write_fields_of<2, tail_size>(places, count, field, tail);
  } else if (field.size() == 1) {
    write_fields_of<1, tail_size>(places, count, field, tail);
  }
}

}  // namespace

void write_fields(const FieldPlaces& places, std::int64_t count, std::string_view field,
                  const TurningTail& tail) {
  switch (tail.size) {
    case character_entry:
      return write_fields_with<character_entry>(places, count, field, tail);
    case pair_entry:
      return write_fields_with<pair_entry>(places, count, field, tail);
    case clock_entry:
      return write_fields_with<clock_entry>(places, count, field, tail);
    case separated_clock_entry:
      return write_fields_with<separated_clock_entry>(places, count, field, tail);
    default:
      return write_fields_with<0>(places, count, field, tail);
  }
}

void write_tails(const FieldPlaces& places, std::int64_t count, const TurningTail& tail) {
  switch (tail.size) {
    case character_entry:
      return write_tails_of<character_entry>(places, count, tail);
    case pair_entry:
      return write_tails_of<pair_entry>(places, count, tail);
    case clock_entry:
      return write_tails_of<clock_entry>(places, count, tail);
    case separated_clock_entry:
      return write_tails_of<separated_clock_entry>(places, count, tail);
    default:
      return;
  }
}

}  // namespace korvex
