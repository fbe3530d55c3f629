#include "host/parts/checksum.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace korvex::host {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::uint64_t modulus = Checksum::modulus;
constexpr int word_bits = 64;
constexpr std::uint64_t byte_values = 256;

constexpr std::uint64_t multiply(std::uint64_t left, std::uint64_t right) {
  return static_cast<std::uint64_t>(Wide{left} * right % modulus);
}

constexpr std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
  std::uint64_t result = 1;
  for (; exponent > 0; exponent /= 2) {
    if (exponent % 2 == 1) result = multiply(result, base);
    base = multiply(base, base);
  }
  return result;
}

// -1 / modulus modulo 2^64, by Newton's iteration, which doubles the right bits each time.
constexpr std::uint64_t negative_inverse() {
  std::uint64_t inverse = modulus;
  for (int right_bits = 3; right_bits < word_bits; right_bits *= 2) {
    inverse *= 2 - modulus * inverse;
  }
  return ~inverse + 1;
}

// What a word is worth, by how many words of the block come after it; a last one for the number so
// far. Each has a factor of 2^64 too many, which the reduction takes away.
template <std::size_t words>
constexpr std::array<std::uint64_t, words> worths() {
  std::array<std::uint64_t, words> all = {};
  for (std::size_t i = 0; i < words; ++i) all[i] = power(2, word_bits * (i + 1));
  return all;
}

// The number divided by 2^64, modulo the prime and not quite reduced: one multiplication makes the
// low half zero, so that nothing has to be divided.
std::uint64_t divide_by_word(Wide number) {
  constexpr std::uint64_t factor = negative_inverse();
  const std::uint64_t multiple = static_cast<std::uint64_t>(number) * factor;
  return static_cast<std::uint64_t>((number + Wide{multiple} * modulus) >> word_bits);
}

std::uint64_t word_at(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  static_assert(std::endian::native == std::endian::little);
  return __builtin_bswap64(word);
}

}  // namespace

void Checksum::add_block(const char* block) {
  constexpr std::size_t words = block_size / sizeof(std::uint64_t);
  static constexpr auto worth = worths<words + 1>();
  // Nine products of 124 bits stay below 128.
  Wide number = Wide{value_} * worth[words];
  for (std::size_t i = 0; i < words; ++i) {
    number += Wide{word_at(block + i * sizeof(std::uint64_t))} * worth[words - 1 - i];
  }
  value_ = divide_by_word(number);
}

void Checksum::add(std::string_view text) {
  bytes_ += text.size();
  if (waiting_size_ > 0) {
    const std::size_t taken = std::min(text.size(), block_size - waiting_size_);
    text.copy(waiting_.data() + waiting_size_, taken);
    waiting_size_ += taken;
    text.remove_prefix(taken);
    if (waiting_size_ < block_size) return;
    add_block(waiting_.data());
  }
  while (text.size() >= block_size) {
    add_block(text.data());
    text.remove_prefix(block_size);
  }
  waiting_size_ = text.copy(waiting_.data(), block_size);
}

std::uint64_t Checksum::value() const {
  std::uint64_t value = value_ % modulus;
  for (std::size_t i = 0; i < waiting_size_; ++i) {
    value = (multiply(value, byte_values) + static_cast<unsigned char>(waiting_[i])) % modulus;
  }
  return value;
}

void Checksum::append(const Checksum& next) {
  const std::uint64_t moved = multiply(value(), power(byte_values, next.bytes_));
  *this = Checksum((moved + next.value()) % modulus, bytes_ + next.bytes_);
}

}  // namespace korvex::host
