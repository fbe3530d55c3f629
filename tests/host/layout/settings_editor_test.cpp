#include "host/layout/settings_editor.h"

#include <memory>

#include "format/error_codes.h"
#include "format/fmt_file.h"
#include "format/record_text.h"
#include "format/records.h"
#include "platform/file.h"
#include "support/bytes.h"
#include "support/settings_bytes.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

using test::read_file;
using Codes = std::vector<std::int32_t>;

LayoutItem number_item(std::int32_t number) {
  LayoutItem item;
  item.number = number;
  item.attributes = {4, 0, 5, 5, 0};
  return item;
}

ItemValues of_source(ValueSource source) {
  ItemValues values;
  values.source = source;
  return values;
}

ItemValues range(const std::string& format, const std::string& start, const std::string& end) {
  ItemValues values = of_source(ValueSource::range);
  values.texts = {format, start, end, "1"};
  values.choices = {exceeded_action::repeat, 1};
  return values;
}

ItemValues reference(const std::string& name) {
  ItemValues values = of_source(ValueSource::reference);
  values.item_name = name;
  return values;
}

ItemValues enumeration(const std::string& file, std::int32_t action) {
  ItemValues values = of_source(ValueSource::enumeration);
  values.file = file;
  values.choices.exceeded_action = action;
  return values;
}

ItemValues repeated(ItemValues values, std::int32_t level, std::int32_t count) {
  values.repeat = RepeatSettings{level, count};
  return values;
}

const ItemValues initial = of_source(ValueSource::initial);
const ItemValues standard = of_source(ValueSource::attribute_default);
const ItemValues one_to_nine = range("%5U", "1", "9");

class SettingsEditor : public testing::Test {
 protected:
  SettingsEditor() {
    layout.kind = layout_kind::record_file;
    layout.records = 20;
    layout.data = folder.file("d.csv");
    layout.settings = folder.file("d.fif");
    layout.work = folder.path();
  }

  // Items A, B, C... numbered from 1, each a number of five digits, with the given values.
  void set_items(const std::vector<ItemValues>& values) {
    layout.items.clear();
    for (const ItemValues& each : values) {
      const auto number = static_cast<std::int32_t>(layout.items.size()) + 1;
      layout.items.push_back(number_item(number));
      layout.items.back().name = std::string(1, static_cast<char>('A' + number - 1));
      layout.items.back().values = each;
    }
  }

  SettingsResult write() {
    file_.reset();
    return write_settings_of(layout);
  }

  // What the settings file holds for the items of its level; held until the next write.
  ClFmtFile& saved() {
    file_ = std::make_unique<ClFmtFile>();
    file_->set_paths(layout.settings, layout.work);
    EXPECT_GT(file_->load(layout.level, layout.records, layout.kind), 0);
    return *file_;
  }
  const FmtColRec& column(std::int32_t number) { return saved().find_column(number)->record; }

  // The codes of all failures; nothing was saved if there are any.
  Codes failures() {
    const SettingsResult result = write();
    Codes codes;
    for (const ItemFailure& failure : result.failures) codes.push_back(failure.code);
    EXPECT_EQ(result.file_code, 0);
    EXPECT_EQ(codes.empty(), platform::exists(layout.settings));
    return codes;
  }

  test::TempFolder folder;
  Layout layout;

 private:
  std::unique_ptr<ClFmtFile> file_;
};

TEST_F(SettingsEditor, WritesRangeAndInitialValue) {
  layout.kind = layout_kind::third;
  layout.quotation = 1;
  layout.data = folder.file("a/b/d.csv");  // missing folders are made
  layout.settings = folder.file("c/d.fif");
  layout.work = folder.file("e");
  layout.items = {number_item(1), number_item(5)};
  layout.items[0].values = range("%5U", "7", "");  // no end: the largest of five digits
  layout.items[1].values = initial;
  const SettingsResult result = write();
  EXPECT_EQ(result.file_code, 0);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.items_with_settings, 2u);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"a", "c", "e"}));
  EXPECT_TRUE(platform::exists(folder.file("a/b")));

  EXPECT_EQ(read_file(layout.settings).substr(0, 76),
            test::header_bytes(3, 1, 1) +
                test::level_bytes(1, 76, 20, 2 * (test::column_size + test::element_size), 2));
  ClFmtFile& file = saved();
  ASSERT_EQ(file.read_item(1), 1);
  const EditedSettings& edited = file.edited();
  EXPECT_EQ(edited.texts.format + " " + edited.texts.start + " " + edited.texts.end,
            "%5U 00007 99999");
  EXPECT_EQ(edited.choices.exceeded_action, exceeded_action::repeat);
  EXPECT_EQ(edited.choices.custom_format, 1);
  EXPECT_EQ(column(5).generation_type, generation_type::initial_value);
}

TEST_F(SettingsEditor, KeepsWhatTheLayoutDoesNotName) {
  test::write_file(layout.settings, test::settings_bytes({2, 3}));
  layout.level = 2;
  layout.quotation = 1;
  layout.items = {number_item(201), number_item(300)};
  layout.items[0].attributes = {4, 0, 1, 1, 0};
  layout.items[1].values = initial;
  const SettingsResult result = write_settings_of(layout);
  EXPECT_EQ(result.file_code, 0);
  EXPECT_EQ(result.items_with_settings, 4u);
  const std::string bytes = read_file(layout.settings);
  EXPECT_EQ(bytes.substr(0, 44), test::header_bytes(1, 1, 2));
  EXPECT_NE(bytes.find(test::item_bytes(101) + test::item_bytes(102) + test::item_bytes(201) +
                       test::item_bytes(202) + test::item_bytes(203)),
            std::string::npos);
}

// In the order of the layout, also where a reference looks ahead.
TEST_F(SettingsEditor, ReportsEveryFailingItemAndSavesNothing) {
  const std::string before = test::settings_bytes({1});
  for (const bool exists : {false, true}) {
    if (exists) test::write_file(layout.settings, before);
    layout.work = folder.file("work");
    set_items({reference("B"), range("%6U", "1", "9"), reference("Z"), initial});
    layout.items[3].nullable = false;
    const SettingsResult result = write();
    EXPECT_EQ(result.file_code, 0);
    Codes codes;
    for (std::size_t i = 0; i < result.failures.size(); ++i) {
      EXPECT_EQ(result.failures[i].item, &layout.items[i]);
      codes.push_back(result.failures[i].code);
    }
    EXPECT_EQ(codes, (Codes{error::format_not_set, error::bad_format_digits,
                            error::no_such_reference, error::null_not_allowed}));
    EXPECT_EQ(platform::exists(layout.settings), exists);
    EXPECT_TRUE(std::filesystem::is_empty(layout.work));
  }
  EXPECT_EQ(read_file(layout.settings), before);
}

TEST_F(SettingsEditor, AnswersTheCodeOfTheFile) {
  layout.items = {number_item(1)};
  EXPECT_EQ(write_settings_of(layout).file_code, error::no_format_for_item);

  layout.items[0].values = initial;
  test::write_file(layout.settings, "no settings, but long enough to hold a header of 44 bytes");
  EXPECT_EQ(write_settings_of(layout).file_code, error::version_mismatch);
}

TEST_F(SettingsEditor, WritesEnumerationsReferencesAndRepeats) {
  set_items({repeated(enumeration("/lists/a.txt", exceeded_action::repeat), 2, 7),
             enumeration("/lists/b.txt", exceeded_action::initialize),
             repeated(reference("A"), 1, 9)});
  layout.items[2].attributes.length = 6;  // its own attributes stay its own
  const SettingsResult result = write();
  EXPECT_EQ(result.file_code, 0);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.items_with_settings, 3u);
  EXPECT_EQ(result.repeated_items, 2);
  EXPECT_EQ(saved().current_level()->record.repeat_flag, 2);
  const auto described = [&](std::int32_t number) {
    const FmtColRec& c = column(number);
    const Codes fields = {c.generation_type, c.exceeded_action, c.repeat_flag,
                          c.repeat_level,    c.repeat_count,    c.length};
    return std::pair(std::string(field_text(c.enumeration_path)), fields);
  };
  EXPECT_EQ(described(1), std::pair(std::string("/lists/a.txt"), Codes({4, 1, 1, 2, 7, 5})));
  EXPECT_EQ(described(2), std::pair(std::string("/lists/b.txt"), Codes({4, 0, 0, 0, 0, 5})));
  EXPECT_EQ(described(3), std::pair(std::string("/lists/a.txt"), Codes({4, 1, 1, 1, 9, 6})));
}

TEST_F(SettingsEditor, ClearsRepeatsThatTheLayoutNoLongerHas) {
  set_items({repeated(one_to_nine, 1, 3), one_to_nine});
  EXPECT_EQ(write().repeated_items, 1);
  EXPECT_EQ(saved().current_level()->record.repeat_flag, 1);
  EXPECT_EQ(column(1).repeat_count, 3);

  layout.items[0].values.reset();  // kept as it is, repeat included
  EXPECT_EQ(write().repeated_items, 1);
  EXPECT_EQ(column(1).repeat_count, 3);

  layout.items[0].values = one_to_nine;
  EXPECT_EQ(write().repeated_items, 0);
  EXPECT_EQ(saved().current_level()->record.repeat_flag, 0);
  const FmtColRec& settings = column(1);
  EXPECT_EQ(settings.repeat_flag, 0);
  EXPECT_EQ(settings.repeat_level, 0);
  EXPECT_EQ(settings.repeat_count, 0);
}

TEST_F(SettingsEditor, AReferenceTakesTheSourcesValues) {
  // B stands behind the item that takes its values over, so it is stored in front of it.
  set_items({reference("B"), repeated(range("%3U", "7", "9"), 1, 2)});
  layout.items[1].attributes.length = 4;
  ASSERT_EQ(failures(), Codes{});
  const FmtColRec& copy = column(1);
  EXPECT_EQ(copy.generation_type, generation_type::range);
  EXPECT_EQ(field_text(copy.format), "%3U");
  EXPECT_EQ(copy.referenced_item, 0);
  EXPECT_EQ(copy.length, 5);
  EXPECT_EQ(copy.repeat_flag, 0);
  EXPECT_EQ(field_text(saved().find_column(1)->elements[0]->record.start_text), "007");
  EXPECT_EQ(saved().current_level()->columns[0]->record.item_number, 2);

  // A kept item can be referred to like any other, and a reference to a reference is one too.
  set_items({range("%3U", "1", "9"), reference("C"), reference("A")});
  layout.items[0].values.reset();
  EXPECT_EQ(write().failures.size(), 0u);
  EXPECT_EQ(field_text(saved().find_column(2)->elements[0]->record.start_text), "007");
}

TEST_F(SettingsEditor, ADefaultIsTheAttributesOwnRangeAndAnInitialValueAnyReferences) {
  set_items({standard, standard, initial, reference("C")});
  layout.items[1].attributes = layout.items[3].attributes = {28, 0, 8, 8, 0};
  ASSERT_EQ(failures(), Codes{});
  EXPECT_EQ(field_text(column(1).format), "%5U");
  EXPECT_EQ(column(1).exceeded_action, exceeded_action::repeat);
  EXPECT_EQ(field_text(column(2).format), "%4YMD");
  EXPECT_EQ(field_text(saved().find_column(2)->elements[0]->record.end_text), "20380119");
  EXPECT_EQ(column(4).generation_type, generation_type::initial_value);
  EXPECT_EQ(column(4).attribute, 28);
}

TEST_F(SettingsEditor, RefusesReferencesThatLeadNowhere) {
  set_items({reference("A")});
  EXPECT_EQ(failures(), Codes{error::same_reference_target});
  set_items({range("%1U", "1", "9"), reference("A")});
  layout.items[1].attributes.attribute = 13;
  EXPECT_EQ(failures(), Codes{error::reference_attribute_differs});
  set_items({reference("B"), reference("A")});  // whoever comes first finds nothing
  EXPECT_EQ(failures(), (Codes{error::format_not_set, error::format_not_set}));
  set_items({reference("B"), initial});
  layout.items[0].nullable = false;
  EXPECT_EQ(failures(), Codes{error::null_not_allowed});
  set_items({reference("B"), initial});
  layout.items[1].values.reset();  // without settings
  EXPECT_EQ(failures(), Codes{error::format_not_set});
}

TEST_F(SettingsEditor, RefusesZerosInRepeats) {
  set_items(
      {repeated(one_to_nine, 1, 0), repeated(one_to_nine, 0, 0), repeated(one_to_nine, 2, 1)});
  EXPECT_EQ(failures(), (Codes{error::repeat_count_zero, error::repeat_level_zero}));
}

TEST_F(SettingsEditor, KeptSettingsThatNoLongerFitAreDeleted) {
  set_items({one_to_nine, one_to_nine});
  ASSERT_EQ(write().file_code, 0);

  // New values always fit; it is the kept ones that count.
  layout.items[0].attributes = {4, 0, 4, 4, 0};
  layout.items[0].values = range("%4U", "1", "9");
  layout.items[1].values.reset();
  EXPECT_EQ(write().file_code, 0);

  layout.items[1].attributes.digits = 4;
  EXPECT_EQ(write().file_code, error::settings_mismatch);
  EXPECT_FALSE(platform::exists(layout.settings));
}

}  // namespace
}  // namespace korvex::host
