#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "control/col_main.h"
#include "dialogs/rules/messages.h"
#include "values/records.h"

namespace korvex {

struct EnumerationStored {
  ErrorCode code = error::none;       // what was refused
  platform::MessageText suffix = {};  // belongs after the message of `code`
  std::uint64_t number = 0;           // and into it: a line of the file
  bool leaves_settings = false;  // the item had none before and has got the initial value for now
};

// Checks a value list against the current item, of which there must be one, and stores it as
// the item's settings, also for an item that may not be NULL. A refused file leaves the settings as
// they were, but see `leaves_settings`.
EnumerationStored choose_enumeration(ClColMain& main, const std::string& path,
                                     ExceededAction exceeded_action);

// Asks the user for a value list; a path that settings cannot hold is refused.
std::optional<std::string> ask_for_enumeration_file(const std::string& folder);

// Opens a value list in the user's editor, when it can be read and written by this user and
// no other process has it open; says so otherwise.
void open_enumeration_file(const std::string& path, const Messages& messages);

// Remembers how many values value lists have while a dialog is open, so that the count after
// it need not read them again at each change. A file that was replaced or changed since is read
// again.
class EnumerationCounts {
 public:
  Result<std::size_t> count(ClColMain& main, const FmtColRec& settings);

  void forget() { known_.clear(); }

 private:
  // The file and what its values are checked against.
  using Key = std::pair<std::string, ItemAttributes>;
  using Version = std::tuple<dev_t, ino_t, off_t, std::time_t, long>;
  struct Known {
    Version version;
    std::size_t count = 0;
  };

  std::map<Key, Known> known_;
};

}  // namespace korvex
