#include "run/log_file.h"

#include "support/bytes.h"
#include "support/temp_folder.h"

namespace korvex::test {
namespace {

TEST(LogFileTest, IsNamedAfterTheDataFile) {
  const std::pair<std::string, std::string> cases[] = {
      {"/out/cust.dat", "/logs/cust.log"}, {"/out/cust", "/logs/cust.log"},
      {"/out/a.b.csv", "/logs/a.b.log"},   {"/o.ut/cust", "/logs/cust.log"},
      {"cust.csv", "/logs/cust.log"},      {"/out/.csv", "/logs/.log"},
      {"/out/cust.", "/logs/cust.log"},
  };
  for (const auto& [data, log] : cases) EXPECT_EQ(log_path("/logs", data), log);
}

TEST(LogFileTest, AnOlderLogGoesWithTheRunThatFoundNoSettings) {
  const TempFolder folder;
  write_file(folder.file("out.log"), "old");
  EXPECT_EQ(clear_log(folder.file("out.log")), -28);
  EXPECT_EQ(clear_log(folder.file("other.log")), -28);
  EXPECT_TRUE(folder.names().empty());
  EXPECT_EQ(clear_log(folder.file("missing/out.log")), -2);
  EXPECT_EQ(write_log(folder.file("missing/out.log"), {}), -2);
}

}  // namespace
}  // namespace korvex::test
