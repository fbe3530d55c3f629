#pragma once

#include <cstdint>
#include <string>

#include "host/layout/layout.h"
#include "platform/temporary_file.h"

namespace korvex::host {

// The two forms of a control file: item numbers for the generator, or whole items.
enum class ControlForm { short_form, long_form };

// The control file of a layout. It is a temporary in the work folder that lives as long as this
// object. More records than it can say stand in it as the most that it can: who makes those does
// not ask it how many there are.
class TemporaryControlFile {
 public:
  // 0, or -2 when it cannot be created, -26, -27 when it cannot be written.
  ErrorCode write(const Layout& layout, ControlForm form);

  const std::string& path() const { return temporary_.path(); }

 private:
  platform::TemporaryFile temporary_;
};

}  // namespace korvex::host
