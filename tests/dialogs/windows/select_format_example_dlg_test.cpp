#include "dialogs/windows/select_format_example_dlg.h"

#include <QListWidget>
#include <filesystem>

#include "dialogs/dialog_driver.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using dialog_result::cancel;
using dialog_result::ok;
using platform::Answer;

class SelectFormatExampleDlgTest : public DialogTest {
 protected:
  SelectFormatExampleDlgTest() { store("", "", ""); }

  // What the dialog comes to for a format: its result and the format then.
  std::pair<int, std::string> run(const Steps& story, const std::string& format = "%3U") {
    ClSelectFormatExampleDlg dialog(nullptr, messages, format);
    const int result = play(dialog, story);
    return {result, dialog.format()};
  }

  void store(const std::string& first, const std::string& second, const std::string& third) {
    for (const auto& [name, text] :
         {std::pair{"ListFmt1", first}, {"ListFmt2", second}, {"ListFmt3", third}}) {
      ASSERT_EQ(write_store_value(setup.store(), name, text), 0);
    }
  }

  Names stored() const {
    Names values;
    for (const char* name : {"ListFmt1", "ListFmt2", "ListFmt3"}) {
      std::string value = "missing";
      setup.store().read(name, value);
      values.push_back(value);
    }
    return values;
  }

  // The number of examples, the selected one, the text in the edit, and the usable buttons.
  static Step expect_state(const std::string& expected) {
    return [=](FormDialog& dialog) {
      const auto* list = dialog.control<QListWidget>(id::examples);
      EXPECT_EQ(std::to_string(list->count()) + " " + std::to_string(list->currentRow()) + " " +
                    text_of(dialog, id::example_format) +
                    (is_usable(dialog, id::add_example) ? " add" : "") +
                    (is_usable(dialog, id::delete_example) ? " delete" : ""),
                expected);
    };
  }

  ClColMain main;
  Messages messages{main};
};

TEST_F(SelectFormatExampleDlgTest, PicksAnExample) {
  const std::pair<int, std::string> picked = {ok, "%N"};
  EXPECT_EQ(run(steps(expect_state("9 0 %3U add"), row(id::examples, 4), click(id::ok))), picked);
  EXPECT_EQ(run(steps(row(id::examples, 4, true))), picked);
  EXPECT_EQ(run(steps(tab_to(id::examples), press("End"), press("Return"))).second, "%TS");
  EXPECT_EQ(run(steps(row(id::examples, 0), expect_state("9 0 %D add"), press("Esc"))).first,
            cancel);
  EXPECT_EQ(stored(), (Names{"", "", ""}));
}

TEST_F(SelectFormatExampleDlgTest, AddsOnceAndDeletesOnlyTheUsersOwn) {
  const auto refused = [this](const QString& format, const char* told) {
    return steps(type(id::example_format, format), click(id::add_example), expect_told({told}));
  };
  EXPECT_EQ(run(steps(click(id::add_example), expect_state("10 9 %3U add delete"),
                      click(id::add_example), expect_told({"i47"})) +
                refused("%D", "i47") + refused("", "w35") + refused("%5X", "w7") +
                refused(QString(256, 'x'), "w10") +
                steps(row(id::examples, 8), click(id::delete_example), expect_told({"i48"}),
                      row(id::examples, 9), click(id::delete_example), expect_state("9 8 %TS add"),
                      type(id::example_format, "'x'"), click(id::add_example), click(id::ok))),
            (std::pair<int, std::string>{ok, "'x'"}));
  EXPECT_EQ(stored(), (Names{"'x'", "", ""}));
  run(steps(row(id::examples, 9), click(id::delete_example), click(id::ok)));
  EXPECT_EQ(stored(), (Names{"", "", ""}));
}

TEST_F(SelectFormatExampleDlgTest, CancelAsksAboutChanges) {
  setup.interface.answers = {Answer::yes, Answer::no};
  EXPECT_EQ(run(steps(click(id::add_example), click(id::cancel), expect_told({"q107"}),
                      expect_state("10 9 %3U add delete"), press("Esc")))
                .first,
            cancel);
  EXPECT_EQ(setup.told(), Names{"q107"});
  EXPECT_EQ(stored(), (Names{"", "", ""}));
}

TEST_F(SelectFormatExampleDlgTest, AFailureToStoreKeepsItOpen) {
  const std::string config = setup.folder.file("config");
  setup.interface.answers = {Answer::ok, Answer::no};
  EXPECT_EQ(run(steps(click(id::add_example), then([&] {
                        std::filesystem::rename(config, config + "2");
                        write_file(config, "no folder");
                      }),
                      click(id::ok), expect_told({"w61"}), click(id::cancel)))
                .first,
            cancel);
  EXPECT_EQ(setup.told(), Names{"q107"});
}

}  // namespace
}  // namespace korvex::test
