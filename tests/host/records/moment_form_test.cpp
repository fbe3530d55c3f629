#include "host/records/moment_form.h"

#include <gtest/gtest.h>

namespace korvex::host {
namespace {

struct Moment {
  MomentForm form;
  const char* value;
  const char* text;
};

constexpr MomentForm plain = MomentForm::as_it_is;

TEST(MomentText, IsWhatDatabasesRead) {
  const Moment moments[] = {
      {plain, "20240229", "20240229"},
      {MomentForm::iso_date, "20240229", "2024-02-29"},
      {MomentForm::iso_date, "2024/02/29", "2024-02-29"},
      {MomentForm::iso_date, "240229", "2024-02-29"},
      {MomentForm::iso_date, "70/12/31", "1970-12-31"},
      {MomentForm::iso_date, "69/12/31", "2069-12-31"},
      {MomentForm::iso_date, "", ""},
      {MomentForm::iso_time, "235959", "23:59:59"},
      {MomentForm::iso_time, "00:00:07", "00:00:07"},
      {MomentForm::iso_timestamp, "20240229 235959", "2024-02-29 23:59:59"},
      {MomentForm::iso_timestamp, "2024/02/29 23:59:59", "2024-02-29 23:59:59"},
      {MomentForm::iso_timestamp, "2024-02-29 23:59:59", "2024-02-29 23:59:59"},
      // What no generator writes is the database's to refuse.
      {MomentForm::iso_date, "2024", "2024"},
      {MomentForm::iso_timestamp, "x y", "x y"},
  };
  for (const Moment& moment : moments) {
    MomentText text;
    EXPECT_EQ(text.convert(moment.form, moment.value), moment.text);
  }
}

struct FormCase {
  Attribute attribute;
  ColumnType type;
  int length;
  MomentForm form;
};

TEST(FieldForms, FollowTheAttributeUnlessTheColumnHasNoRoomForIt) {
  const FormCase cases[] = {
      {attribute::date, ColumnType::date, 0, MomentForm::iso_date},
      {attribute::date, ColumnType::text, 0, MomentForm::iso_date},
      {attribute::date, ColumnType::text, 8, plain},
      {attribute::date, ColumnType::integer32, 0, plain},
      {attribute::time, ColumnType::text, 8, MomentForm::iso_time},
      {attribute::timestamp, ColumnType::timestamp, 0, MomentForm::iso_timestamp},
      {attribute::timestamp, ColumnType::text, 15, plain},
      {attribute::decimal, ColumnType::date, 0, plain},
  };
  for (const FormCase& test : cases) {
    ColumnSchema column;
    column.type = test.type;
    column.length = test.length;
    EXPECT_EQ(column_form(test.attribute, column), test.form)
        << number_of(test.attribute) << test.length;
  }
}

}  // namespace
}  // namespace korvex::host
