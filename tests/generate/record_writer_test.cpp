#include "generate/record_writer.h"

#include "support/bytes.h"
#include "support/temp_folder.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

void append(RecordWriter& writer, std::string_view text) {
  writer.lines().require(text.size());
  writer.lines().append(text);
}

constexpr std::uint64_t limit = 2'147'483'647;
constexpr std::uint64_t line_size = 1024 * 1024;

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

// Writes lines of one size up to a last one that brings the total to `bytes`; answers the code and
// how many bytes were handed over.
std::pair<std::int32_t, std::uint64_t> write_up_to(std::uint64_t bytes, std::int32_t option) {
  const std::string text(line_size - 1, 'x');
  const WriteCalls calls(0);
  platform::File file;
  EXPECT_EQ(file.create("/dev/null"), platform::FileCause::none);
  RecordWriter writer(file, option);
  std::int32_t result = 0;
  for (std::uint64_t size = 0; result == 0 && bytes > 0; bytes -= size) {
    size = std::min(line_size, bytes);
    const std::size_t begin = writer.lines().size();
    append(writer, std::string_view(text).substr(0, size - 1));
    append(writer, "\n");
    result = writer.accept_lines({&begin, 1});
  }
  EXPECT_EQ(writer.flush(), 0);
  file.close();
  return {result, calls.bytes()};
}

TEST(RecordWriterTest, StopsAtTheLineThatReachesTheLimitIfGuarded) {
  const std::uint64_t whole_lines = limit / line_size * line_size;
  EXPECT_EQ(write_up_to(limit - 1, guarded_output), std::pair(0, limit - 1));
  EXPECT_EQ(write_up_to(limit, guarded_output), std::pair(-76, whole_lines));
  EXPECT_EQ(write_up_to(limit + 1, guarded_output), std::pair(-76, whole_lines));
  EXPECT_EQ(write_up_to(limit + 1, 0), std::pair(0, limit + 1));
}

// Wherever in a block that line stands.
TEST(RecordWriterTest, StopsAtTheSameLineInBlocks) {
  constexpr std::uint64_t lines_in_block = 5;
  for (std::uint64_t shift = 1; shift <= lines_in_block; ++shift) {
    const WriteCalls calls(0);
    platform::File file;
    ASSERT_EQ(file.create("/dev/null"), platform::FileCause::none);
    RecordWriter writer(file, guarded_output);
    std::int32_t result = write_block(writer, shift);
    for (int i = 0; result == 0 && i < 1000; ++i) result = write_block(writer, lines_in_block);
    EXPECT_EQ(result, -76);
    EXPECT_EQ(writer.flush(), 0);
    EXPECT_EQ(calls.bytes(), limit / line_size * line_size) << shift;
  }
}

}  // namespace
}  // namespace korvex::test
