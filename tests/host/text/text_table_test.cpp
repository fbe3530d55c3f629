#include "host/text/text_table.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/bytes.h"

namespace korvex::host {
namespace {

TEST(TextTable, CountsColumnsOfTheScreen) {
  TextTable table;
  table.align_right(2);
  using test::cp932;
  for (const auto& row : {std::vector<std::string>{"A", "名前", "NO"},
                          {"ｶﾅ", "x\x1B", "7"},
                          {"", "\xFF", "123"},
                          {"", "Ωж①", ""},
                          {"end", "", ""}}) {
    std::vector<TextTable::Cell> cells;
    for (const std::string& text : row) {
      const bool is_bytes = text == "\xFF" || text == "x\x1B";
      cells.push_back(TextTable::from_code_page(is_bytes ? text : cp932(text)));
    }
    table.add(std::move(cells));
  }
  std::ostringstream out;
  table.print(out);
  EXPECT_EQ(out.str(),
            "A    名前    NO\n"
            "ｶﾅ   x\\x1B    7\n"
            "     \xEF\xBF\xBD      123\n"
            "     Ωж①\n"
            "end\n");
}

}  // namespace
}  // namespace korvex::host
