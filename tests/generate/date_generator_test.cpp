#include "generate/date_generator.h"

#include "generate/item_settings.h"

namespace korvex::test {
namespace {

TEST(DateGeneratorTest, CountsCalendarDays) {
  const RangeTexts leap_day = {"%4YMD", "20080228", "20080301", "1"};
  const RangeTexts short_years = {"%2YMD", "991231", "000102", "1"};
  check_fields({
      {date_item, leap_day, "20080228|20080229|20080301|20080228"},
      {date_item, leap_day, "2008/02/28|2008/02/29|2008/03/01|2008/02/28", 2},
      {date_item, leap_day, "2008-02-28|2008-02-29|2008-03-01|2008-02-28", 3},
      {date_item, {"%4YMD", "20010302", "20010227", "-1"}, "20010302|20010301|20010228|20010227"},
      {date_item, {"%4YMD", "20001225", "20010110", "9"}, "20001225|20010103|20001225"},
      {date_item, short_years, "991231|000101|000102|991231"},
      {date_item, short_years, "99/12/31|00/01/01|00/01/02|99/12/31", 2},
      {date_item, {"%YMD", "000101", "991230", "-1"}, "000101|991231|991230|000101"},
      // Behind its end it runs on unless it leads.
      {character_item,
       {"%4YMD%S", "20080228,A", "20080229,Z", "1"},
       "20080228A|20080229B|20080301C"},
      {character_item,
       {"%4YMA%S", "19991230,A", "19991231,Z", "1"},
       "19991230A|19991231B|19990101C"},
  });
}

// The calendar's end is noted for the item: a leading date behind the element that met it ends the
// cycle too, and the field with it.
TEST(DateGeneratorTest, StartsAgainWhereTheCalendarEnds) {
  const RangeTexts checked = {"%4YMD'/'%4YMD'!'", "20380110,20000101", "20380119,20370101", "9"};
  const RangeTexts unchecked = {"%4YMD'/'%4YMA'!'", "20380110,20000101", "20380119,20370101", "9"};
  check_fields({
      {date_item, {"%4YMD", "19700102", "19700101", "-1"}, "19700102|19700101|19700102"},
      {date_item, {"%4YMD", "20380118", "20380119", "1"}, "20380118|20380119|20380118"},
      {date_item, {"%4YMD", "20380112", "20380119", "6"}, "20380112|20380118|20380112"},
      {date_item, {"%2YMD", "700103", "700101", "-2"}, "700103|700101|700103"},
      {character_item, checked, "20380110/20000101!|20380119/20000110|20380110/20000101!"},
      {character_item, unchecked, "20380110/20000101!|20380119/20000110!|20380110/20000119!"},
  });
}

TEST(DateGeneratorTest, TakesStepsThatOnlyAFileCanHold) {
  const std::tuple<RangeTexts, std::int32_t, int, std::string> cases[] = {
      {{"%4YMD", "19700301", "19700101", "-1"}, 60, 2, "19700301|19700301"},
      {{"%4YMD", "20371220", "20380119", "1"}, 40, 2, "20371220|20371220"},
      {{"%4YMD", "20000101", "20380119", "1"}, 366, 3, "20000101|20010101|20020102"},
      {{"%4YMD", "20000101", "20380119", "1"}, 0, 3, "20000101|20000101|20000101"},
      {{"%4YMD", "20000101", "20380119", "1"}, 2'147'483'647, 2, "20000101|20000101"},
      {{"%4YMA", "20070131", "20071231", "1"}, 40, 3, "20070131|20070240|20070349"},
  };
  for (const auto& [texts, days, records, expected] : cases) {
    auto column = make_column({date_item, texts});
    column->record.increment.low = days;
    EXPECT_EQ(fields(*column, records), expected) << days;
  }
}

// The text of a short date behind the calendar's end is compared as it stands: "380120" lies before
// the end of a range in the last century, which an element that does not lead has long passed.
TEST(DateGeneratorTest, ShortYearsMeetTheCalendarsEndWithoutACentury) {
  auto column = make_column({character_item, {"%5S%2YMD", "AAAAA,991201", "ZZZZZ,991231", "1"}});
  FmtValRec& date = column->elements[1]->record.current;
  date.year = 2038;
  date.month = 1;
  date.day = 18;
  EXPECT_EQ(fields(*column, 4), "AAAAA380118|AAAAB380119|AAAAC380119|AAAAD380119");
}

TEST(UncheckedDateGeneratorTest, GivesEveryMonthThirtyOneDays) {
  const RangeTexts february = {"%4YMA", "20070228", "20070301", "1"};
  check_fields({
      {date_item, february, "20070228|20070229|20070230|20070231|20070301|20070228"},
      {date_item, {"%4YMA", "20080102", "20071230", "-1"}, "20080102|20080101|20071231|20071230"},
      {date_item, {"%4YMA", "20071231", "20080101", "1"}, "20071231|20080101|20071231"},
      {date_item, {"%2YMA", "991230", "991231", "1"}, "99/12/30|99/12/31|99/12/30", 2},
      {date_item, {"%YMA", "050101", "041231", "-1"}, "05-01-01|04-12-31|05-01-01", 3},
  });
}

}  // namespace
}  // namespace korvex::test
