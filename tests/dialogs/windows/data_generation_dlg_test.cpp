#include "dialogs/windows/data_generation_dlg.h"

#include <cerrno>
#include <filesystem>

#include "dialogs/dialog_driver.h"
#include "dialogs/rules/setup_fields.h"
#include "support/settings_bytes.h"
#include "support/table.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using dialog_result::cancel;
using dialog_result::ok;
using platform::Answer;

constexpr int format_column = 2;
constexpr int level_column = 6;
constexpr int count_column = 7;

const SavedItem two_digits = {.item = {attribute::decimal, Flag::off, 2, 2, 0},
                              .texts = {"%1U", "1", "9", "1"}};

class DataGenerationDlgTest : public DialogTest {
 protected:
  int run(const Steps& story, RunMode mode = run_mode::data_file_dialog,
          std::int32_t quotation_lock = 0) {
    ClDataGenerationDlg dialog(nullptr, setup.control(), mode, quotation_lock);
    return play(dialog, story);
  }

  // A column of the list as text, an entry a row.
  static Step expect_column(int column, const Names& expected) {
    return [=](FormDialog& dialog) {
      Names found;
      for (std::size_t i = 0; i < expected.size(); ++i) {
        found.push_back(cell(dialog, id::items, static_cast<int>(i), column));
      }
      EXPECT_EQ(found, expected);
    };
  }

  static Steps repeat(int item, const QString& level, const QString& count) {
    return {row(id::items, item), click(id::repeats), type(id::level, level),
            type(id::count, count), click(id::update)};
  }

  static Steps change_level(int item, const QString& level) {
    return {row(id::items, item), type(id::level, level), click(id::update)};
  }
};

TEST_F(DataGenerationDlgTest, SetsUpThreeItemsWithRepeatsAndGenerates) {
  setup.write(three_items(), {.records = 6});
  const Steps story =
      steps(expect_column(format_column, {"%2U", "%2U", "%3S"}),  // the defaults of a new file
            click(id::setup), type(id::end, "2"), click(id::store_format), click(id::next_item),
            type(id::start, "5"), type(id::end, "6"), click(id::store_format), click(id::next_item),
            type(id::format, "'x'%1S"), type(id::start, "A"), type(id::end, "B"), click(id::ok));
  const Steps rest = steps(expect_column(level_column, {"1", "2", ""}),
                           expect_column(count_column, {"1", "2", ""}), click(id::ok));
  EXPECT_EQ(run(story + repeat(0, "1", "1") + repeat(1, "2", "2") + rest), ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(read_file(setup.data()),
            "01,05,xA,\n01,06,xB,\n01,05,xA,\n01,06,xB,\n02,05,xA,\n02,06,xB,\n");
  EXPECT_EQ(setup.outputs(), (Names{"out.csv", "out.log"}));
  EXPECT_FALSE(setup.interface.offered_cancel);
}

TEST_F(DataGenerationDlgTest, IsWorkedByTheKeyboardAlone) {
  setup.write(three_items(), {.records = 2});
  // A row's setup, the initial value of the second one, a format and values for the third.
  const Steps setups =
      press_in_turn(
          "Return Alt+S =7 Alt+E =8 Return Ctrl+PgDown Alt+T Up Return Alt+N Alt+O =%1S "
          "Alt+S =K Alt+E =L") +
      steps(tab_to(id::increment)) + press_in_turn("=1 Up Down Alt+P Alt+U") +
      steps(tab_to(id::ok)) + press_in_turn("Space");
  // A repeat, and the second row's settings deleted.
  const Steps repeats = press_in_turn("Alt+R Alt+L =1 Alt+N =3 Return Home Down Alt+D") +
                        steps(expect_column(format_column, {"%2U", "", "%1S"}),
                              expect_column(count_column, {"", "", "3"}), press("Ctrl+Return"));
  EXPECT_EQ(run(setups + repeats), ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(read_file(setup.data()), "07,K,\n08,L,\n");
}

TEST_F(DataGenerationDlgTest, NothingIsWrittenUnlessByOk) {
  setup.write();
  SavedItem second = two_digits;
  second.number = 2;
  setup.save_settings({second});
  const std::string before = read_file(setup.settings());
  for (const Step& end : {click(id::cancel), press("Esc"), close_box()}) {
    EXPECT_EQ(run(steps(row(id::items, 1), click(id::setup), type(id::end, "5"), click(id::ok),
                        click(id::repeats), click(id::update), click(id::delete_settings),
                        expect_column(format_column, {"", "", ""}), end)),
              cancel);
    EXPECT_EQ(setup.told(), Names{});
    EXPECT_TRUE(same_bytes(before, read_file(setup.settings())));
    EXPECT_EQ(setup.outputs(), Names{});
  }
}

// One thing after the other is mended until the settings are saved.
TEST_F(DataGenerationDlgTest, OkComplainsInItsOrder) {
  ASSERT_EQ(write_store_value(setup.store(), "RepeatLevelNumMax", "1"), 0);
  setup.write({{},
               {.number = 2, .name = "B"},
               {.number = 3, .name = "C", .description = "third"},
               {.number = 4, .name = "D", .null_allowed = 0},
               {.number = 5, .name = "E", .null_allowed = 0}});
  const std::string path = list("1\n");
  struct Stage {
    Steps mend;
    std::string told;
    std::string end;
    int row;  // that is current then
    Answer answer = Answer::ok;
  };
  const Stage stages[] = {
      {repeat(0, "2", "1") + repeat(1, "2", "1"), "w104", "\nA : first", 0},
      {change_level(1, "3"),
       "w2 line of a enum file The numeric value data Item includes a "
       "non-numeric value.\nC : third",
       "", 2},
      {{then([=] { std::filesystem::remove(path); })}, "w114", "\nC : third", 2},
      {{then([=] { write_file(path, "1\n"); })}, "w108", "repeat.", 2},
      {change_level(0, "1"), "w109", " is 1.", 0},
      {{row(id::items, 1), click(id::repeats)}, "q66", "Item Name: D ", 3, Answer::no},
  };
  Steps story = steps(
      row(id::items, 2), click(id::setup), choose(id::type, number_of(type_entry::enumeration)),
      click(id::select_file), click(id::ok), row(id::items, 3), click(id::delete_settings),
      row(id::items, 4), click(id::delete_settings), then([=] { write_file(path, "1\nx\n"); }));
  for (const Stage& stage : stages) {
    const Step expect = [this, stage](FormDialog& dialog) {
      EXPECT_EQ(dialog.control<QAbstractItemView>(id::items)->currentIndex().row(), stage.row)
          << stage.told;
      EXPECT_EQ(setup.told(), Names{stage.told});
      EXPECT_TRUE(setup.last_text.ends_with(stage.end)) << setup.last_text;
      EXPECT_FALSE(std::filesystem::exists(setup.settings()));
    };
    story = story + stage.mend + steps(answer(stage.answer), click(id::ok), expect);
  }
  EXPECT_EQ(run(story + steps(answer(Answer::yes), click(id::ok)), run_mode::settings_only), ok);
  EXPECT_EQ(setup.told(), Names{"q66"});
  EXPECT_EQ(read_file(setup.settings()).substr(header_size, level_size),
            level_bytes(1, 76, 3, 3 * (column_size + element_size), 3, 1));
}

TEST_F(DataGenerationDlgTest, EndsByWhatSavingAndGeneratingCameTo) {
  struct Case {
    const char* what;
    bool has_file;  // of which all settings are deleted
    Answer answer;
    const char* data;
    int result;
    Names told;
    bool leaves_file;
  };
  const Case cases[] = {
      {"all deleted, and the file", true, Answer::yes, "", ok, {"q44"}, false},
      {"all deleted, the file kept", true, Answer::no, "", ok, {"q44"}, true},
      {"nothing to save", false, Answer::ok, "", cancel, {}, false},
      {"no place for the data", false, Answer::ok, "/none/x.csv", cancel, {"p2"}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    setup.write({{}}, {.data = c.data});
    std::filesystem::remove(setup.settings());
    if (c.has_file) setup.save_settings({two_digits});
    setup.interface.answers = {c.answer};
    const Steps deletion = {click(id::delete_settings)};
    EXPECT_EQ(run((*c.data == '\0' ? deletion : Steps{}) + steps(click(id::ok))), c.result);
    EXPECT_EQ(setup.told(), c.told);
    EXPECT_EQ(setup.outputs(), Names{});
    EXPECT_EQ(std::filesystem::exists(setup.settings()), c.leaves_file);
    setup.interface.answers.clear();
  }
}

TEST_F(DataGenerationDlgTest, AFullDiskKeepsItOpenAndOtherFailuresDoNot) {
  setup.write();
  std::optional<WriteCalls> disk;
  EXPECT_EQ(run(steps(then([&] { disk.emplace(ENOSPC); }), click(id::ok), expect_told({"p27"}),
                      then([&] { disk.reset(); }), click(id::ok))),
            ok);
  setup.write({{}});
  std::filesystem::remove(setup.settings());
  EXPECT_EQ(run(steps(then([&] { disk.emplace(EIO); }), click(id::ok))), cancel);
  disk.reset();
  EXPECT_EQ(setup.told(), Names{"p26"});
}

TEST_F(DataGenerationDlgTest, AWriteProtectedFileIsReplacedOnlyWhenTheUserSaysSo) {
  setup.write({{}});
  setup.save_settings({two_digits});
  const std::string before = read_file(setup.settings());
  std::filesystem::permissions(setup.settings(), std::filesystem::perms::owner_read);
  const std::string question =
      "qThe Format Information file is write-protected.\nReplace it?\n" + setup.settings();
  EXPECT_EQ(run(steps(click(id::setup), type(id::end, "5"), click(id::ok), answer(Answer::no),
                      click(id::ok), expect_told({question}),
                      then([&] { EXPECT_TRUE(same_bytes(before, read_file(setup.settings()))); }),
                      answer(Answer::yes), click(id::ok))),
            ok);
  EXPECT_EQ(setup.told(), Names{question});
  EXPECT_EQ(read_file(setup.data()), "1,\n2,\n3,\n");
}

TEST_F(DataGenerationDlgTest, UpdateTakesWholeNumbersThatAreNotZero) {
  setup.write();
  Steps story = steps(click(id::repeats));
  // Level, count, what is told and the number that is to be typed again.
  for (const auto& [level, count, told, wrong] : table<4>(R"(
      0          | 1 | w102                                               | level
      1          | 0 | w103                                               | count
      x          | 1 | wPlease enter a positive integer.                  | level
      -1         | 1 | wPlease enter a positive integer.                  | level
      2147483648 | 1 | wPlease enter an integer between 0 and 2147483647. | level
      x          |   | wPlease enter a positive integer.                  | count
  )")) {
    const int focus = wrong == "level" ? id::level : id::count;
    story = story + steps(type(id::level, QString::fromStdString(level)),
                          type(id::count, QString::fromStdString(count)), click(id::update),
                          expect_told({told}), expect_column(level_column, {"", ""}),
                          [focus](FormDialog& dialog) {
                            EXPECT_TRUE(dialog.control(focus)->hasFocus());
                            EXPECT_EQ(edit_of(dialog, focus)->selectedText().toStdString(),
                                      text_of(dialog, focus));
                          });
  }
  // The next level is proposed, and the first one where no next is left.
  story =
      story + steps(type(id::level, "3"), type(id::count, "1"), click(id::update),
                    row(id::items, 1), click(id::repeats), expect_text(id::level, "4"),
                    expect_text(id::count, "1"), type(id::level, "2147483647"), click(id::update),
                    row(id::items, 2), click(id::repeats), expect_text(id::level, "1"),
                    expect_column(level_column, {"3", "2147483647", ""}), click(id::cancel));
  EXPECT_EQ(run(story), cancel);
  EXPECT_EQ(setup.told(), Names{});
}

TEST_F(DataGenerationDlgTest, OffersWhatTheSettingsOfTheRowAllow) {
  const std::vector<int> commands = {id::repeats, id::delete_settings, id::update};
  setup.write(three_items(), {.layout_kind = 2});
  setup.save_settings({{.number = 1, .item = {attribute::decimal, Flag::off, 2, 2, 0}, .texts = {}},
                       {.number = 2,
                        .item = {attribute::decimal, Flag::off, 2, 2, 0},
                        .texts = {"'12'", "", "", ""}}},
                      2);
  const Step expect_hidden = [](FormDialog& dialog) {
    for (const int hidden :
         {id::quotation, id::repeat_only, id::record_count, id::predicted_size}) {
      EXPECT_FALSE(dialog.control(hidden)->isVisible());
    }
  };
  EXPECT_EQ(run(steps(expect_usable(commands, {id::delete_settings}), expect_hidden,
                      expect_column(format_column, {"Init Null", "'12'", ""}), row(id::items, 1),
                      expect_usable(commands, {id::delete_settings}), row(id::items, 2),
                      expect_usable(commands, {}), click(id::cancel))),
            cancel);
  // The repeat of an item that has lost its changing values still counts, and can be taken away.
  setup.write({{}});
  std::filesystem::remove(setup.settings());
  const auto expect_ticked = [](bool ticked) {
    return [ticked](FormDialog& dialog) {
      EXPECT_EQ(dialog.control<QAbstractButton>(id::repeats)->isChecked(), ticked);
    };
  };
  EXPECT_EQ(run(repeat(0, "1", "3") +
                steps(click(id::setup), choose(id::type, number_of(type_entry::initial_value)),
                      click(id::ok), expect_column(count_column, {"3"}), expect_ticked(true),
                      expect_usable({id::repeats, id::update}, {id::repeats}), click(id::repeats),
                      expect_column(count_column, {""}), expect_ticked(false),
                      expect_usable({id::repeats, id::update}, {}), click(id::cancel))),
            cancel);
}

TEST_F(DataGenerationDlgTest, ColumnsOfAnEmptySettingsFileAreNullWhereTheHostAsksForIt) {
  // Layout kind, what the host asks for, and the format of a column that may be NULL.
  const std::tuple<std::int32_t, std::int32_t, const char*> cases[] = {
      {1, 1, ""}, {2, 0, ""}, {2, 1, "Init Null"}, {3, 1, "Init Null"}};
  for (const auto& [layout_kind, null_default, format] : cases) {
    setup.write({{}, {.number = 2, .null_allowed = 0}},
                {.layout_kind = layout_kind, .null_default = null_default});
    std::filesystem::remove(setup.settings());
    setup.save_settings({{}}, layout_kind, 0, 2);  // of another level
    EXPECT_EQ(run(steps(expect_column(format_column, {format, ""}), click(id::cancel))), cancel);
  }
}

TEST_F(DataGenerationDlgTest, TheLockFixesTheQuotation) {
  for (const std::int32_t lock : {0, 1}) {
    setup.write({{.attributes = letters}}, {.records = 1});
    setup.save_settings({{.item = letters, .texts = {"%1S", "A", "Z", "1"}}}, 1, 1);
    EXPECT_EQ(run(steps(click(id::ok)), run_mode::data_file_dialog, lock), ok);
    EXPECT_EQ(read_file(setup.data()), lock == 1 ? "A,\n" : "\"A\",\n");
  }
}

TEST_F(DataGenerationDlgTest, IsNeverSeenWhenLoadingFails) {
  const std::pair<std::string, std::function<void()>> cases[] = {
      {"w2", [&] { std::filesystem::remove(setup.control()); }},
      {"w3", [&] { std::filesystem::resize_file(setup.control(), 1100); }},
      {"w3", [&] { std::filesystem::resize_file(setup.settings(), 100); }},
      {"p70", [&] { setup.write({{.attributes = letters}}); }},
  };
  for (const auto& [told, spoil] : cases) {
    setup.write({{}});
    setup.save_settings({two_digits});
    spoil();
    EXPECT_EQ(run({}), cancel);
    EXPECT_EQ(setup.told(), Names{told});
    std::filesystem::remove(setup.settings());
  }
  // Items with impossible digits are named.
  setup.write({{.name = cp932("品番"), .attributes = {attribute::decimal, Flag::off, -1, -1, 0}},
               {.number = 2}});
  EXPECT_EQ(run(steps(click(id::cancel))), cancel);
  EXPECT_EQ(setup.told(), Names{"w75"});
  EXPECT_TRUE(setup.last_text.ends_with("品番 ")) << setup.last_text;
  // Without items the commands do nothing.
  setup.write({});
  EXPECT_EQ(
      run(steps(click(id::setup)) + press_in_turn("Alt+D Alt+R Alt+U") + steps(click(id::cancel))),
      cancel);
  EXPECT_EQ(setup.told(), Names{});
}

}  // namespace
}  // namespace korvex::test
