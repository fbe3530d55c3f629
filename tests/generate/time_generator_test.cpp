#include "generate/time_generator.h"

#include <gtest/gtest.h>

#include "generate/item_settings.h"

namespace korvex::test {
namespace {

TEST(TimeGeneratorTest, CountsSecondsOfTheDay) {
  const RangeTexts minute = {"%T", "095958", "100001", "1"};
  check_fields({
      {time_item, minute, "095958|095959|100000|100001|095958"},
      {time_item, minute, "09:59:58|09:59:59|10:00:00|10:00:01", 2},
      {time_item, minute, "09:59:58|09:59:59|10:00:00|10:00:01", 3},
      {time_item, {"%T", "000009", "000000", "-9"}, "000009|000000|000009"},
      {time_item, {"%T", "235950", "235959", "9"}, "235950|235959|235950"},
  });
}

TEST(TimeGeneratorTest, WrapsAtMidnight) {
  const RangeTexts up = {"%T%2S", "235958,AA", "235959,ZZ", "1"};
  check_fields({
      {character_item, up, "235958AA|235959AB|000000AC|000001AD"},
      {character_item, up, "23:59:58AA|23:59:59AB|00:00:00AC", 2},
      {character_item,
       {"%T%2S", "000001,ZZ", "000000,AA", "-1"},
       "000001ZZ|000000ZY|235959ZX|235958ZW"},
  });
}

TEST(TimestampGeneratorTest, CountsSecondsOnTheCalendar) {
  const RangeTexts new_year = {"%TS", "20071231 235959", "20080101 000001", "1"};
  check_fields({
      {timestamp_item, new_year, "20071231 235959|20080101 000000|20080101 000001|20071231 235959"},
      {timestamp_item, new_year, "2007/12/31 23:59:59|2008/01/01 00:00:00", 2},
      {timestamp_item, new_year, "2007-12-31 23:59:59|2008-01-01 00:00:00", 3},
      {timestamp_item,
       {"%TS", "20080301 000004", "20080229 235955", "-9"},
       "20080301 000004|20080229 235955|20080301 000004"},
  });
}

TEST(TimestampGeneratorTest, StartsAgainWhereTheCalendarEnds) {
  check_fields({
      {timestamp_item,
       {"%TS", "20380119 031406", "20380119 031407", "1"},
       "20380119 031406|20380119 031407|20380119 031406"},
      {timestamp_item,
       {"%TS", "20380119 031401", "20380119 031407", "4"},
       "20380119 031401|20380119 031405|20380119 031401"},
      {timestamp_item,
       {"%TS", "20380119 031359", "20380119 031407", "9"},
       "20380119 031359|20380119 031359"},
      {timestamp_item,
       {"%TS", "19700101 090001", "19700101 090000", "-1"},
       "19700101 090001|19700101 090000|19700101 090001"},
      {timestamp_item,
       {"%TS", "19700101 090003", "19700101 090000", "-2"},
       "19700101 090003|19700101 090001|19700101 090003"},
      {timestamp_item,
       {"%TS", "19700101 090102", "19700101 090000", "-9"},
       "19700101 090102|19700101 090053|19700101 090044"},
  });
}

}  // namespace
}  // namespace korvex::test
