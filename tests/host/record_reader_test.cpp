#include "host/record_reader.h"

#include <gtest/gtest.h>

#include "host/comma_marks.h"

namespace korvex::host {
namespace {

struct Record {
  const char* name;
  std::vector<FieldForm> forms;
  bool has_last_comma;
  std::string line;
  std::vector<std::string> fields;  // empty when the record has another number of them
};

constexpr FieldForm plain = FieldForm::as_it_is;
const std::string mark(1, comma_mark);

class Records : public testing::TestWithParam<Record> {};

TEST_P(Records, AreCutIntoFields) {
  const Record& record = GetParam();
  RecordReader reader(record.forms, record.has_last_comma, true);
  RowFields fields;
  const bool is_cut = reader.read(record.line, fields);
  EXPECT_EQ(is_cut, !record.fields.empty());
  if (is_cut) {
    EXPECT_EQ(std::vector<std::string>(fields.begin(), fields.end()), record.fields);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, Records,
    testing::Values(Record{"Table", {plain, plain}, true, "1,b,", {"1", "b"}},
                    Record{"Iso", {plain, plain}, false, "1,b", {"1", "b"}},
                    Record{"EmptyFields", {plain, plain, plain}, true, ",,,", {"", "", ""}},
                    Record{"EmptyLastFieldOfIso", {plain, plain}, false, "1,", {"1", ""}},
                    Record{"TooManyFields", {plain, plain}, true, "1,b,c,", {}},
                    Record{"TooFewFields", {plain, plain}, true, "1,", {}},
                    Record{"NoLastComma", {plain, plain}, true, "1,b", {}},
                    Record{"MarkedCommas",
                           {plain, FieldForm::iso_date, plain},
                           true,
                           "a" + mark + "b,20240229," + mark + ",",
                           {"a,b", "2024-02-29", ","}},
                    Record{"Dates",
                           {FieldForm::iso_date, FieldForm::iso_date, FieldForm::iso_date,
                            FieldForm::iso_date, FieldForm::iso_date},
                           true,
                           "20240229,2024/02/29,240229,70/12/31,,",
                           {"2024-02-29", "2024-02-29", "2024-02-29", "1970-12-31", ""}},
                    Record{"Times",
                           {FieldForm::iso_time, FieldForm::iso_time},
                           true,
                           "235959,00:00:07,",
                           {"23:59:59", "00:00:07"}},
                    Record{"Timestamps",
                           {FieldForm::iso_timestamp, FieldForm::iso_timestamp,
                            FieldForm::iso_timestamp},
                           true,
                           "20240229 235959,2024/02/29 23:59:59,2024-02-29 23:59:59,",
                           {"2024-02-29 23:59:59", "2024-02-29 23:59:59", "2024-02-29 23:59:59"}},
                    // What no generator writes is the database's to refuse.
                    Record{"NoMoment",
                           {FieldForm::iso_date, FieldForm::iso_timestamp},
                           true,
                           "2024,x y,",
                           {"2024", "x y"}}),
    [](const auto& test) { return test.param.name; });

struct FormCase {
  std::int32_t attribute;
  ColumnType type;
  int length;
  FieldForm form;
};

TEST(FieldForms, FollowTheAttributeUnlessTheColumnHasNoRoomForIt) {
  const FormCase cases[] = {
      {28, ColumnType::date, 0, FieldForm::iso_date},
      {28, ColumnType::text, 0, FieldForm::iso_date},
      {28, ColumnType::text, 8, plain},
      {28, ColumnType::integer32, 0, plain},
      {31, ColumnType::text, 8, FieldForm::iso_time},
      {32, ColumnType::timestamp, 0, FieldForm::iso_timestamp},
      {32, ColumnType::text, 15, plain},
      {4, ColumnType::date, 0, plain},
  };
  for (const FormCase& test : cases) {
    ColumnSchema column;
    column.type = test.type;
    column.length = test.length;
    EXPECT_EQ(field_form(test.attribute, column), test.form) << test.attribute << test.length;
  }
}

}  // namespace
}  // namespace korvex::host
