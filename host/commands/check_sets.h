#pragma once

#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/commands/commands.h"
#include "host/process/exit_status.h"
#include "host/records/forecast.h"

namespace korvex::host {

// Of an item of which the first records were tried.
inline constexpr const char* untold_fit =
    "cannot be told: the values of the first records do, others may be too large";

// Items in which all records are to differ.
struct UniqueSet {
  std::string names;  // as they are printed
  std::vector<std::size_t> items;
  EmptyValues empty = EmptyValues::same;
};

// "A,B" as somebody asks for it. Nothing when no item, or more than one, has a name, which
// `messages` says.
std::optional<UniqueSet> read_set(const std::string& names, const PreparedLayout& prepared,
                                  std::ostream& messages);

// Those of the layout itself. A set of which the records lack an item is empty in all of them, so
// that it is none.
std::vector<UniqueSet> own_sets(const PreparedLayout& prepared);

struct SetAnswer {
  bool holds = false;
  std::string text;  // "yes, all 1000 records differ"
};

SetAnswer answer_of(const UniqueSet& set, const Forecast& forecast);

// What the check of a folder says of all its layouts together, as tables of one database: whether
// the records of each differ in its unique sets, and whether its keys lead to records of the
// others. Says in full only what does not hold.
ExitStatus check_folder(const CheckOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
