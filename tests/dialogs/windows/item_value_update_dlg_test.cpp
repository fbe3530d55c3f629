#include "dialogs/windows/item_value_update_dlg.h"

#include <QLabel>
#include <QListWidget>
#include <filesystem>

#include "dialogs/dialog_driver.h"
#include "dialogs/rules/setup_fields.h"
#include "run/generate_data_file.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using dialog_result::cancel;
using dialog_result::ok;

class ItemValueUpdateDlgTest : public DialogTest {
 protected:
  ItemValueUpdateDlgTest() { write(); }

  int run(const Steps& story) {
    ClItemValueUpdateDlg dialog(nullptr, setup.control());
    return play(dialog, story);
  }

  void write() const { setup.write(three_items(), {.records = 1}); }

  // What the generator makes of the settings stored.
  std::string generated(const std::vector<std::int32_t>& items) const {
    const std::string control = setup.folder.file("short.ctl");
    setup.write_control({.records = 2, .items = items});
    std::filesystem::rename(setup.control(), control);
    write();
    ClGenerateDataFile generator;
    generator.main.control_path = control;
    EXPECT_EQ(generator.run(), 0);
    return read_file(setup.data());
  }

  static Step expect_item(const std::string& name, const std::string& description) {
    return [=](FormDialog& dialog) {
      EXPECT_EQ(text_of(dialog, id::update_name), name);
      EXPECT_EQ(dialog.control<QLabel>(id::update_description)->text().toStdString(), description);
    };
  }

  static Step expect_explained(const QString& fact) {
    return [=](FormDialog& dialog) {
      const QString tooltip = dialog.control(id::update_name)->toolTip();
      EXPECT_EQ(tooltip.isEmpty(), fact.isEmpty());
      EXPECT_TRUE(tooltip.contains(fact)) << tooltip.toStdString();
    };
  }

  static Step expect_fields(const std::string& format, const std::string& increment, bool usable) {
    return [=](FormDialog& dialog) {
      EXPECT_EQ(text_of(dialog, id::format), format);
      EXPECT_EQ(text_of(dialog, id::increment), increment);
      EXPECT_EQ(is_usable(dialog, id::start), usable);
      EXPECT_FALSE(is_usable(dialog, id::format));
    };
  }
};

TEST_F(ItemValueUpdateDlgTest, UpdatesTheItemThatWasBrowsedFor) {
  setup.save_settings({{.number = 1,
                        .item = {attribute::decimal, Flag::off, 2, 2, 0},
                        .texts = {"%2U", "5", "9", "1"}},
                       {.number = 3, .item = letters, .texts = {}}});
  EXPECT_EQ(
      run(steps(expect_item("A", "first"), expect_explained("Length: 2"),
                choose(id::type, number_of(type_entry::range)), expect_fields("%2U", "1", true),
                click(id::browse_items), row(id::selection_items, 2, true),
                expect_item("C", "first"), expect_explained("Length: 3"),
                expect_fields("", "1", false), choose(id::type, number_of(type_entry::range)),
                expect_fields("%3S", "1", true), click(id::custom_format), type(id::format, "%1S"),
                type(id::start, "K"), type(id::end, "L"), click(id::exceeded_repeat),
                click(id::ok))),
      ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(setup.outputs(), Names{});  // no data is generated
  EXPECT_EQ(generated({1, 2, 3}), "05,K,\n06,L,\n");

  // An item that is browsed for and nothing else gets the initial value.
  EXPECT_EQ(run(steps(click(id::browse_items), row(id::selection_items, 2), click(id::ok),
                      click(id::ok))),
            ok);
  EXPECT_EQ(generated({1, 3}), "05,,\n06,,\n");
}

TEST_F(ItemValueUpdateDlgTest, IsWorkedByTheKeyboardAlone) {
  EXPECT_EQ(run(press_in_turn("Alt+M Ctrl+A =B Alt+T Down Alt+C Alt+F =%1U Alt+S =3 Alt+E =4 Alt+P "
                              "Return")),
            ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(generated({2}), "3,\n4,\n");
}

TEST_F(ItemValueUpdateDlgTest, BeginsWithTheItemThatTheHostNames) {
  const std::pair<std::int32_t, const char*> cases[] = {
      {0, "A"}, {1, "A"}, {3, "C"}, {4, "A"}, {-1, "A"}};
  for (const auto& [position, name] : cases) {
    setup.write(three_items(), {.records = position});
    EXPECT_EQ(run(steps(expect_item(name, "first"), press("Esc"))), cancel);
  }
}

TEST_F(ItemValueUpdateDlgTest, AskForANameOfAnItem) {
  for (const auto& [name, told] : {std::pair{"", "p42"}, {"a", "p43"}}) {
    EXPECT_EQ(
        run(steps(
            type(id::update_name, "C"), expect_explained("Length: 3"), type(id::update_name, name),
            expect_explained(""),
            [](FormDialog& dialog) { QTest::mouseClick(dialog.control(id::type), Qt::LeftButton); },
            expect_told({told}), press("Esc"), choose(id::type, number_of(type_entry::range)),
            expect_told({told, told}), expect_fields("", "", false), click(id::ok),
            expect_told({told}), close_box())),
        cancel);
  }
  EXPECT_FALSE(std::filesystem::exists(setup.settings()));
}

TEST_F(ItemValueUpdateDlgTest, RefusalsKeepItOpen) {
  setup.write({{.null_allowed = 0},
               {.number = 2, .name = "T", .attributes = {attribute::time, Flag::off, 6, 6, 0}}});
  const Steps range = {choose(id::type, number_of(type_entry::range)), click(id::custom_format)};
  const Steps other = {type(id::update_name, "T")};
  const auto ends = [this](const Steps& entry, const Names& told) {
    EXPECT_EQ(run(entry + steps(click(id::ok), expect_told(told), click(id::cancel))), cancel);
  };
  ends({}, {"p65"});
  ends(range + steps(type(id::format, "")), {"p36"});
  ends(range + steps(type(id::format, "%5X")), {"p7"});
  EXPECT_TRUE(setup.last_text.ends_with("\nPlease check the format."));
  ends(range, {"p37"});
  ends(range + steps(type(id::start, "1")), {"p38"});
  ends(range + steps(type(id::start, "1"), type(id::end, "2"), type(id::increment, "")), {"p39"});
  ends(other + range + steps(type(id::format, "'x'")), {"p11"});
  EXPECT_FALSE(std::filesystem::exists(setup.settings()));
}

TEST_F(ItemValueUpdateDlgTest, KeepsTheExamplesInItsList) {
  const auto expect_list = [](const std::string& expected) {
    return [=](FormDialog& dialog) {
      const auto* list = dialog.control<QListWidget>(id::update_examples);
      EXPECT_EQ(std::to_string(list->count()) + " " + std::to_string(list->currentRow()) +
                    (is_usable(dialog, id::add_example) ? " add" : "") +
                    (is_usable(dialog, id::delete_example) ? " delete" : ""),
                expected);
    };
  };
  const auto stored = [this] {
    std::string value = "missing";
    setup.store().read("ListFmt1", value);
    return value;
  };
  ASSERT_EQ(write_store_value(setup.store(), "ListFmt1", ""), 0);
  const Steps open = {choose(id::type, number_of(type_entry::range)), click(id::custom_format)};
  const Steps close = {choose(id::type, number_of(type_entry::initial_value)), click(id::ok)};
  EXPECT_EQ(run(open +
                steps(expect_list("9 0 add"), type(id::format, "%7U"), click(id::add_example),
                      expect_list("10 0 add delete"), click(id::add_example), expect_told({"i47"}),
                      row(id::update_examples, 3, true), expect_text(id::format, "%S"),
                      press("Down"), press("Return"), expect_text(id::format, "%N")) +
                close),
            ok);
  EXPECT_EQ(stored(), "%7U");
  EXPECT_EQ(
      run(open +
          steps(row(id::update_examples, 9), click(id::delete_example), expect_list("9 8 add")) +
          close),
      ok);
  EXPECT_EQ(stored(), "") << "a deleted example stays deleted";
  EXPECT_EQ(setup.told(), Names{});
}

TEST_F(ItemValueUpdateDlgTest, IsNeverSeenWhenLoadingFails) {
  setup.save_settings({{.item = letters, .texts = {}}});
  EXPECT_EQ(run({}), cancel);
  EXPECT_EQ(setup.told(), Names{"p70"});
  std::filesystem::remove(setup.control());
  EXPECT_EQ(run({}), cancel);
  EXPECT_EQ(setup.told(), Names{"p2"});
}

}  // namespace
}  // namespace korvex::test
