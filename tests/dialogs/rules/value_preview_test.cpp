#include "dialogs/rules/value_preview.h"

#include <gtest/gtest.h>

#include "control/item_settings.h"
#include "control/reconcile.h"
#include "dialogs/dialog_setup.h"
#include "support/table.h"

namespace korvex::test {
namespace {

class ValuePreviewTest : public testing::Test {
 protected:
  void load(const std::vector<DialogItem>& items) {
    setup.write(items);
    main.items.clear();
    main.control_path = setup.control();
    ASSERT_EQ(main.load(), 0);
    ASSERT_EQ(reconcile(main), 0);
    main.select_item(0);
  }

  std::string text(const ValuePreview& preview) const { return preview_text(preview, messages); }

  std::string list(const std::string& lines) const {
    write_file(setup.folder.file("list"), lines);
    return text(preview_list(main, setup.folder.file("list")));
  }

  DialogSetup setup;
  ClColMain main;
  Messages messages{main};
};

TEST_F(ValuePreviewTest, ShowsWhatARangeGives) {
  for (const auto& [item, format, start, end, increment, shown] : table<6>(R"(
      4 0 8 8     | %8U    | 1        | 99999999 | 2 | 50,000,000 values: 00000001, 00000003, 00000005 … 99999999
      4 0 8 8     | %8U    | 1        | 9        | 3 | 3 values: 00000001, 00000004, 00000007
      4 0 8 8     | %8U    | 7        | 7        | 1 | 99017:
      1 1 3 3     | 'a,'%1S | A       | Z        | 1 | 26 values: a,A, a,B, a,C … a,Z
      1 1 3 3     | 'ab'   |          |          |   | 1 value: ab
      11 0 6 3    | %1N    | あ       | お       | 2 | 5 values: あ, い, う … お
      28 0 10 8   | %4YMD  | 20240227 | 20240301 | 1 | 4 values: 20240227, 20240228, 20240229 … 20240301
      31 0 8 6    | %T     | 000000   | 235959   | 1 | 86,400 values: 000000, 000001, 000002 … 235959
      32 0 19 15  | %TS    | 19700101 090000 | 20380119 031407 | 1 | 2,147,451,248 values: 19700101 090000, 19700101 090001, 19700101 090002 … 20380119 031407
      4 0 8 8     |        | 1        | 9        | 1 | 99036:The format is not set. Please set the format.
      4 0 8 8     | %8U    |          | 9        | 1 | 99037:The start value is not set. Please set the start value.
      4 0 8 8     | %9U    | 1        | 9        | 1 | 99052:There is an error in the number of digits of the format.
      4 0 8 8     | %8U    | 1        | 9        | 10 | 99
      23 1 10 10  | %10D   | 2147483648 | 2147483649 | 1 | 99049:The start value is out of range. Please reset the start value.
  )")) {
    load({{.attributes = item_of(item)}});
    const ValuePreview preview =
        preview_range(*main.items[0], main.layout_kind(),
                      {.texts = {format, cp932(start), cp932(end), increment}, .is_custom = true},
                      setup_format_rules);
    EXPECT_TRUE(text(preview).starts_with(shown)) << format << "\n" << text(preview);
    EXPECT_TRUE(preview.code != 0 || text(preview) == shown) << text(preview);
  }
  EXPECT_EQ(main.settings.find_column(ItemNumber{1}), nullptr);
  EXPECT_EQ(main.items[0]->display().generation_type, generation_type::none);
}

TEST_F(ValuePreviewTest, ShowsHowAListBegins) {
  load({{.attributes = letters}});
  EXPECT_EQ(list("A\n\nB\nC\n"), "3 values: A, B, C");
  EXPECT_EQ(list("A\nB\nC\nD\n"), "4 values: A, B, C … D");
  EXPECT_TRUE(list("A\nABCD\n").starts_with("2 line of a enum file ")) << list("A\nABCD\n");
  EXPECT_TRUE(list("").starts_with("99136:"));
  std::string long_list;
  while (long_list.size() < 3 * list_bytes_looked_at) long_list += "ABC\n";
  EXPECT_EQ(list(long_list).substr(0, 10), "More than ");
  EXPECT_TRUE(list(long_list).ends_with(" values: ABC, ABC, ABC …")) << list(long_list);
}

}  // namespace
}  // namespace korvex::test
