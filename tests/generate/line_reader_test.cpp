#include "generate/line_reader.h"

#include "support/bytes.h"
#include "support/faulty_file_calls.h"
#include "support/temp_folder.h"

namespace korvex::test {
namespace {

using Lines = std::vector<std::string>;
using Status = LineReader::Status;

constexpr std::size_t longest_piece = 32'768;
constexpr std::size_t read_block = 256 * 1024;

class LineReaderTest : public testing::Test {
 protected:
  // All lines of a file with this content.
  Lines read(const std::string& content) {
    write_file(path, content);
    platform::File file;
    EXPECT_EQ(file.open_for_reading(path, platform::Sharing::shared), platform::FileCause::none);
    LineReader reader(file);
    Lines lines;
    std::span<const std::string_view> next;
    Status status = Status::lines;
    while ((status = reader.next(next)) == Status::lines) {
      lines.insert(lines.end(), next.begin(), next.end());
    }
    EXPECT_EQ(status, Status::end);
    EXPECT_EQ(reader.next(next), Status::end) << "the end stays the end";
    return lines;
  }

  TempFolder folder;
  std::string path = folder.file("list");
};

// What a text file is, said as slowly as possible: pairs become line feeds, then pieces of at most
// 32,768 bytes are taken, each up to its line feed, and cut at a zero byte.
Lines slow_lines(const std::string& content) {
  std::string text;
  for (std::size_t i = 0; i < content.size(); ++i) {
    if (content[i] == '\r' && i + 1 < content.size() && content[i + 1] == '\n') continue;
    text += content[i];
  }
  Lines lines;
  for (std::size_t begin = 0; begin < text.size();) {
    std::string piece = text.substr(begin, longest_piece);
    if (const auto feed = piece.find('\n'); feed != std::string::npos) piece.resize(feed + 1);
    begin += piece.size();
    if (piece.back() == '\n') piece.pop_back();
    lines.push_back(piece.substr(0, piece.find('\0')));
  }
  return lines;
}

TEST_F(LineReaderTest, LineFeedsAndPairsEndLines) {
  using namespace std::string_literals;
  const std::pair<std::string, Lines> cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"a\r\nb", {"a", "b"}},
      {"\n\r\n\n a ", {"", "", "", " a "}},
      {"a\rb\n", {"a\rb"}},
      {"a\r", {"a\r"}},
      {"a\r\r\nb", {"a\r", "b"}},
      {"\n\r", {"", "\r"}},
      {"a\x1A\n\x1A", {"a\x1A", "\x1A"}},
      {"ab\0cd\ne\0\n"s, {"ab", "e"}},
      {"\0ab\n\0"s, {"", ""}},
  };
  for (const auto& [content, lines] : cases) {
    EXPECT_EQ(read(content), lines) << testing::PrintToString(content);
    EXPECT_EQ(slow_lines(content), lines) << testing::PrintToString(content);
  }
}

TEST_F(LineReaderTest, LongLinesComeInPieces) {
  const std::string full(longest_piece, 'x');
  EXPECT_EQ(read(full + full + "\nnext"), (Lines{full, full, "", "next"}));
  EXPECT_EQ(read(full), Lines{full}) << "no empty line behind a full piece at the end of the file";
  EXPECT_EQ(read(full.substr(1) + "\ry"), (Lines{full.substr(1) + "\r", "y"}));
}

// Wherever a pair falls: around the end of a piece and of what is read at once.
TEST_F(LineReaderTest, PairsMayFallAnywhere) {
  for (const std::size_t place : {longest_piece, read_block, read_block + longest_piece}) {
    for (std::size_t size = place - 3; size <= place + 2; ++size) {
      for (const std::size_t line_size : {std::size_t{9}, longest_piece - 1, longest_piece}) {
        std::string content;
        while (content.size() + line_size + 1 < size) content += std::string(line_size, 'x') + "\n";
        content += std::string(size - content.size(), 'y') + "\r\nrest\r";
        ASSERT_EQ(read(content), slow_lines(content)) << place << " " << size << " " << line_size;
      }
    }
  }
}

TEST_F(LineReaderTest, AReadErrorIsNoEnd) {
  write_file(path, std::string(read_block, '\n') + std::string(read_block, '\n'));
  for (const int failing : {1, 2}) {
    platform::File file;
    ASSERT_EQ(file.open_for_reading(path, platform::Sharing::shared), platform::FileCause::none);
    LineReader reader(file);
    const FaultyFileCalls calls({failing, EIO});
    std::size_t lines = 0;
    std::span<const std::string_view> next;
    Status status = Status::lines;
    while ((status = reader.next(next)) == Status::lines) lines += next.size();
    EXPECT_EQ(status, Status::failed);
    EXPECT_EQ(lines > 0, failing == 2);
    EXPECT_LE(lines, read_block);
  }
}

}  // namespace
}  // namespace korvex::test
