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
  // Fields that take one row of a table or a set share a way.
  Field(std::unique_ptr<Source> source, std::shared_ptr<Way> way)
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

  // There are no more different values; having none counts as one.
  std::uint64_t most_values() const;

  const Way& way() const { return *way_; }
  bool has_emptiness() const { return !emptiness_.empty(); }

  // What follows from the text, from the index, and from the fields that this one is made of.
  void tell(Knowledge& knowledge) const;

  Thing thing() const { return {this}; }

 private:
  bool make_text(std::uint64_t record);

  std::unique_ptr<Source> source_;
  std::shared_ptr<Way> way_;
  std::vector<std::unique_ptr<Emptiness>> emptiness_;
  std::optional<std::uint64_t> latest_record_;
  bool has_value_ = false;
  std::string text_;
};

}  // namespace korvex::sources
