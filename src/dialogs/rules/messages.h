#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/col_main.h"
#include "platform/user_interface.h"

namespace korvex {

// How a dialog tells the user of an error code: the code's numbered text in the wording of the
// layout, with its number filled in, and what the place adds after it. Does not own `main`, which
// must outlive it.
class Messages {
 public:
  explicit Messages(const ClColMain& main) : main_(main) {}

  // The code's text. A `number` of 0 leaves its placeholder alone.
  platform::MessageText text(ErrorCode code, std::uint64_t number = 0) const;

  // A `number` of 0 leaves the text's placeholder alone.
  void show(platform::MessageKind kind, ErrorCode code, const platform::MessageText& suffix = {},
            std::uint64_t number = 0) const;

  // Whether the user answers Yes.
  bool ask(ErrorCode code, const platform::MessageText& suffix = {}) const;

 private:
  const ClColMain& main_;
};

// What names the item that a message is about.
platform::MessageText name_suffix(const ClDGCol& item);

}  // namespace korvex
