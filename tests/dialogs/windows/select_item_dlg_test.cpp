#include "dialogs/windows/select_item_dlg.h"

#include "dialogs/dialog_driver.h"
#include "dialogs/widgets/item_list_ctrl.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using dialog_result::cancel;
using dialog_result::ok;

class SelectItemDlgTest : public DialogTest {
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

  ClColMain main;
  Messages messages{main};
};

TEST_F(SelectItemDlgTest, PicksAnItem) {
  const auto named = [](const QString& name) { return type(id::selected_name, name); };
  const std::string second = "1 1 " + cp932("品名");
  const std::tuple<const char*, Steps, std::string> cases[] = {
      {"", {click(id::ok)}, "1 0 A"},
      {"B", {row(id::selection_items, 1), click(id::ok)}, second},
      {"B", {row(id::selection_items, 0), click(id::ok)}, "1 0 A"},
      {"B", {row(id::selection_items, 0, true)}, "1 0 A"},  // a double click
      {"", {row(id::selection_items, 2, true)}, "1 2 B"},
      {"", {named("品名"), press("Return")}, second},
      {"", {press("Down Down"), press("Return")}, "1 2 B"},
      // Found by typing, and the one after it.
      {"", {named("品"), press("Down"), press("Return")}, second},
      {"", {named("b"), press("Down Down"), click(id::ok)}, "1 0 A"},
      // The first of two of one name.
      {"A", {row(id::selection_items, 3), click(id::ok)}, "1 0 A"},
      {"B", {row(id::selection_items, 3), press("Esc")}, "2"},
  };
  for (const auto& [name, story, picked] : cases) {
    EXPECT_EQ(run(name, story), picked) << &name - &std::get<0>(cases[0]);
  }
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
