#include "generate/time_generator.h"

#include "generate/item_settings.h"

namespace korvex::test {
namespace {

TEST(TimeGeneratorTest, CountsSecondsOfTheDay) {
  const RangeTexts minute = {"%T", "095958", "100001", "1"};
  const RangeTexts over_midnight = {"%T%2S", "235958,AA", "235959,ZZ", "1"};
  const RangeTexts before_midnight = {"%T%2S", "000001,ZZ", "000000,AA", "-1"};
  check_fields({
      {time_item, minute, "095958|095959|100000|100001|095958"},
      {time_item, minute, "09:59:58|09:59:59|10:00:00|10:00:01", 2},
      {time_item, minute, "09:59:58|09:59:59|10:00:00|10:00:01", 3},
      {time_item, {"%T", "000009", "000000", "-9"}, "000009|000000|000009"},
      {character_item, over_midnight, "235958AA|235959AB|000000AC|000001AD"},
      {character_item, before_midnight, "000001ZZ|000000ZY|235959ZX|235958ZW"},
  });
}

// From and to the given time of a day, in fields that show the day once.
FieldsCase on(const std::string& day, const std::string& start, const std::string& end,
              const std::string& increment, const std::vector<std::string>& times) {
  const std::string date = day + " ";
  FieldsCase row = {timestamp_item, {"%TS", date + start, date + end, increment}, ""};
  for (const std::string& time : times)
    row.expected += (row.expected.empty() ? "" : "|") + date + time;
  return row;
}

TEST(TimestampGeneratorTest, CountsSecondsOnTheCalendar) {
  const RangeTexts new_year = {"%TS", "20071231 235959", "20080101 000001", "1"};
  const RangeTexts leap_day = {"%TS", "20080301 000004", "20080229 235955", "-9"};
  check_fields({
      {timestamp_item, new_year, "20071231 235959|20080101 000000|20080101 000001|20071231 235959"},
      {timestamp_item, new_year, "2007/12/31 23:59:59|2008/01/01 00:00:00", 2},
      {timestamp_item, new_year, "2007-12-31 23:59:59|2008-01-01 00:00:00", 3},
      {timestamp_item, leap_day, "20080301 000004|20080229 235955|20080301 000004"},
      // It starts again where the calendar ends.
      on("20380119", "031406", "031407", "1", {"031406", "031407", "031406"}),
      on("20380119", "031401", "031407", "4", {"031401", "031405", "031401"}),
      on("20380119", "031359", "031407", "9", {"031359", "031359"}),
      on("19700101", "090001", "090000", "-1", {"090001", "090000", "090001"}),
      on("19700101", "090003", "090000", "-2", {"090003", "090001", "090003"}),
      on("19700101", "090102", "090000", "-9", {"090102", "090053", "090044"}),
  });
}

}  // namespace
}  // namespace korvex::test
