#include "run/record_writer.h"

#include "support/bytes.h"
#include "support/write_calls.h"

namespace korvex::test {
namespace {

constexpr std::uint64_t size_limit = 2'147'483'647;
constexpr std::uint64_t line_size = 1024 * 1024;

// Writes lines of one size up to a last one that brings the total to `bytes`, so many of them in
// the first block and in each later one; answers the code and how many bytes were handed over.
std::pair<std::int32_t, std::uint64_t> write_up_to(std::uint64_t bytes, OutputOption option,
                                                   int first_block, int block, bool by_others) {
  const std::string line = std::string(line_size - 1, 'x') + "\n";
  const WriteCalls calls(0);
  platform::File file;
  EXPECT_EQ(file.create("/dev/null"), platform::FileCause::none);
  RecordWriter writer(file, option);
  ErrorCode result = error::none;
  for (int left = first_block; result == error::none && bytes > 0; left = block) {
    std::vector<std::size_t> begins;
    for (; left > 0 && bytes > 0; --left) {
      const std::uint64_t size = std::min(line_size, bytes);
      begins.push_back(writer.lines().size());
      writer.lines().require(size);
      writer.lines().append(std::string_view(line).substr(line_size - size));
      bytes -= size;
    }
    if (by_others) {
      const std::string lines(writer.lines().data(), writer.lines().size());
      writer.lines().clear();
      result = writer.accept_lines(lines, begins);
    } else {
      result = writer.accept_lines(begins);
    }
  }
  EXPECT_EQ(writer.flush(), 0);
  file.close();
  return {number_of(result), calls.bytes()};
}

TEST(RecordWriterTest, StopsAtTheLineThatReachesTheLimitIfGuarded) {
  const std::uint64_t whole_lines = size_limit / line_size * line_size;
  for (const bool by_others : {false, true}) {
    const auto up_to = [&](std::uint64_t bytes, OutputOption option, int first, int block) {
      return write_up_to(bytes, option, first, block, by_others);
    };
    EXPECT_EQ(up_to(size_limit - 1, OutputOption::guarded, 1, 1), std::pair(0, size_limit - 1));
    EXPECT_EQ(up_to(size_limit, OutputOption::guarded, 1, 1), std::pair(-76, whole_lines));
    EXPECT_EQ(up_to(size_limit + 1, OutputOption::plain, 1, 1), std::pair(0, size_limit + 1));
    // Wherever in a block that line is.
    for (int first = 1; first <= 5; ++first) {
      EXPECT_EQ(up_to(size_limit + 9 * line_size, OutputOption::guarded, first, 5),
                std::pair(-76, whole_lines));
    }
  }
}

}  // namespace
}  // namespace korvex::test
