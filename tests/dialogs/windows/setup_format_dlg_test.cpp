#include "dialogs/windows/setup_format_dlg.h"

#include <QToolTip>
#include <filesystem>

#include "dialogs/dialog_driver.h"
#include "dialogs/rules/setup_fields.h"
#include "dialogs/windows/data_generation_dlg.h"

namespace korvex::test {
namespace {

namespace id = control_id;
using platform::Answer;

const QString without_code = QStringLiteral("한");

// Stories begin in the dialog of the first item, which has the default settings, and end with its
// end.
class SetupFormatDlgTest : public DialogTest {
 protected:
  SetupFormatDlgTest() { setup.write(); }

  void play_in_setup(const Steps& story) {
    ClDataGenerationDlg dialog(nullptr, setup.control(), run_mode::settings_only, 0);
    rows = {"the story was not played to its end"};
    Steps whole = steps(click(id::setup)) + story;
    whole.push_back([this](FormDialog& parent) {
      rows.clear();
      const int count = parent.control<QAbstractItemView>(id::items)->model()->rowCount();
      for (int row = 0; row < count; ++row) {
        std::string text;
        for (int column = 2; column < 6; ++column)
          text += cell(parent, id::items, row, column) + " ";
        rows.push_back(text);
      }
    });
    whole.push_back(click(id::cancel));
    EXPECT_EQ(play(dialog, whole), dialog_result::cancel);
  }

  static Step expect_item(const std::string& name) { return expect_text(id::item_name, name); }

  static Steps choose_list() {
    return {choose(id::type, number_of(type_entry::enumeration)), click(id::select_file)};
  }

  Names rows;  // format and values of all items at the end
};

const char* const default_number = "%2U 1 99 1 ";
const char* const default_text = "%3S AAA ZZZ 1 ";

TEST_F(SetupFormatDlgTest, MovingOnAsksOnlyAboutChanges) {
  // The first value of the last item but one cannot be stored.
  play_in_setup(steps(
      click(id::previous_item), expect_item("A"), expect_told({}), type(id::end, "8"),
      answer(Answer::yes), click(id::next_item), expect_item("B"), expect_told({"q105"}),
      type(id::end, "7"), answer(Answer::no), click(id::next_item), expect_item("C"),
      expect_told({"q105"}), click(id::next_item), expect_item("C"), expect_told({}),
      click(id::previous_item), expect_item("B"), type(id::start, "x"), answer(Answer::yes),
      click(id::previous_item), expect_item("B"), expect_told({"q105", "w25"}), answer(Answer::no),
      click(id::previous_item), expect_item("A"), expect_told({"q105"}), click(id::ok)));
  EXPECT_EQ(rows, (Names{"%2U 1 8 1 ", default_number, default_text}));
}

TEST_F(SetupFormatDlgTest, EscapeTheCloseBoxAndCancelAskAlike) {
  for (const Step& end : {click(id::cancel), press("Esc"), close_box()}) {
    play_in_setup(steps(type(id::start, ""), answer(Answer::yes), end, expect_told({"q105", "w37"}),
                        answer(Answer::no), end, expect_told({"q105"})));
    EXPECT_EQ(rows[0], default_number);
    play_in_setup(steps(type(id::start, "5"), answer(Answer::yes), end, expect_told({"q105"})));
    EXPECT_EQ(rows[0], "%2U 5 99 1 ");
    play_in_setup(steps(end, expect_told({})));
  }
}

// Storing and staying, as Enter does unless another button has the focus.
TEST_F(SetupFormatDlgTest, SetupIsTheDefaultButton) {
  play_in_setup(steps(type(id::start, "5"), press("Return"),
                      then([] { EXPECT_EQ(as_seen(QToolTip::text()), "Stored: A"); }),
                      tab_to(id::next_item), press("Return"), expect_item("B"),
                      type(id::start, "6"), tab_to(id::cancel), answer(Answer::no), press("Return"),
                      expect_told({"q105"})));
  EXPECT_EQ(rows[0], "%2U 5 99 1 ");
  EXPECT_EQ(rows[1], default_number);
}

TEST_F(SetupFormatDlgTest, RefusalsKeepItOpenAtTheWrongControl) {
  struct Case {
    Steps entry;
    std::string told;
    int wrong;
  };
  const auto reference = [](const char* name) {
    return steps(choose(id::type, number_of(type_entry::reference)), type(id::reference, name));
  };
  const Case cases[] = {
      {{type(id::format, "")}, "w36", id::format},
      {{type(id::format, "%5X")}, "w7", id::format},
      {{type(id::increment, "")}, "w39", id::increment},
      {reference(""), "w34", id::reference},
      {reference("b"), "w74", id::reference},
      {reference("C"), "w31", id::reference},
      {{choose(id::type, number_of(type_entry::enumeration))}, "w138", id::select_file},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.told);
    play_in_setup(c.entry +
                  steps(
                      click(id::ok), expect_told({c.told}), expect_item("A"),
                      [c](FormDialog& dialog) { EXPECT_TRUE(dialog.control(c.wrong)->hasFocus()); },
                      answer(Answer::no), click(id::cancel)));
    EXPECT_TRUE(c.told != "w7" || setup.last_text.ends_with("\nPlease check the format."));
    setup.told();
    EXPECT_EQ(rows[0], default_number);
  }
}

TEST_F(SetupFormatDlgTest, AnIntegerOutOfRangeIsStoredBeforeItIsRefused) {
  setup.write({{.attributes = {attribute::integer, Flag::on, 10, 10, 0}}});
  play_in_setup(steps(type(id::start, "2147483648"), type(id::end, "2147483649"), click(id::ok),
                      expect_told({"w49"}), click(id::cancel), expect_told({})));
  EXPECT_TRUE(rows[0].ends_with(" 2147483648 2147483649 1 ")) << rows[0];
}

TEST_F(SetupFormatDlgTest, AReferenceTakesOverAllSettings) {
  setup.write({{}, {.number = 2, .name = cp932("数量")}});
  play_in_setup(steps(type(id::start, "5"), click(id::store_format), click(id::next_item),
                      choose(id::type, number_of(type_entry::reference)),
                      type(id::reference, without_code),
                      expect_told({"w한 has no code in code page 932."}), type(id::reference, "A"),
                      click(id::store_format), type(id::reference, "数量"), click(id::ok),
                      expect_told({"w29"}), answer(Answer::no), click(id::cancel)));
  EXPECT_EQ(rows, (Names{"%2U 5 99 1 ", "%2U 5 99 1 "}));
}

TEST_F(SetupFormatDlgTest, AReferenceThatWouldBeRefusedIsGreyAndSaysWhy) {
  setup.write({{.null_allowed = 0},
               {.number = 2, .name = "B"},
               {.number = 3, .name = "C", .attributes = letters},
               {.number = 4, .name = "D"},
               {.number = 5, .name = "E"}});
  const auto offers = [](const Names& expected) {
    return [=](FormDialog& dialog) {
      const QAbstractItemModel* model = dialog.control<QComboBox>(id::reference)->model();
      Names found;
      for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        const std::string why = index.data(Qt::ToolTipRole).toString().toStdString();
        found.push_back(why.substr(0, 5));
        EXPECT_EQ(index.flags().testFlag(Qt::ItemIsEnabled), why.empty());
      }
      EXPECT_EQ(found, expected);
    };
  };
  play_in_setup(steps(click(id::next_item), offers({"", "99029", "99031", "", ""}),
                      type(id::start, "5"), click(id::store_format), click(id::next_item),
                      click(id::next_item), choose(id::type, number_of(type_entry::initial_value)),
                      click(id::store_format), click(id::next_item), click(id::delete_format),
                      click(id::previous_item), click(id::previous_item), click(id::previous_item),
                      click(id::previous_item), offers({"99029", "", "99031", "99065", "99036"}),
                      choose(id::type, number_of(type_entry::reference)), type(id::reference, "b"),
                      press("Down"), press("Return"), click(id::ok)));
  EXPECT_EQ(rows[0], "%2U 5 99 1 ");
}

// As text for whoever cannot see it, and painted: nothing is stored by looking.
TEST_F(SetupFormatDlgTest, TellsWhatTheEntryWouldGive) {
  list("1\n2\n");
  const auto told = [](const std::string& expected) {
    constexpr int longer_than_the_pause = 300;  // milliseconds
    return steps(then([] { QTest::qSleep(longer_than_the_pause); }), then([] {}),
                 [expected](FormDialog& dialog) {
                   const QString told_by = dialog.control(id::type)->accessibleDescription();
                   EXPECT_EQ(told_by.toStdString(), expected);
                 });
  };
  play_in_setup(
      steps(type(id::end, "7")) + told("7 values: 01, 02, 03 … 07") + steps(type(id::start, "")) +
      told("99037:The start value is not set. Please set the start value.") + choose_list() +
      told("2 values: 1, 2") +
      steps(choose(id::type, number_of(type_entry::reference)), type(id::reference, "B")) +
      told("99 values: 01, 02, 03 … 99") + steps(answer(Answer::no), click(id::cancel)));
  EXPECT_EQ(rows[0], default_number);
}

TEST_F(SetupFormatDlgTest, WhatHasNoCodeIsRefusedAtOnce) {
  play_in_setup(steps(type(id::start, "4" + without_code + "2"),
                      expect_told({"w한 has no code in code page 932."}), click(id::ok)));
  EXPECT_EQ(rows[0], "%2U 42 99 1 ");
}

TEST_F(SetupFormatDlgTest, AnEnumerationFileIsChosenBrowsedAndStored) {
  const ScopedVariable editor("KORVEX_EDITOR", "vi");
  const std::string path = list("1\n2\n");
  const auto expect_tooltip = [](int control, const std::string& text) {
    return
        [=](FormDialog& dialog) { EXPECT_EQ(as_seen(dialog.control(control)->toolTip()), text); };
  };
  play_in_setup(steps(
      expect_tooltip(id::item_name,
                     "Attribute: 4 (number)\nLength: 2 bytes\nDigits: 2\nSigned: "
                     "no\nMay be NULL: yes"),
      choose(id::type, number_of(type_entry::enumeration)), expect_usable({id::browse_file}, {}),
      expect_tooltip(id::enumeration_name, ""), click(id::select_file),
      expect_tooltip(id::enumeration_name, path),
      expect_usable({id::browse_file}, {id::browse_file}), click(id::browse_file),
      then([&] { EXPECT_EQ(setup.interface.opened_files, Names{path}); }), then([&] {
        setup.interface.editor_error = std::make_error_code(std::errc::permission_denied);
      }),
      click(id::browse_file),
      expect_told({"pCall : vi \"" + path + "\"\nError : 13 (Permission denied)"}),
      then([&] { std::filesystem::remove(path); }), click(id::browse_file),
      [&](FormDialog& dialog) {
        EXPECT_EQ(setup.told(), Names{"w114"});
        EXPECT_TRUE(setup.last_text.ends_with("\n" + path));
        EXPECT_EQ(text_of(dialog, id::enumeration_name), "list.txt");
      },
      then([&] { list("3\n"); }), click(id::store_format),
      // Confirming the type again empties the name, and storing brings it back.
      choose(id::type, number_of(type_entry::enumeration)), expect_text(id::enumeration_name, ""),
      click(id::ok), expect_told({})));
  EXPECT_EQ(setup.interface.asked_folder, setup.folder.path());
  EXPECT_EQ(rows, (Names{"Enumeration type    ", default_number, default_text}));
}

TEST_F(SetupFormatDlgTest, ARefusedEnumerationLeavesTheSettings) {
  list("1\nx\n");
  const std::string told =
      "w2 line of a enum file The numeric value data Item includes a non-numeric value.\nA : first";
  const Steps refused =
      choose_list() + steps(click(id::ok), expect_told({told}), answer(Answer::no));
  play_in_setup(refused + steps(click(id::cancel), expect_told({"q105"})));
  EXPECT_EQ(rows[0], default_number);
  // An item that had none has none again.
  play_in_setup(
      steps(click(id::delete_format)) + refused +
      steps([](FormDialog& dialog) { EXPECT_FALSE(is_usable(dialog, id::delete_format)); },
            click(id::cancel)));
  EXPECT_EQ(rows[0], "    ");
}

TEST_F(SetupFormatDlgTest, AColumnThatMayNotBeNullTakesAnEnumerationButNoNull) {
  setup.write({{.null_allowed = 0}}, {.layout_kind = 2});
  list("1\n");
  play_in_setup(steps(click(id::delete_format),
                      choose(id::type, number_of(type_entry::initial_value)),
                      click(id::store_format), expect_told({"w65"})) +
                choose_list() + steps(click(id::ok), expect_told({})));
  EXPECT_EQ(rows[0], "Enumeration type    ");
}

// From the initial value the attribute's format is proposed; confirming a type again fills what was
// emptied. The letter of what is off leaves text and type alone.
TEST_F(SetupFormatDlgTest, TheTypeDecidesWhatCanBeUsed) {
  const std::vector<int> all = {id::format,          id::select_example, id::start,
                                id::exceeded_repeat, id::reference,      id::select_file,
                                id::browse_file};
  const auto usable = [&](const std::vector<int>& found) { return expect_usable(all, found); };
  play_in_setup(steps(
      usable({id::format, id::select_example, id::start, id::exceeded_repeat}),
      click(id::custom_format), usable({id::start, id::exceeded_repeat}), press("Alt+S Alt+O"),
      expect_text(id::start, "1"), choose(id::type, number_of(type_entry::initial_value)),
      usable({}), click(id::store_format), choose(id::type, number_of(type_entry::reference)),
      press("Alt+S"), usable({id::reference}), choose(id::type, number_of(type_entry::enumeration)),
      usable({id::exceeded_repeat, id::select_file}),
      choose(id::type, number_of(type_entry::range)), type(id::start, "3"), type(id::end, "4"),
      click(id::exceeded_repeat), click(id::store_format), expect_told({}), type(id::end, ""),
      choose(id::type, number_of(type_entry::range)), click(id::ok), expect_told({})));
  EXPECT_EQ(rows[0], "%2U 3 4 1 ");
}

TEST_F(SetupFormatDlgTest, TakesAnExampleAsItsFormat) {
  play_in_setup(steps(
      click(id::select_example), row(id::examples, 0), click(id::ok), click(id::select_example),
      row(id::examples, 1), click(id::cancel), expect_text(id::format, "%D"),
      click(id::delete_format),
      [](FormDialog& dialog) {
        for (const int radio : {id::exceeded_initialize, id::exceeded_repeat}) {
          EXPECT_FALSE(dialog.control<QAbstractButton>(radio)->isChecked());
        }
      },
      click(id::cancel)));
}

}  // namespace
}  // namespace korvex::test
