#include "host/parts/digest.h"

namespace korvex::host {

Digest::Digest() { sha256_init(&state_); }

void Digest::add(std::string_view piece) {
  add(std::uint64_t{piece.size()});
  sha256_update(&state_, piece.size(), reinterpret_cast<const std::uint8_t*>(piece.data()));
}

void Digest::add(std::uint64_t number) {
  std::uint8_t bytes[sizeof number];
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(number);
    number >>= 8;
  }
  sha256_update(&state_, sizeof bytes, bytes);
}

std::string Digest::text() {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::uint8_t bytes[SHA256_DIGEST_SIZE];
  sha256_digest(&state_, sizeof bytes, bytes);
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 0xF];
  }
  return text;
}

}  // namespace korvex::host
