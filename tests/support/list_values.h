#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "generate/enum_data_list.h"

namespace korvex::test {

// A list of these values, which come as if from a file.
inline std::unique_ptr<ClEnumDataList> make_list(const std::vector<std::string>& values) {
  std::string text;
  for (const std::string& value : values) text += value;
  text.resize(text.size() + LineReader::overhang);
  std::vector<std::string_view> lines;
  const char* begin = text.data();
  for (const std::string& value : values) {
    lines.emplace_back(begin, value.size());
    begin += value.size();
  }
  auto list = std::make_unique<ClEnumDataList>();
  list->append(lines);
  return list;
}

}  // namespace korvex::test
