#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/records/record_stream.h"
#include "platform/file.h"

namespace korvex::host {

// Some of the records, with what comes before the first of all or without it.
struct Stretch {
  RecordRange records;
  bool has_head = false;
};

// A file that is compared with the records that it should have.
class FileComparison {
 public:
  explicit FileComparison(const std::string& path);

  // Compares the bytes of records with the file's from an offset on. What is wrong first, with its
  // place; empty when nothing is. Throws Interrupted.
  std::string compare(RecordStream& stream, const Stretch& stretch, std::uint64_t offset);

  // The offset after the last byte that was compared.
  std::uint64_t end() const { return end_; }

  // What is wrong when the file has more bytes than so many; empty when it has not.
  std::string check_end(std::uint64_t bytes) const;

  std::uint64_t size() const { return size_; }

 private:
  platform::File file_;
  std::string failure_;
  std::uint64_t size_ = 0;
  std::uint64_t end_ = 0;
  std::vector<char> block_;
};

// The size of records as a stream gives them.
std::uint64_t size_of(RecordStream& stream, const Stretch& stretch);

}  // namespace korvex::host
