#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "courses/enum_data_list.h"

namespace korvex::test {

// Fills a list with these values, which come as if from a file.
inline void fill_list(const std::vector<std::string>& values, ClEnumDataList& list) {
  std::string text;
  for (const std::string& value : values) text += value;
  text.resize(text.size() + ClEnumDataList::overhang);
  std::vector<std::string_view> lines;
  const char* begin = text.data();
  for (const std::string& value : values) {
    lines.emplace_back(begin, value.size());
    begin += value.size();
  }
  list.append(lines);
}

}  // namespace korvex::test
