#include "generate/record_writer.h"

#include <gtest/gtest.h>

#include "support/bytes.h"
#include "support/temp_folder.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

void append(RecordWriter& writer, std::string_view text) {
  writer.lines().require(text.size());
  writer.lines().append(text);
}

struct EndCase {
  std::int32_t layout_kind;
  std::vector<std::string> records;
  std::string expected;
};

TEST(RecordWriterTest, EndsRecordsByLayoutKind) {
  const EndCase cases[] = {
      {1, {"a,b,", ",", ""}, "a,b,\n,\n\n"},
      {2, {"a,b,", ",", ""}, "a,b,\n,\n\n"},
      {3, {"a,b,", ",", "", "a"}, "a,b\n\n\na\n"},
      {3, {"\"a,\",", "\"\","}, "\"a,\"\n\"\"\n"},
  };
  for (const EndCase& row : cases) {
    const TempFolder folder;
    platform::File file;
    ASSERT_EQ(file.create(folder.file("out")), platform::FileCause::none);
    RecordWriter writer(file, row.layout_kind, 0);
    for (const std::string& record : row.records) {
      append(writer, record);
      EXPECT_EQ(writer.accept(), 0);
    }
    EXPECT_EQ(writer.flush(), 0);
    file.close();
    EXPECT_EQ(read_file(folder.file("out")), row.expected) << row.layout_kind;
  }
}

TEST(RecordWriterTest, KeepsLinesAcrossItsBlocks) {
  const TempFolder folder;
  platform::File file;
  ASSERT_EQ(file.create(folder.file("out")), platform::FileCause::none);
  RecordWriter writer(file, 1, guarded_output);
  std::string expected;
  for (std::size_t i = 0; i < 3000; ++i) {
    const std::string record = std::string(i % 997, static_cast<char>('a' + i % 26)) + ",";
    expected += record + "\n";
    append(writer, record);
    ASSERT_EQ(writer.accept(), 0);
  }
  EXPECT_EQ(writer.flush(), 0);
  file.close();
  EXPECT_TRUE(same_bytes(expected, read_file(folder.file("out"))));
}

constexpr std::uint64_t limit = 2'147'483'647;
constexpr std::uint64_t line_size = 1024 * 1024;

// Writes lines of one size up to a last one that brings the total to `bytes`.
struct LimitRun {
  std::int32_t result = 0;
  std::uint64_t accepted = 0;
  std::uint64_t handed_over = 0;
};

// A block of lines that end already.
std::int32_t write_block(RecordWriter& writer, std::uint64_t lines) {
  const std::string line = std::string(line_size - 1, 'x') + "\n";
  std::vector<std::size_t> begins;
  for (; lines > 0; --lines) {
    begins.push_back(writer.lines().size());
    append(writer, line);
  }
  return writer.accept_lines(begins);
}

LimitRun write_up_to(std::uint64_t bytes, std::int32_t output_option) {
  const std::string text(line_size - 1, 'x');
  const WriteCalls calls(0);
  platform::File file;
  LimitRun run;
  if (file.create("/dev/null") != platform::FileCause::none) return run;
  RecordWriter writer(file, 1, output_option);
  while (run.result == 0 && run.accepted < bytes) {
    const std::uint64_t size = std::min(line_size, bytes - run.accepted);
    append(writer, std::string_view(text).substr(0, size - 1));
    run.result = writer.accept();
    if (run.result == 0) run.accepted += size;
  }
  EXPECT_EQ(writer.flush(), 0);
  file.close();
  run.handed_over = calls.bytes();
  return run;
}

TEST(RecordWriterTest, StopsAtTheLineThatReachesTheLimit) {
  const LimitRun below = write_up_to(limit - 1, guarded_output);
  EXPECT_EQ(below.result, 0);
  EXPECT_EQ(below.handed_over, limit - 1);
  for (const std::uint64_t bytes : {limit, limit + 1}) {
    const LimitRun run = write_up_to(bytes, guarded_output);
    EXPECT_EQ(run.result, -76) << bytes;
    EXPECT_EQ(run.handed_over, limit / line_size * line_size) << bytes;
  }
}

TEST(RecordWriterTest, HasNoLimitWithoutTheGuard) {
  const LimitRun run = write_up_to(limit + 1, 0);
  EXPECT_EQ(run.result, 0);
  EXPECT_EQ(run.handed_over, limit + 1);
}

// Wherever in a block that line stands.
TEST(RecordWriterTest, StopsAtTheSameLineInBlocks) {
  constexpr std::uint64_t lines_in_block = 5;
  for (std::uint64_t shift = 1; shift <= lines_in_block; ++shift) {
    const WriteCalls calls(0);
    platform::File file;
    ASSERT_EQ(file.create("/dev/null"), platform::FileCause::none);
    RecordWriter writer(file, 1, guarded_output);
    std::int32_t result = write_block(writer, shift);
    for (int i = 0; result == 0 && i < 1000; ++i) result = write_block(writer, lines_in_block);
    EXPECT_EQ(result, -76);
    EXPECT_EQ(writer.flush(), 0);
    EXPECT_EQ(calls.bytes(), limit / line_size * line_size) << shift;
  }
}

}  // namespace
}  // namespace korvex::test
