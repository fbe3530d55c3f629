#include "run/field_writer.h"

#include <cstring>

#include "courses/wheel.h"

namespace korvex {

namespace {

// The loops below know the sizes of what they copy: a store instead of a call for each.

// Most fields have none: then there is no place in a wheel either.
template <std::size_t tail_size>
void write_tail(char* field, TurningTail& tail) {
  if constexpr (tail_size > 0) {
    std::memcpy(field + tail.offset, tail.wheel_place, tail_size);
    tail.wheel_place += tail.wheel_step;
  }
}

template <std::size_t tail_size>
void write_tails_of(const FieldPlaces& places, std::int64_t count, TurningTail tail) {
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i) write_tail<tail_size>(base + places.lines[i], tail);
}

template <std::size_t size>
struct Chunk {
  explicit Chunk(const char* from) { std::memcpy(bytes, from, size); }
  char bytes[size];
};

// A field of two chunks, which overlap where it is shorter than both.
template <std::size_t chunk_size, std::size_t tail_size>
void write_exactly(const FieldPlaces& places, std::int64_t count, std::string_view field,
                   TurningTail tail) {
  const std::size_t last = field.size() - chunk_size;
  const Chunk<chunk_size> first_chunk(field.data());
  const Chunk<chunk_size> last_chunk(field.data() + last);
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i) {
    char* const out = base + places.lines[i];
    std::memcpy(out, &first_chunk, chunk_size);
    std::memcpy(out + last, &last_chunk, chunk_size);
    write_tail<tail_size>(out, tail);
  }
}

// One chunk that reaches beyond the field.
template <std::size_t chunk_size, std::size_t tail_size>
void write_overlong(const FieldPlaces& places, std::int64_t count, const char* field,
                    TurningTail tail) {
  const Chunk<chunk_size> chunk(field);
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i) {
    char* const out = base + places.lines[i];
    std::memcpy(out, &chunk, chunk_size);
    write_tail<tail_size>(out, tail);
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
  const std::size_t size = field.size();
  const std::size_t room = size + places.room;
  if (size > 32) {
    write_long_fields(places, count, field);
    write_tails_of<tail_size>(places, count, tail);
  } else if (size <= 8 && room >= 8) {
    write_overlong<8, tail_size>(places, count, field.data(), tail);
  } else if (size > 8 && size <= 16 && room >= 16) {
    write_overlong<16, tail_size>(places, count, field.data(), tail);
  } else if (size >= 16) {
    write_exactly<16, tail_size>(places, count, field, tail);
  } else if (size >= 8) {
    write_exactly<8, tail_size>(places, count, field, tail);
  } else if (size >= 4) {
    write_exactly<4, tail_size>(places, count, field, tail);
  } else if (size >= 2) {
    write_exactly<2, tail_size>(places, count, field, tail);
  } else if (size == 1) {
    write_exactly<1, tail_size>(places, count, field, tail);
  }
}

// The texts come from more memory than the processor keeps at hand.
constexpr std::size_t read_ahead = 2048;

template <std::size_t chunk_size>
void write_texts_of(const FieldPlaces& places, std::int64_t count, std::string_view first,
                    char closing) {
  const std::size_t size = first.size();
  const std::size_t last = size - chunk_size;
  const char* text = first.data();
  char* const base = places.base + places.offset;
  for (std::int64_t i = 0; i < count; ++i, text += size) {
    char* const out = base + places.lines[i];
    __builtin_prefetch(text + read_ahead);
    std::memcpy(out, text, chunk_size);
    std::memcpy(out + last, text + last, chunk_size);
    out[size] = closing;
  }
}

void write_long_texts(const FieldPlaces& places, std::int64_t count, std::string_view first,
                      char closing) {
  const char* text = first.data();
  for (std::int64_t i = 0; i < count; ++i, text += first.size()) {
    char* const out = places.base + places.offset + places.lines[i];
    std::memcpy(out, text, first.size());
    out[first.size()] = closing;
  }
}

}  // namespace

void write_texts(const FieldPlaces& places, std::int64_t count, std::string_view first,
                 std::string_view closing) {
  const std::size_t size = first.size();
  if (size > 32) {
    write_long_texts(places, count, first, closing.front());
  } else if (size >= 16) {
    write_texts_of<16>(places, count, first, closing.front());
  } else if (size >= 8) {
    write_texts_of<8>(places, count, first, closing.front());
  } else if (size >= 4) {
    write_texts_of<4>(places, count, first, closing.front());
  } else if (size >= 2) {
    write_texts_of<2>(places, count, first, closing.front());
  } else if (size == 1) {
    write_texts_of<1>(places, count, first, closing.front());
  }
  FieldPlaces rest = places;
  rest.offset += size + 1;
  write_fields(rest, count, closing.substr(1), {});
}

void write_fields(const FieldPlaces& places, std::int64_t count, std::string_view field,
                  const TurningTail& tail) {
  switch (tail.size) {
    case character_entry:
      return write_fields_with<character_entry>(places, count, field, tail);
    case pair_entry:
      return write_fields_with<pair_entry>(places, count, field, tail);
    case two_pairs_entry:
      return write_fields_with<two_pairs_entry>(places, count, field, tail);
    case separated_pairs_entry:
      return write_fields_with<separated_pairs_entry>(places, count, field, tail);
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
    case two_pairs_entry:
      return write_tails_of<two_pairs_entry>(places, count, tail);
    case separated_pairs_entry:
      return write_tails_of<separated_pairs_entry>(places, count, tail);
    default:
      return;
  }
}

}  // namespace korvex
