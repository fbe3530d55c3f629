#include "generate/enumeration_check.h"

#include "generate/repeat_setup.h"
#include "support/faulty_file_calls.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

std::size_t open_descriptors() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
}

constexpr ItemAttributes number = {4, 0, 3, 3, 0};

class EnumerationCheckTest : public testing::Test {
 protected:
  // Lets the messages speak of items (kind 1) or columns.
  void load_control(std::int32_t layout_kind = 1) {
    setup.write_control({.layout_kind = layout_kind});
    main.control_path = setup.control();
    main.set_run_mode(run_mode::generator);
    ASSERT_EQ(main.load(), 0);
  }

  static FmtColRec record_of(const ItemAttributes& item) {
    FmtColRec record = {};
    record.attribute = item.attribute;
    record.signed_flag = item.signed_flag;
    record.length = item.length;
    record.digits = item.digits;
    record.decimals = item.decimals;
    return record;
  }

  std::int32_t check(const ItemAttributes& item = number) {
    line = 99;
    return check_enumeration(main, path, record_of(item), line);
  }
  std::int32_t check(const std::string& content, const ItemAttributes& item = number) {
    write_file(path, content);
    return check(item);
  }
  std::int32_t load(const ItemAttributes& item = number) {
    values = ClEnumDataList();
    return load_enumeration(main, path, record_of(item), values);
  }
  std::int32_t load(const std::string& content, const ItemAttributes& item = number) {
    write_file(path, content);
    return load(item);
  }

  Names stored_values() const {
    Names all;
    for (EnumCursor cursor(values); !cursor.is_at_end(); cursor.next()) {
      all.emplace_back(cursor.value());
    }
    return all;
  }

  bool has_report() const { return platform::exists(report_path); }
  std::string report() const { return read_file(report_path); }

  GenerationSetup setup;
  std::string path = setup.folder.file("towns.txt");
  std::string report_path = path + ".err";
  ClColMain main;
  ClEnumDataList values;
  std::int32_t line = 0;
};

TEST_F(EnumerationCheckTest, CountsAndLoadsTheValues) {
  const std::string content = "1\n\n22\r\n\n333";
  EXPECT_EQ(check(content), 3);
  EXPECT_EQ(line, 5);
  EXPECT_FALSE(has_report());
  write_file(report_path, "old");
  EXPECT_EQ(load(content), 3);
  EXPECT_EQ(stored_values(), (Names{"1", "22", "333"}));
  EXPECT_FALSE(has_report());
  EXPECT_EQ(main.message_context, path + "\n");
  EXPECT_EQ(main.error_file_path, report_path);

  // More than one block of the reader, and a value longer than a line can be.
  std::string long_list(40'000, 'x');
  for (int i = 0; i < 100'000; ++i) long_list += "\n" + std::to_string(i % 1000);
  ASSERT_EQ(load(long_list, {1, 1, 40'000, 40'000, 0}), 100'002);
  const Names stored = stored_values();
  EXPECT_EQ(stored[0].size(), 32'768U);
  EXPECT_EQ(stored[1].size(), 40'000U - 32'768U);
  EXPECT_EQ(stored.back(), "999");
}

TEST_F(EnumerationCheckTest, TheCheckEndsAtTheFirstBadLineAndTheReportNamesAll) {
  EXPECT_EQ(check("1\n\n2\n3x\n4444\n"), -127);
  EXPECT_EQ(line, 4);
  EXPECT_EQ(check("\n20240101\n", {28, 0, 8, 8, 0}), -137);
  EXPECT_FALSE(has_report());
  EXPECT_EQ(main.error_file_path, "");
  load_control(1);
  EXPECT_EQ(load("1\n\n+2\n3\n4444\n"), -135);
  EXPECT_EQ(
      report(),
      "3 line of a enum file The numeric value Item which should be unsigned, includes a sign.\n"
      "5 line of a enum file Data longer than Item has been defined.\n");
  EXPECT_EQ(stored_values(), Names{"1"}) << "nothing is stored behind a bad line";

  load_control(3);
  EXPECT_EQ(load("\n1234"), -135);
  EXPECT_EQ(report(), "2 line of a enum file Data longer than Column has been defined.\n");
  // An attribute that takes no list is reported once a line, without its number.
  const std::string message =
      "This attribute does not allow use of the enumeration type.\n"
      "Select another generation type.\n";
  EXPECT_EQ(load("20240101\n\n20240102\n", {28, 0, 8, 8, 0}), -135);
  EXPECT_EQ(report(), message + message);
}

TEST_F(EnumerationCheckTest, AccessChecksComeFirst) {
  const auto expect_both = [&](std::int32_t code) {
    EXPECT_EQ(check(), code);
    EXPECT_EQ(line, 0) << "there is a line to show";
    EXPECT_EQ(load(), code);
  };
  expect_both(-114);
  write_file(path, "1\n");
  platform::File other;
  for (const auto sharing : {platform::Sharing::shared, platform::Sharing::exclusive}) {
    ASSERT_EQ(other.open_for_reading(path, sharing), platform::FileCause::none);
    expect_both(-115);
    other.discard();
  }
  path = setup.folder.path();
  expect_both(-111);  // a folder cannot be read
  EXPECT_FALSE(has_report());
}

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
      EXPECT_EQ(main.message_context, path + "\n");
      const bool names_report = loads && (c.opening > 4 || c.loaded > 0);
      EXPECT_EQ(main.error_file_path, names_report ? report_path : "");
      EXPECT_FALSE(has_report());
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
    EXPECT_EQ(line > 0, n == 2);
    EXPECT_EQ(failing([&] { return load(); }), -122);
  }
  std::string many;
  for (int i = 0; i < 50'000; ++i) many += "x\n";
  write_file(path, many);
  const WriteCalls failing(ENOSPC);
  EXPECT_EQ(load(), -124) << "a long report fails on its way";
}

struct EnumerationRunTest : testing::Test {
  RepeatSetup setup;
};

// Each preparation raises the way of assembly, and raised twice it is none that takes values.
TEST_F(EnumerationRunTest, AnItemThatStandsTwiceIsPreparedTwice) {
  setup.write({{.number = 1, .list = "1\n2\n3\n"}});
  setup.write_control({.records = 2, .items = {1, 1}});
  EXPECT_EQ(setup.generate(), (Names{",,", ",,"}));
  EXPECT_EQ(read_file(setup.log()), log_bytes(2, 1, {1, 1}));
}

}  // namespace
}  // namespace korvex::test
