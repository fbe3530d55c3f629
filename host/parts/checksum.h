#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace korvex::host {

// A checksum that adds up: that of a whole follows from those of its parts, without its bytes.
//
// The bytes, read as one number with the first as its highest digit, modulo a prime of 60 bits.
// What follows moves them up: whole = first * 256^(bytes of second) + second. The prime has no
// pattern in its bits and 2 generates half of all remainders, so that damage goes unnoticed only by
// chance, once in 10^18. It finds accidents, and is no defence against intent.
class Checksum {
 public:
  Checksum() = default;

  // What a manifest says.
  Checksum(std::uint64_t value, std::uint64_t bytes) : value_(value), bytes_(bytes) {}

  void add(std::string_view text);

  // Puts the bytes of the other after those so far.
  void append(const Checksum& next);

  std::uint64_t value() const;
  std::uint64_t bytes() const { return bytes_; }

  static constexpr std::uint64_t modulus = 0xC87ED5110B46DDB;

 private:
  static constexpr std::size_t block_size = 64;

  void add_block(const char* block);

  // Any number with the right remainder, for whole blocks; the bytes after them wait.
  std::uint64_t value_ = 0;
  std::uint64_t bytes_ = 0;
  std::array<char, block_size> waiting_ = {};
  std::size_t waiting_size_ = 0;
};

}  // namespace korvex::host
