#include "host/settings_editor.h"

#include <gtest/gtest.h>

#include <filesystem>
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

LayoutItem number_item(std::int32_t number) {
  LayoutItem item;
  item.number = number;
  item.attributes = {4, 0, 5, 5, 0};
  return item;
}

ItemValues range(const std::string& format, const std::string& start, const std::string& end) {
  ItemValues values;
  values.source = ValueSource::range;
  values.texts = {format, start, end, "1"};
  values.choices = {exceeded_action::repeat, 1};
  return values;
}

ItemValues of_source(ValueSource source) {
  ItemValues values;
  values.source = source;
  return values;
}

ItemValues initial() { return of_source(ValueSource::initial); }

ItemValues reference(const std::string& name) {
  ItemValues values = of_source(ValueSource::reference);
  values.item_name = name;
  return values;
}

ItemValues enumeration(const std::string& file, std::int32_t action = exceeded_action::repeat) {
  ItemValues values = of_source(ValueSource::enumeration);
  values.file = file;
  values.choices.exceeded_action = action;
  return values;
}

ItemValues repeated(ItemValues values, std::int32_t level, std::int32_t count) {
  values.repeat = RepeatSettings{level, count};
  return values;
}

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

  // The codes of all failures; nothing was saved if there are any.
  std::vector<std::int32_t> failures() {
    const SettingsResult result = write();
    std::vector<std::int32_t> codes;
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

using Codes = std::vector<std::int32_t>;

TEST_F(SettingsEditor, WritesRangeAndInitialValue) {
  layout.kind = layout_kind::third;
  layout.items = {number_item(1), number_item(5)};
  layout.items[0].values = range("%5U", "7", "");  // no end: the largest of five digits
  layout.items[1].values = initial();
  const SettingsResult result = write_settings_of(layout);
  EXPECT_EQ(result.file_code, 0);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.items_with_settings, 2u);

  const test::ValueFields plus_one = {.sign = 1, .low = 1, .low_text = "1"};
  const test::ValueFields seven = {.sign = 1, .low = 7, .low_text = "7"};
  const test::ValueFields largest = {.sign = 1, .low = 99999, .low_text = "99999"};
  const std::string expected =
      test::header_bytes(3, 0, 1) +
      test::level_bytes(1, 76, 20, 2 * (test::column_size + test::element_size), 2) +
      test::column_bytes({.length = 5,
                          .digits = 5,
                          .increment = plus_one,
                          .format = "%5U",
                          .exceeded_action = 1,
                          .custom_format = 1}) +
      test::element_bytes({.width = 5,
                           .digits = 5,
                           .current = seven,
                           .start = seven,
                           .end = largest,
                           .text = "5U",
                           .start_text = "00007",
                           .end_text = "99999",
                           .span_low = 99992}) +
      test::column_bytes({.item_number = 5,
                          .length = 5,
                          .digits = 5,
                          .increment = {.sign = 1, .low = 1},
                          .format = "",
                          .generation_type = 1}) +
      test::element_bytes({.kind = 0,
                           .width = 5,
                           .digits = 5,
                           .text = "",
                           .start_text = "",
                           .end_text = "",
                           .span_low = 0});
  EXPECT_TRUE(test::same_bytes(expected, read_file(layout.settings)));
  EXPECT_EQ(folder.names(), std::vector<std::string>{"d.fif"});
}

TEST_F(SettingsEditor, KeepsWhatTheLayoutDoesNotName) {
  test::write_file(layout.settings, test::settings_bytes({2, 3}));
  layout.level = 2;
  layout.quotation = 1;
  layout.items = {number_item(201), number_item(300)};
  layout.items[0].attributes = {4, 0, 1, 1, 0};
  layout.items[1].values = initial();
  const SettingsResult result = write_settings_of(layout);
  EXPECT_EQ(result.file_code, 0);
  EXPECT_EQ(result.items_with_settings, 4u);
  const std::string bytes = read_file(layout.settings);
  EXPECT_EQ(bytes.substr(0, 44), test::header_bytes(1, 1, 2));
  EXPECT_NE(bytes.find(test::item_bytes(101) + test::item_bytes(102) + test::item_bytes(201) +
                       test::item_bytes(202) + test::item_bytes(203)),
            std::string::npos);
}

TEST_F(SettingsEditor, ReportsEveryFailingItemAndSavesNothing) {
  const std::string before = test::settings_bytes({1});
  for (const bool exists : {false, true}) {
    if (exists) test::write_file(layout.settings, before);
    layout.work = folder.file("work");
    layout.items = {number_item(1), number_item(2), number_item(3)};
    layout.items[0].values = range("%6U", "1", "9");
    layout.items[1].values = initial();
    layout.items[2].values = initial();
    layout.items[2].nullable = false;
    const SettingsResult result = write_settings_of(layout);
    EXPECT_EQ(result.file_code, 0);
    ASSERT_EQ(result.failures.size(), 2u);
    EXPECT_EQ(result.failures[0].item, &layout.items[0]);
    EXPECT_EQ(result.failures[0].code, error::bad_format_digits);
    EXPECT_EQ(result.failures[1].item, &layout.items[2]);
    EXPECT_EQ(result.failures[1].code, error::null_not_allowed);
    EXPECT_EQ(platform::exists(layout.settings), exists);
    EXPECT_TRUE(std::filesystem::is_empty(layout.work));
  }
  EXPECT_EQ(read_file(layout.settings), before);
}

TEST_F(SettingsEditor, MakesMissingFolders) {
  layout.data = folder.file("a/b/d.csv");
  layout.settings = folder.file("c/d.fif");
  layout.work = folder.file("e");
  layout.items = {number_item(1)};
  layout.items[0].values = initial();
  EXPECT_EQ(write_settings_of(layout).file_code, 0);
  EXPECT_TRUE(platform::exists(folder.file("a/b")));
  EXPECT_TRUE(platform::exists(folder.file("c/d.fif")));
}

TEST_F(SettingsEditor, AnswersTheCodeOfTheFile) {
  layout.items = {number_item(1)};
  EXPECT_EQ(write_settings_of(layout).file_code, error::no_format_for_item);

  layout.items[0].values = initial();
  test::write_file(layout.settings, "no settings, but long enough to hold a header of 44 bytes");
  EXPECT_EQ(write_settings_of(layout).file_code, error::version_mismatch);

  test::write_file(layout.settings, test::settings_bytes({1}));
  layout.kind = layout_kind::table;
  EXPECT_EQ(write_settings_of(layout).file_code, error::other_system);

  layout.kind = layout_kind::record_file;
  platform::File other;
  ASSERT_EQ(other.open_for_reading(layout.settings, platform::Sharing::exclusive),
            platform::FileCause::none);
  EXPECT_EQ(write_settings_of(layout).file_code, error::cannot_open);
}

// The record of an enumeration, which is that of the initial value but for its type, its action and
// its path; the range's texts and values are those of the default.
test::ColumnFields enumeration_column(std::int32_t number, const std::string& path) {
  return {.item_number = number,
          .length = 5,
          .digits = 5,
          .increment = {.sign = 1, .low = 1},
          .format = "",
          .generation_type = 4,
          .enumeration_path = path};
}

const std::string initial_element = test::element_bytes({.kind = 0,
                                                         .width = 5,
                                                         .digits = 5,
                                                         .text = "",
                                                         .start_text = "",
                                                         .end_text = "",
                                                         .span_low = 0});

TEST_F(SettingsEditor, WritesEnumerationsReferencesAndRepeats) {
  set_items({repeated(enumeration("/lists/a.txt"), 2, 7),
             enumeration("/lists/b.txt", exceeded_action::initialize),
             repeated(reference("A"), 1, 9)});
  layout.items[2].attributes.length = 6;  // its own attributes stay its own
  const SettingsResult result = write();
  EXPECT_EQ(result.file_code, 0);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.items_with_settings, 3u);
  EXPECT_EQ(result.repeated_items, 2);

  test::ColumnFields first = enumeration_column(1, "/lists/a.txt");
  first.exceeded_action = 1;
  first.repeat_flag = 1;
  first.repeat_level = 2;
  first.repeat_count = 7;
  const test::ColumnFields second = enumeration_column(2, "/lists/b.txt");
  test::ColumnFields third = first;
  third.item_number = 3;
  third.length = 6;
  third.repeat_level = 1;
  third.repeat_count = 9;
  const std::size_t size = 3 * (test::column_size + test::element_size);
  const std::string expected =
      test::header_bytes(1, 0, 1) + test::level_bytes(1, 76, 20, size, 3, 2) +
      test::column_bytes(first) + initial_element + test::column_bytes(second) + initial_element +
      test::column_bytes(third) + initial_element;
  EXPECT_TRUE(test::same_bytes(expected, read_file(layout.settings)));
}

TEST_F(SettingsEditor, ClearsRepeatsThatTheLayoutNoLongerHas) {
  set_items({repeated(range("%5U", "1", "9"), 1, 3), range("%5U", "1", "9")});
  EXPECT_EQ(write().repeated_items, 1);
  EXPECT_EQ(saved().current_level()->record.repeat_flag, 1);
  EXPECT_EQ(saved().find_column(1)->record.repeat_count, 3);

  layout.items[0].values.reset();  // kept as it is, repeat included
  EXPECT_EQ(write().repeated_items, 1);
  EXPECT_EQ(saved().find_column(1)->record.repeat_count, 3);

  layout.items[0].values = range("%5U", "1", "9");
  EXPECT_EQ(write().repeated_items, 0);
  EXPECT_EQ(saved().current_level()->record.repeat_flag, 0);
  const FmtColRec& settings = saved().find_column(1)->record;
  EXPECT_EQ(settings.repeat_flag, 0);
  EXPECT_EQ(settings.repeat_level, 0);
  EXPECT_EQ(settings.repeat_count, 0);
}

TEST_F(SettingsEditor, AReferenceTakesTheSourcesValues) {
  // B stands behind the item that takes its values over, so it is stored in front of it.
  set_items({reference("B"), repeated(range("%3U", "7", "9"), 1, 2)});
  layout.items[1].attributes.length = 4;
  ASSERT_EQ(failures(), Codes{});
  const FmtColRec& copy = saved().find_column(1)->record;
  EXPECT_EQ(copy.generation_type, generation_type::range);
  EXPECT_EQ(field_text(copy.format), "%3U");
  EXPECT_EQ(copy.referenced_item, 0);
  EXPECT_EQ(copy.length, 5);
  EXPECT_EQ(copy.repeat_flag, 0);
  EXPECT_EQ(field_text(saved().find_element(1, 1)->record.start_text), "007");
  EXPECT_EQ(saved().current_level()->columns[0]->record.item_number, 2);

  // A kept item can be referred to like any other, and a reference to a reference is one too.
  set_items({range("%3U", "1", "9"), reference("C"), reference("A")});
  layout.items[0].values.reset();
  EXPECT_EQ(write().failures.size(), 0u);
  EXPECT_EQ(field_text(saved().find_element(2, 1)->record.start_text), "007");
}

TEST_F(SettingsEditor, AReferenceToTheInitialValueIsOne) {
  set_items({initial(), reference("A")});
  layout.items[1].attributes = {28, 0, 8, 8, 0};  // of any attribute
  ASSERT_EQ(failures(), Codes{});
  EXPECT_EQ(saved().find_column(2)->record.generation_type, generation_type::initial_value);
  EXPECT_EQ(saved().find_column(2)->record.attribute, 28);
}

struct ReferenceCase {
  const char* name;
  ItemAttributes source;
  ItemAttributes target;
  std::int32_t code;
};

class References : public SettingsEditor, public testing::WithParamInterface<ReferenceCase> {};

TEST_P(References, AreRefused) {
  set_items({range("%1U", "1", "9"), reference("A")});
  layout.items[0].attributes = GetParam().source;
  layout.items[1].attributes = GetParam().target;
  EXPECT_EQ(failures(), Codes{GetParam().code});
}

INSTANTIATE_TEST_SUITE_P(
    Codes, References,
    testing::Values(ReferenceCase{"Attribute", {4, 0, 5, 5, 0}, {13, 0, 5, 5, 0}, -31},
                    ReferenceCase{"AttributeFirst", {4, 0, 9, 9, 0}, {13, 1, 5, 5, 2}, -31},
                    ReferenceCase{"Sign", {4, 0, 5, 5, 0}, {4, 1, 5, 5, 0}, -32},
                    ReferenceCase{"SignBeforeSize", {4, 0, 9, 9, 0}, {4, 1, 5, 5, 0}, -32},
                    ReferenceCase{"Length", {4, 0, 6, 5, 0}, {4, 0, 5, 5, 0}, -33},
                    ReferenceCase{"Digits", {4, 0, 5, 5, 0}, {4, 0, 5, 4, 0}, -33},
                    ReferenceCase{"Decimals", {4, 0, 6, 5, 2}, {4, 0, 6, 5, 1}, -33},
                    ReferenceCase{"NoDecimals", {4, 0, 5, 5, 0}, {4, 0, 6, 5, 1}, -69}),
    [](const auto& test) { return test.param.name; });

TEST_F(SettingsEditor, RefusesReferencesThatLeadNowhere) {
  set_items({reference("A")});
  EXPECT_EQ(failures(), Codes{error::same_reference_target});
  set_items({reference("Z")});
  EXPECT_EQ(failures(), Codes{error::no_such_reference});
  set_items({reference("B"), reference("A")});  // whoever comes first finds nothing
  EXPECT_EQ(failures(), (Codes{error::format_not_set, error::format_not_set}));
  set_items({reference("B"), initial()});
  layout.items[0].nullable = false;
  EXPECT_EQ(failures(), Codes{error::null_not_allowed});
  set_items({reference("B"), initial()});
  layout.items[1].values.reset();  // without settings
  EXPECT_EQ(failures(), Codes{error::format_not_set});
}

TEST_F(SettingsEditor, ADefaultIsTheAttributesOwnRange) {
  set_items({of_source(ValueSource::attribute_default), of_source(ValueSource::attribute_default)});
  layout.items[1].attributes = {28, 0, 8, 8, 0};
  ASSERT_EQ(failures(), Codes{});
  EXPECT_EQ(field_text(saved().find_column(1)->record.format), "%5U");
  EXPECT_EQ(saved().find_column(1)->record.exceeded_action, exceeded_action::repeat);
  EXPECT_EQ(field_text(saved().find_column(2)->record.format), "%4YMD");
  EXPECT_EQ(field_text(saved().find_element(2, 1)->record.end_text), "20380119");
}

TEST_F(SettingsEditor, RefusesZerosInRepeats) {
  set_items({repeated(range("%5U", "1", "9"), 1, 0), repeated(range("%5U", "1", "9"), 0, 0),
             repeated(range("%5U", "1", "9"), 2, 1)});
  EXPECT_EQ(failures(), (Codes{error::repeat_count_zero, error::repeat_level_zero}));
}

// Failures come in the order of the layout, also where a reference looks ahead.
TEST_F(SettingsEditor, ReportsFailuresInTheLayoutsOrder) {
  set_items({reference("B"), range("%6U", "1", "9"), reference("D")});
  const SettingsResult result = write();
  ASSERT_EQ(result.failures.size(), 3u);
  EXPECT_EQ(result.failures[0].item, &layout.items[0]);
  EXPECT_EQ(result.failures[0].code, error::format_not_set);
  EXPECT_EQ(result.failures[1].item, &layout.items[1]);
  EXPECT_EQ(result.failures[1].code, error::bad_format_digits);
  EXPECT_EQ(result.failures[2].code, error::no_such_reference);
}

TEST_F(SettingsEditor, KeptSettingsThatNoLongerFitAreDeleted) {
  test::write_file(folder.file("d.csv"), "old data");
  test::write_file(folder.file("d.log"), "old log");
  set_items({range("%5U", "1", "9"), range("%5U", "1", "9")});
  ASSERT_EQ(write().file_code, 0);

  // New values always fit; it is the kept ones that count.
  layout.items[0].attributes = {4, 0, 4, 4, 0};
  layout.items[0].values = range("%4U", "1", "9");
  layout.items[1].values.reset();
  EXPECT_EQ(write().file_code, 0);

  layout.data = folder.file("new/d.csv");
  layout.items[1].attributes.digits = 4;
  EXPECT_EQ(write().file_code, error::settings_mismatch);
  EXPECT_EQ(folder.names(), (std::vector<std::string>{"d.csv", "d.log", "new"}));
  EXPECT_EQ(read_file(folder.file("d.csv")), "old data");
}

}  // namespace
}  // namespace korvex::host
