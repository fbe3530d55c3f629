#pragma once

#include <string>

// Layouts of the tests that run the program's commands.
namespace korvex::test {

// A nullable number of three digits.
inline std::string number_item(const std::string& name, const std::string& values) {
  return "[[item]]\nname = \"" + name + "\"\nattribute = 4\ndigits = 3\nvalues = { " + values +
         " }\n";
}

inline std::string listed_item(const std::string& name, const std::string& file,
                               const std::string& more = "") {
  return number_item(name, "type = \"enumeration\", file = \"" + file + "\"" + more);
}

inline std::string repeat(int level, int count) {
  return ", repeat = { level = " + std::to_string(level) + ", count = " + std::to_string(count) +
         " }";
}

inline std::string repeated_item(const std::string& name, int level) {
  return number_item(name, "type = \"default\"" + repeat(level, 1));
}

inline std::string layout_of(const std::string& items, const std::string& data = "d.csv",
                             std::int64_t records = 5) {
  return "[layout]\nkind = \"record\"\nwork = \"w\"\nrecords = " + std::to_string(records) +
         "\nsettings = \"d.fif\"\ndata = \"" + data + "\"\n" + items;
}

}  // namespace korvex::test
