#include "lists/enumeration_check.h"

#include "support/faulty_file_calls.h"
#include "support/generation_setup.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

std::size_t open_descriptors() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
}

class EnumerationCheckTest : public testing::Test {
 protected:
  // A count or a code, as the tables have them.
  static std::int64_t count_or_code(const Result<std::size_t>& counted) {
    return counted ? static_cast<std::int64_t>(*counted) : number_of(counted.code());
  }
  std::int64_t check() { return count_or_code(check_enumeration(main, path, record(), line)); }
  std::int64_t load() {
    values = ClEnumDataList();
    return count_or_code(load_enumeration(main, path, record(), values));
  }

  static FmtColRec record() {
    FmtColRec record = {};
    record.attribute = attribute::decimal;
    record.length = record.digits = 3;
    return record;
  }

  GenerationSetup setup;
  std::string path = setup.folder.file("towns.txt");
  std::string report_path = path + ".err";
  ClColMain main;
  ClEnumDataList values;
  ListLine line = ListLine::none;
};

// The openings: existence, exclusivity, permission, the list, its report. Each check knows one
// cause, and lets every other one pass.
TEST_F(EnumerationCheckTest, EachOpeningFailsWithItsCode) {
  struct Case {
    int opening;
    int error_number;
    std::int32_t checked, loaded;
  };
  const Case cases[] = {
      {1, EIO, -114, -114},    {1, ENOENT, -114, -114}, {1, ENOTDIR, -114, -114},
      {1, EACCES, 1, 1},       {2, EACCES, 1, 1},       {2, EIO, 1, 1},
      {3, EACCES, -111, -111}, {3, EPERM, -111, -111},  {3, EIO, 1, 1},
      {3, ENOENT, 1, 1},       {4, EACCES, -121, -121}, {4, EIO, -121, -121},
      {5, EACCES, 1, -123},    {5, ENOSPC, 1, -123},
  };
  write_file(path, "1\n");
  const std::size_t before = open_descriptors();
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "opening " << c.opening << ": " << c.error_number);
    for (const bool loads : {false, true}) {
      main.error_file_path.clear();
      const FaultyFileCalls failing(
          {.call = c.opening, .error_number = c.error_number, .kind = "open"});
      EXPECT_EQ(loads ? load() : check(), loads ? c.loaded : c.checked);
      EXPECT_EQ(main.message_context.utf8(), path + "\n");
      const bool names_report = loads && (c.opening > 4 || c.loaded > 0);
      EXPECT_EQ(main.error_file_path, names_report ? report_path : "");
      EXPECT_FALSE(platform::exists(report_path));
    }
  }
  EXPECT_EQ(open_descriptors(), before);
}

TEST_F(EnumerationCheckTest, ReadAndWriteErrors) {
  write_file(path, std::string(300'000, '\n') + "1\n");
  for (const int n : {1, 2}) {
    const auto failing = [&](auto run) {
      const FaultyFileCalls calls({.call = n, .error_number = EIO, .kind = "read"});
      return run();
    };
    EXPECT_EQ(failing([&] { return check(); }), -122);
    EXPECT_EQ(line != ListLine::none, n == 2);
    EXPECT_EQ(failing([&] { return load(); }), -122);
  }
  std::string many;
  for (int i = 0; i < 50'000; ++i) many += "x\n";
  write_file(path, many);
  const WriteCalls failing(ENOSPC);
  EXPECT_EQ(load(), -124) << "a long report fails on its way";
}

}  // namespace
}  // namespace korvex::test
