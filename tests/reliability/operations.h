#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "support/environment.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace korvex::test {

using Files = std::map<std::string, std::string>;

// A fresh place for one operation: a folder for what lasts and, where the machine has one, on
// another file system, a folder for temporaries. The user's own settings are out of reach.
class Place {
 public:
  explicit Place(bool crosses_file_systems);

  std::string file(const std::string& name) const { return home_.file(name); }
  const std::string& work() const { return crosses_ ? work_.path() : home_.path(); }

  // Whether the two folders lie on different file systems, as was asked for.
  bool crosses_file_systems() const;

  // All files with their bytes, by their names within the place. A temporary goes by the name that
  // all of them share.
  Files files() const;

  ScriptedInterface interface;

 private:
  bool crosses_;
  TempFolder home_;
  TempFolder work_;
  ScopedVariable config_{"XDG_CONFIG_HOME", home_.file("config")};
  ScopedVariable key_{"KORVEX_HOST_KEY", "Host"};
  platform::UserInterfaceOverride override_{interface};
};

// Something that the module writes, which must not be lost or half done whatever fails.
struct Operation {
  std::string name = "";

  // Puts what the operation works on into the place, and answers the operation itself, to be called
  // once; it returns a code.
  std::function<std::function<std::int32_t()>(Place&)> prepare = {};

  std::vector<std::int32_t> codes = {};    // that a failure may have, beside those of a write
  bool replaces_in_one_step = false;       // what it writes, so that a killed process does no harm
  std::vector<std::string> may_stay = {};  // whole, although the operation failed
  std::vector<std::string> may_go = {};    // although they stood there before
  std::int32_t success = 0;
  std::int32_t write_failed = -26;  // the code of a failed write
  std::int32_t disk_full = -27;     // the same for lack of space
  bool crosses_file_systems = false;
};

inline void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

const std::vector<Operation>& operations();

// What became of one attempt.
struct Outcome {
  std::int32_t code = 0;
  Files before;
  Files after;
  bool removal_failed = false;  // what was to be removed had to stay
};

// What must hold whatever happened: each file has its old or its new bytes, whole, and only success
// has made it new. `finished` is what an attempt without a fault leaves.
void expect_nothing_lost(const Operation& operation, const Outcome& outcome, const Files& finished);

// Of this process.
std::size_t open_descriptors();

}  // namespace korvex::test
