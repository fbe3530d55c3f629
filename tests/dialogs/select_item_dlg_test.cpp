#include "dialogs/select_item_dlg.h"

#include "dialogs/dialog_driver.h"
#include "dialogs/dialog_setup.h"
#include "dialogs/item_list_ctrl.h"

namespace korvex::test {
namespace {

namespace id = control_id;

constexpr int ok = dialog_result::ok;
constexpr int cancel = dialog_result::cancel;

class SelectItemDlgTest : public testing::Test {
 protected:
  SelectItemDlgTest() { set_items({"A", cp932("品名"), "B", "A"}); }

  void set_items(const Names& names) {
    main.items.clear();
    for (const std::string& name : names) {
      main.items.push_back(std::make_unique<ClDGCol>());
      main.items.back()->name = name;
    }
  }

  // The result, and after OK the position and the name there.
  std::string run(const std::string& name, const Steps& story) {
    ClSelectItemDlg dialog(nullptr, main.items, layout_kind::record_file, messages, name);
    const int result = play(dialog, story);
    if (result != ok) return std::to_string(result);
    const auto& picked = *main.items[static_cast<std::size_t>(dialog.position())];
    return "1 " + std::to_string(dialog.position()) + " " + picked.name;
  }

  Step expect_told(const Names& expected) {
    return then([=, this] { EXPECT_EQ(setup.told(), expected); });
  }

  DialogSetup setup;
  ClColMain main;
  Messages messages{main};
};

TEST_F(SelectItemDlgTest, PicksAnItem) {
  struct Case {
    const char* what;
    const char* name;
    Steps story;
    std::string picked;
  };
  const Case cases[] = {
      {"the first for no name", "", {click(id::ok)}, "1 0 A"},
      {"from the list", "B", {row(id::selection_items, 1), click(id::ok)}, "1 1 " + cp932("品名")},
      {"the row marked at the start", "B", {row(id::selection_items, 0), click(id::ok)}, "1 0 A"},
      {"the same by double click", "B", {row(id::selection_items, 0, true)}, "1 0 A"},
      {"by double click", "", {row(id::selection_items, 2, true)}, "1 2 B"},
      {"by its name",
       "",
       {type(id::selected_name, "品名"), press(Qt::Key_Return)},
       "1 1 " + cp932("品名")},
      {"by keys", "", {press(Qt::Key_Down), press(Qt::Key_Down), press(Qt::Key_Return)}, "1 2 B"},
      {"found by typing",
       "",
       {type(id::selected_name, "品"), press(Qt::Key_Down), press(Qt::Key_Return)},
       "1 1 " + cp932("品名")},
      {"the one behind it",
       "",
       {type(id::selected_name, "b"), press(Qt::Key_Down), press(Qt::Key_Down), click(id::ok)},
       "1 0 A"},
      {"the first of two", "A", {row(id::selection_items, 3), click(id::ok)}, "1 0 A"},
      {"none", "B", {row(id::selection_items, 3), press(Qt::Key_Escape)}, "2"},
  };
  for (const Case& c : cases) EXPECT_EQ(run(c.name, c.story), c.picked) << c.what;
  EXPECT_EQ(setup.told(), Names{});
}

TEST_F(SelectItemDlgTest, RefusesWhatIsNoName) {
  EXPECT_EQ(run("B", {type(id::selected_name, "b"), click(id::ok), expect_told({"p72"}),
                      type(id::selected_name, ""), click(id::ok), expect_told({"p42"}),
                      click(id::cancel)}),
            "2");
}

TEST_F(SelectItemDlgTest, MarksTheLastItemOfTheName) {
  Names names(50, "X");
  names[30] = names[40] = "A";
  set_items(names);
  const auto state = [](int marked, bool is_seen) {
    return [=](FormDialog& dialog) {
      const auto* list = dialog.control<ClItemListCtrl>(id::selection_items);
      const QRect place = list->visualRect(list->model()->index(40, 0));
      EXPECT_EQ(list->current_row(), marked);
      EXPECT_EQ(list->viewport()->rect().contains(place.center()), is_seen);
    };
  };
  EXPECT_EQ(run("A", {state(40, true), tab_to(id::ok), state(40, true), click(id::cancel)}), "2");
  EXPECT_EQ(run("Y", {state(0, false), click(id::cancel)}), "2");
}

TEST_F(SelectItemDlgTest, IsNeverSeenWithoutItems) {
  main.items.clear();
  EXPECT_EQ(run("", {}), std::to_string(cancel));
  EXPECT_EQ(setup.told(), Names{});
}

}  // namespace
}  // namespace korvex::test
