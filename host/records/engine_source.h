#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/sources/source.h"
#include "host/text/code_page_text.h"
#include "run/run.h"

// The values that the engine makes, as sources in UTF-8.
namespace korvex::host {

using sources::BadValue;

// The records of a run, which fields that ask for the same one share.
class EngineRecords {
 public:
  // The run must outlive this object, and nobody else may take its records.
  EngineRecords(Run& run, LayoutKind layout_kind) : run_(run), layout_kind_(layout_kind) {}

  // In code page 932, valid until another record is asked for.
  std::string_view value(std::uint64_t record, std::size_t field);

  const ItemGenerator& item(std::size_t field) const { return *run_.fields()[field]; }
  LayoutKind layout_kind() const { return layout_kind_; }

 private:
  Run& run_;
  LayoutKind layout_kind_;
  std::uint64_t next_ = 0;
  std::optional<std::uint64_t> latest_;
  std::vector<std::string_view> values_;
};

// What an answer is where no formula gives one.
inline const std::string untold = "cannot be computed in advance";

// How the values of a field go, in words: "starts again after 52 records".
std::string course_of(const FieldFacts& facts);

// From this record on the field is empty; endless where that never comes, or is unknown.
std::uint64_t end_of(const FieldFacts& facts);

// A field of the records as they are generated: repeats and all.
std::unique_ptr<sources::Source> make_engine_source(std::shared_ptr<EngineRecords> records,
                                                    std::size_t field, const FieldFacts& facts);

// The values of an item by their places in its course or list, for ways of their own. Null where
// nothing tells how many there are. The item must outlive the source.
std::unique_ptr<sources::Source> make_course_source(const ItemGenerator& item,
                                                    LayoutKind layout_kind);

}  // namespace korvex::host
