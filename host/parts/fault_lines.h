#pragma once

#include <iosfwd>
#include <set>
#include <string>

#include "host/parts/part.h"

namespace korvex::host {

// The lines that say which parts of a file are not complete, one for parts in a row with one fault.
class FaultLines {
 public:
  FaultLines(const std::string& whole, std::uint64_t parts, std::ostream& messages)
      : whole_(whole), parts_(parts), messages_(messages) {}

  // Parts from the first to the last have a fault. In any order, but in a row for one line.
  void add(std::uint64_t first, std::uint64_t last, const std::string& fault);

  // Writes the line that waits for more parts.
  void flush();

  bool is_faulty(std::uint64_t number) const;
  std::uint64_t count() const { return count_; }

 private:
  struct Row {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    bool operator<(const Row& other) const { return last < other.last; }
  };

  std::string whole_;
  std::uint64_t parts_;
  std::ostream& messages_;
  Row waiting_;
  std::string fault_;  // of the rows that wait, empty for none
  std::set<Row> rows_;
  std::uint64_t count_ = 0;
};

}  // namespace korvex::host
