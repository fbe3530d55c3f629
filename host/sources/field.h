#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/sources/emptiness.h"
#include "host/sources/source.h"
#include "host/sources/way.h"

namespace korvex::sources {

// What a record holds in one of its items: a source, a way through it, and what leaves it empty. Of
// one thread.
class Field {
 public:
  Field(std::unique_ptr<Source> source, std::unique_ptr<Way> way)
      : source_(std::move(source)), way_(std::move(way)) {}

  // With several, a record is empty where any of them says so.
  void add_emptiness(std::unique_ptr<Emptiness> emptiness) {
    emptiness_.push_back(std::move(emptiness));
  }

  // The text of a record; nothing where it has no value. Stands until the next record is asked for:
  // until then it costs nothing to ask again. Empty or not, a record uses up its index.
  std::optional<std::string_view> text(std::uint64_t record);

  // What all its texts have in common. Never empty means that every record has a value.
  TextShape shape() const;

  // So many records from the first on have values that all differ, for certain. At least 1.
  std::uint64_t different_records() const;

 private:
  bool make_text(std::uint64_t record);

  std::unique_ptr<Source> source_;
  std::unique_ptr<Way> way_;
  std::vector<std::unique_ptr<Emptiness>> emptiness_;
  std::optional<std::uint64_t> latest_record_;
  bool has_value_ = false;
  std::string text_;
};

}  // namespace korvex::sources
