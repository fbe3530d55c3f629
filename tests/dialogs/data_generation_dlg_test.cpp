#include "dialogs/data_generation_dlg.h"

#include <cerrno>
#include <filesystem>

#include "dialogs/dialog_driver.h"
#include "dialogs/dialog_setup.h"
#include "dialogs/setup_fields.h"
#include "support/settings_bytes.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using platform::Answer;

constexpr int ok = dialog_result::ok;
constexpr int cancel = dialog_result::cancel;

constexpr int format_column = 2;
constexpr int level_column = 6;
constexpr int count_column = 7;

class DataGenerationDlgTest : public testing::Test {
 protected:
  int run(const Steps& story, std::int32_t mode = run_mode::data_file_dialog,
          std::int32_t quotation_lock = 0) {
    ClDataGenerationDlg dialog(nullptr, setup.control(), mode, quotation_lock);
    return play(dialog, story);
  }

  // A column of the list as text, an entry a row.
  Step expect_column(int column, const Names& expected) {
    return [=](FormDialog& dialog) {
      Names found;
      for (std::size_t i = 0; i < expected.size(); ++i) {
        found.push_back(cell(dialog, id::items, static_cast<int>(i), column));
      }
      EXPECT_EQ(found, expected);
    };
  }

  Step expect_told(const Names& expected) {
    return [this, expected](FormDialog&) { EXPECT_EQ(setup.told(), expected); };
  }

  static Steps repeat(int item, const QString& level, const QString& count) {
    return {row(id::items, item), click(id::repeats), type(id::level, level),
            type(id::count, count), click(id::update)};
  }

  static Steps change_level(int item, const QString& level) {
    return {row(id::items, item), type(id::level, level), click(id::update)};
  }

  DialogSetup setup;
};

TEST_F(DataGenerationDlgTest, SetsUpThreeItemsWithRepeatsAndGenerates) {
  setup.write(three_items(), {.records = 6});
  const Steps story = {
      expect_column(format_column, {"%2U", "%2U", "%3S"}),  // the defaults of a new file
      click(id::setup),
      type(id::end, "2"),
      click(id::store_format),
      click(id::next_item),
      type(id::start, "5"),
      type(id::end, "6"),
      click(id::store_format),
      click(id::next_item),
      type(id::format, "'x'%1S"),
      type(id::start, "A"),
      type(id::end, "B"),
      click(id::ok),
  };
  const Steps rest = {expect_column(level_column, {"1", "2", ""}),
                      expect_column(count_column, {"1", "2", ""}), click(id::ok)};
  EXPECT_EQ(run(story + repeat(0, "1", "1") + repeat(1, "2", "2") + rest), ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(read_file(setup.data()),
            "01,05,xA,\n01,06,xB,\n01,05,xA,\n01,06,xB,\n02,05,xA,\n02,06,xB,\n");
  EXPECT_EQ(setup.outputs(), (Names{"out.csv", "out.log"}));
  EXPECT_FALSE(setup.interface.offered_cancel);
}

TEST_F(DataGenerationDlgTest, IsWorkedByTheKeyboardAlone) {
  setup.write(three_items(), {.records = 2});
  const Steps story = {
      press(Qt::Key_Return),  // on a row
      alt(Qt::Key_S),
      keys("7"),
      alt(Qt::Key_E),
      keys("8"),
      press(Qt::Key_Return),
      press(Qt::Key_PageDown, Qt::ControlModifier),
      alt(Qt::Key_T),
      press(Qt::Key_Up),
      press(Qt::Key_Return),  // the initial value
      alt(Qt::Key_N),
      alt(Qt::Key_O),
      keys("%1S"),
      alt(Qt::Key_S),
      keys("K"),
      alt(Qt::Key_E),
      keys("L"),
      tab_to(id::increment),
      keys("1"),
      press(Qt::Key_Up),
      press(Qt::Key_Down),
      alt(Qt::Key_P),
      alt(Qt::Key_U),
      tab_to(id::ok),
      press(Qt::Key_Space),
      alt(Qt::Key_R),
      alt(Qt::Key_L),
      keys("1"),
      alt(Qt::Key_N),
      keys("3"),
      press(Qt::Key_Return),  // updates
      press(Qt::Key_Home),
      press(Qt::Key_Down),
      alt(Qt::Key_D),
      expect_column(format_column, {"%2U", "", "%1S"}),
      expect_column(count_column, {"", "", "3"}),
      press(Qt::Key_Return, Qt::ControlModifier),  // OK
  };
  EXPECT_EQ(run(story), ok);
  EXPECT_EQ(setup.told(), Names{});
  EXPECT_EQ(read_file(setup.data()), "07,K,\n08,L,\n");
}

TEST_F(DataGenerationDlgTest, NothingIsWrittenUnlessByOk) {
  setup.write();
  setup.save_settings({{.number = 2, .item = {4, 0, 2, 2, 0}, .texts = {"%1U", "1", "9", "1"}}});
  const std::string before = read_file(setup.settings());
  for (const Step& end : {click(id::cancel), press(Qt::Key_Escape), close_box()}) {
    EXPECT_EQ(run({row(id::items, 1), click(id::setup), type(id::end, "5"), click(id::ok),
                   click(id::repeats), click(id::update), click(id::delete_settings),
                   expect_column(format_column, {"", "", ""}), end}),
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
  const std::string list = setup.folder.file("list");
  write_file(list, "1\n");
  setup.interface.chosen_file = list;

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
      {{then([=] { std::filesystem::remove(list); })}, "w114", "\nC : third", 2},
      {{then([=] { write_file(list, "1\n"); })}, "w108", "repeat.", 2},
      {change_level(0, "1"), "w109", " is 1.", 0},
      {{row(id::items, 1), click(id::repeats)}, "q66", "Item Name: D ", 3, Answer::no},
      {{}, "q66", "Item Name: D ", 3, Answer::yes},
  };
  Steps story = {row(id::items, 2),
                 click(id::setup),
                 choose(id::type, type_entry::enumeration),
                 click(id::select_file),
                 click(id::ok),
                 row(id::items, 3),
                 click(id::delete_settings),
                 row(id::items, 4),
                 click(id::delete_settings),
                 then([=] { write_file(list, "1\nx\n"); })};
  for (const Stage& stage : stages) {
    const Step expect = [this, stage](FormDialog& dialog) {
      EXPECT_EQ(dialog.control<QAbstractItemView>(id::items)->currentIndex().row(), stage.row)
          << stage.told;
      EXPECT_EQ(setup.told(), Names{stage.told});
      EXPECT_TRUE(setup.last_text.ends_with(stage.end)) << setup.last_text;
      EXPECT_FALSE(std::filesystem::exists(setup.settings()));
    };
    const bool is_last = &stage == std::end(stages) - 1;
    story = story + stage.mend +
            Steps{then([this, stage] { setup.interface.answers = {stage.answer}; }), click(id::ok)};
    if (!is_last) story.push_back(expect);
  }
  EXPECT_EQ(run(story, run_mode::settings_only), ok);
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
    Names outputs;
    bool leaves_file;
  };
  const Case cases[] = {
      {"all deleted, and the file", true, Answer::yes, "", ok, {"q44"}, {}, false},
      {"all deleted, the file kept", true, Answer::no, "", ok, {"q44"}, {}, true},
      {"nothing to save", false, Answer::ok, "", cancel, {}, {}, false},
      {"no place for the data", false, Answer::ok, "/none/x.csv", cancel, {"p2"}, {}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    DialogSetup each;
    each.write({{}}, {.data = c.data});
    if (c.has_file)
      each.save_settings({{.item = {4, 0, 2, 2, 0}, .texts = {"%1U", "1", "9", "1"}}});
    each.interface.answers = {c.answer};
    ClDataGenerationDlg dialog(nullptr, each.control(), run_mode::data_file_dialog, 0);
    const Steps deletion = {click(id::delete_settings)};
    EXPECT_EQ(play(dialog, (*c.data == '\0' ? deletion : Steps{}) + Steps{click(id::ok)}),
              c.result);
    EXPECT_EQ(each.told(), c.told);
    EXPECT_EQ(each.outputs(), c.outputs);
    EXPECT_EQ(std::filesystem::exists(each.settings()), c.leaves_file);
  }
}

TEST_F(DataGenerationDlgTest, AFullDiskKeepsItOpenAndOtherFailuresDoNot) {
  setup.write();
  std::optional<WriteCalls> disk;
  EXPECT_EQ(run({then([&] { disk.emplace(ENOSPC); }), click(id::ok), expect_told({"p27"}),
                 then([&] { disk.reset(); }), click(id::ok)}),
            ok);
  setup.write({{}});
  std::filesystem::remove(setup.settings());
  EXPECT_EQ(run({then([&] { disk.emplace(EIO); }), click(id::ok)}), cancel);
  disk.reset();
  EXPECT_EQ(setup.told(), Names{"p26"});
}

TEST_F(DataGenerationDlgTest, AWriteProtectedFileIsReplacedOnlyWhenTheUserSaysSo) {
  setup.write({{}});
  setup.save_settings({{.item = {4, 0, 2, 2, 0}, .texts = {"%1U", "1", "9", "1"}}});
  const std::string before = read_file(setup.settings());
  std::filesystem::permissions(setup.settings(), std::filesystem::perms::owner_read);
  const auto answer = [this](Answer given) {
    return then([this, given] { setup.interface.answers = {given}; });
  };
  const std::string question =
      "qThe Format Information file is write-protected.\nReplace it?\n" + setup.settings();
  EXPECT_EQ(run({click(id::setup), type(id::end, "5"), click(id::ok), answer(Answer::no),
                 click(id::ok), expect_told({question}),
                 then([&] { EXPECT_TRUE(same_bytes(before, read_file(setup.settings()))); }),
                 answer(Answer::yes), click(id::ok)}),
            ok);
  EXPECT_EQ(setup.told(), Names{question});
  EXPECT_EQ(read_file(setup.data()), "1,\n2,\n3,\n");
}

TEST_F(DataGenerationDlgTest, UpdateTakesWholeNumbersThatAreNotZero) {
  setup.write();
  struct Case {
    const char* level;
    const char* count;
    std::string told;
    int focus;  // the number that is to be typed again
  };
  const std::string no_number = "wPlease enter a positive integer.";
  const std::string too_large = "wPlease enter an integer between 0 and 2147483647.";
  const Case cases[] = {
      {"0", "1", "w102", id::level},
      {"1", "0", "w103", id::count},
      {"x", "1", no_number, id::level},
      {"-1", "1", no_number, id::level},
      {"2147483648", "1", too_large, id::level},
      {"x", "", no_number, id::count},
  };
  Steps story = {click(id::repeats)};
  for (const Case& c : cases) {
    story = story + Steps{type(id::level, c.level),
                          type(id::count, c.count),
                          click(id::update),
                          expect_told({c.told}),
                          expect_column(level_column, {"", ""}),
                          [c](FormDialog& dialog) {
                            EXPECT_TRUE(dialog.control(c.focus)->hasFocus());
                            EXPECT_EQ(edit_of(dialog, c.focus)->selectedText().toStdString(),
                                      text_of(dialog, c.focus));
                          }};
  }
  const auto expect_proposal = [](const char* level) {
    return [level](FormDialog& dialog) {
      EXPECT_EQ(text_of(dialog, id::level), level);
      EXPECT_EQ(text_of(dialog, id::count), "1");
    };
  };
  // The next level is proposed, and the first one where no next is left.
  story = story + Steps{type(id::level, "3"),
                        type(id::count, "1"),
                        click(id::update),
                        row(id::items, 1),
                        click(id::repeats),
                        expect_proposal("4"),
                        type(id::level, "2147483647"),
                        click(id::update),
                        row(id::items, 2),
                        click(id::repeats),
                        expect_proposal("1"),
                        expect_column(level_column, {"3", "2147483647", ""}),
                        click(id::cancel)};
  EXPECT_EQ(run(story), cancel);
  EXPECT_EQ(setup.told(), Names{});
}

TEST_F(DataGenerationDlgTest, OffersWhatTheSettingsOfTheRowAllow) {
  setup.write(three_items(), {.layout_kind = 2});
  setup.save_settings({{.number = 1, .item = {4, 0, 2, 2, 0}, .texts = {}},
                       {.number = 2, .item = {4, 0, 2, 2, 0}, .texts = {"'12'", "", "", ""}}},
                      2);
  const auto expect_usable = [](bool repeats, bool deletion) {
    return [=](FormDialog& dialog) {
      EXPECT_EQ(is_usable(dialog, id::repeats), repeats);
      EXPECT_EQ(is_usable(dialog, id::delete_settings), deletion);
      EXPECT_FALSE(is_usable(dialog, id::update));
      for (const int hidden :
           {id::quotation, id::repeat_only, id::record_count, id::predicted_size}) {
        EXPECT_FALSE(dialog.control(hidden)->isVisible());
      }
    };
  };
  EXPECT_EQ(
      run({expect_usable(false, true), expect_column(format_column, {"Init Null", "'12'", ""}),
           row(id::items, 1), expect_usable(false, true), row(id::items, 2),
           expect_usable(false, false), click(id::cancel)}),
      cancel);
}

// The repeat of an item that has lost its changing values still counts.
TEST_F(DataGenerationDlgTest, ARepeatWithoutValuesCanBeTakenAway) {
  setup.write({{}});
  const auto expect_repeats = [](bool ticked, bool usable) {
    return [=](FormDialog& dialog) {
      EXPECT_EQ(dialog.control<QAbstractButton>(id::repeats)->isChecked(), ticked);
      EXPECT_EQ(is_usable(dialog, id::repeats), usable);
      EXPECT_FALSE(is_usable(dialog, id::update));
    };
  };
  EXPECT_EQ(run(repeat(0, "1", "3") +
                Steps{click(id::setup), choose(id::type, type_entry::initial_value), click(id::ok),
                      expect_column(count_column, {"3"}), expect_repeats(true, true),
                      click(id::repeats), expect_column(count_column, {""}),
                      expect_repeats(false, false), click(id::cancel)}),
            cancel);
}

TEST_F(DataGenerationDlgTest, ColumnsOfAnEmptySettingsFileAreNullWhereTheHostAsksForIt) {
  struct Case {
    std::int32_t layout_kind;
    std::int32_t null_default;
    Names formats;
  };
  const Case cases[] = {
      {1, 1, {"", ""}}, {2, 0, {"", ""}}, {2, 1, {"Init Null", ""}}, {3, 1, {"Init Null", ""}}};
  for (const Case& c : cases) {
    setup.write({{}, {.number = 2, .null_allowed = 0}},
                {.layout_kind = c.layout_kind, .null_default = c.null_default});
    std::filesystem::remove(setup.settings());
    setup.save_settings({{}}, c.layout_kind, 0, 2);  // of another level
    EXPECT_EQ(run({expect_column(format_column, c.formats), click(id::cancel)}), cancel);
  }
}

TEST_F(DataGenerationDlgTest, TheLockFixesTheQuotation) {
  for (const std::int32_t lock : {0, 1}) {
    setup.write({{.attributes = letters}}, {.records = 1});
    setup.save_settings({{.item = letters, .texts = {"%1S", "A", "Z", "1"}}}, 1, 1);
    EXPECT_EQ(run({click(id::ok)}, run_mode::data_file_dialog, lock), ok);
    EXPECT_EQ(read_file(setup.data()), lock == 1 ? "A,\n" : "\"A\",\n");
  }
}

TEST_F(DataGenerationDlgTest, IsNeverSeenWhenLoadingFails) {
  struct Case {
    std::string told;
    std::function<void()> spoil;
  };
  const Case cases[] = {
      {"w2", [&] { std::filesystem::remove(setup.control()); }},
      {"w3", [&] { std::filesystem::resize_file(setup.control(), 1100); }},
      {"w3", [&] { std::filesystem::resize_file(setup.settings(), 100); }},
      {"p70", [&] { setup.write({{.attributes = letters}}); }},
  };
  for (const Case& c : cases) {
    setup.write({{}});
    setup.save_settings({{.item = {4, 0, 2, 2, 0}, .texts = {"%1U", "1", "9", "1"}}});
    c.spoil();
    EXPECT_EQ(run({}), cancel);
    EXPECT_EQ(setup.told(), Names{c.told});
    std::filesystem::remove(setup.settings());
  }
}

TEST_F(DataGenerationDlgTest, NamesItemsWithImpossibleDigitsAndGoesOn) {
  setup.write({{.name = cp932("品番"), .attributes = {4, 0, -1, -1, 0}}, {.number = 2}});
  EXPECT_EQ(run({click(id::cancel)}), cancel);
  EXPECT_EQ(setup.told(), Names{"w75"});
  EXPECT_TRUE(setup.last_text.ends_with("品番 ")) << setup.last_text;
}

TEST_F(DataGenerationDlgTest, WithoutItemsTheCommandsDoNothing) {
  setup.write({});
  EXPECT_EQ(
      run({click(id::setup), alt(Qt::Key_D), alt(Qt::Key_R), alt(Qt::Key_U), click(id::cancel)}),
      cancel);
  EXPECT_EQ(setup.told(), Names{});
}

}  // namespace
}  // namespace korvex::test
