#include "platform/temporary_file.h"

#include <time.h>

#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::platform {
namespace {

using test::ScopedVariable;
using test::TempFolder;

std::time_t moment(int year, int month, int day, int hour, int minute, int second) {
  std::tm time = {second, minute, hour, day, month - 1, year - 1900, 0, 0, 0, 0, nullptr};
  return ::timegm(&time);
}

struct LocalTime : testing::Test {
  LocalTime() { ::tzset(); }
  ~LocalTime() override { ::tzset(); }
  ScopedVariable zone{"TZ", "UTC0"};
};

TEST_F(LocalTime, NamesAreInLocalTimeWithEnglishMonths) {
  EXPECT_EQ(temporary_name(moment(2007, 5, 31, 8, 18, 36)), "DG2007May31081836.TMP");
  std::string months;
  for (int month = 1; month <= 12; ++month) {
    months += temporary_name(moment(2026, month, 1, 0, 0, 0)).substr(6, 3);
  }
  EXPECT_EQ(months, "JanFebMarAprMayJunJulAugSepOctNovDec");
  const ScopedVariable east("TZ", "XYZ-9");
  ::tzset();
  EXPECT_EQ(temporary_name(moment(2026, 12, 31, 15, 0, 0)), "DG2027Jan01000000.TMP");
}

TEST_F(LocalTime, ATakenNameAdvancesToTheNextFreeSecond) {
  const TempFolder folder;
  const std::string taken[] = {folder.file("DG2026Dec31235958.TMP"),
                               folder.file("DG2026Dec31235959.TMP")};
  for (const std::string& name : taken) test::write_file(name, "taken");
  const std::time_t first = moment(2026, 12, 31, 23, 59, 58);
  TemporaryFile file;
  ASSERT_EQ(file.create(folder.path(), first), FileCause::none);
  EXPECT_EQ(file.path(), folder.file("DG2027Jan01000000.TMP"));
  for (const std::string& name : taken) EXPECT_EQ(test::read_file(name), "taken");
  EXPECT_EQ(file.create(folder.file("none"), 0), FileCause::bad_path);
  EXPECT_EQ(folder.names().size(), std::size(taken)) << "it goes when another one is begun";
}

}  // namespace
}  // namespace korvex::platform
