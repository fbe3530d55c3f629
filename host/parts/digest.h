#pragma once

#include <nettle/sha2.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace korvex::host {

// A SHA-256 of pieces, each with its size, so that no two rows of pieces are taken for one another.
class Digest {
 public:
  Digest();

  void add(std::string_view piece);
  void add(std::uint64_t number);

  // The bytes of a plain record without padding.
  template <class Record>
  requires std::has_unique_object_representations_v<Record>
  void add_record(const Record& record) {
    add(std::string_view(reinterpret_cast<const char*>(&record), sizeof record));
  }

  // In hexadecimal digits. The digest is then to begin again.
  std::string text();

  static constexpr std::size_t text_size = 2 * SHA256_DIGEST_SIZE;

 private:
  sha256_ctx state_;
};

}  // namespace korvex::host
