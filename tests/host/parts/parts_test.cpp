#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "host/parts/checksum.h"
#include "host/parts/fingerprint.h"
#include "host/parts/manifest.h"
#include "support/random.h"
#include "support/temp_folder.h"

// Parts of the records of random layouts: joined in any split they are the whole, and what is known
// of each adds up to what is known of it.
namespace korvex::host {
namespace {

using test::below;
using test::Random;

// Items whose values end, turn, stay, run empty, differ in size, or need care in a dialect.
constexpr std::string_view some_values[] = {
    R"(decimal digits=4 type = "range", format = "%4U", start = 7, end = 311, increment = 5)",
    R"(decimal signed=true digits=4 decimals=2 type = "range", format = "%2.2D", start = "-1.50", end = "2.25", increment = "0.25")",
    R"(character length=9 type = "range", format = "'a,\"'%3s", start = "aaa", end = "abc", exceeded = "initialize")",
    R"(date type = "range", format = "%4YMD", start = "20240227", end = "20250302")",
    R"(timestamp type = "range", format = "%TS", start = "20231231 235950", end = "20240101 000010", increment = 3)",
    R"(character length=30 type = "enumeration", file = "list.txt")",
    R"(character length=30 type = "enumeration", file = "list.txt", exceeded = "initialize")",
    R"(character length=5 type = "initial")",
};

std::string item_text(std::string_view values, int number, int level) {
  std::istringstream words{std::string(values)};
  std::string word;
  words >> word;
  std::string text =
      "[[item]]\nname = \"I" + std::to_string(number) + "\"\nattribute = \"" + word + "\"\n";
  for (words >> word; word != "type"; words >> word) {
    const std::size_t sign = word.find('=');
    text += word.substr(0, sign) + " = " + word.substr(sign + 1) + "\n";
  }
  std::string rest;
  std::getline(words, rest);
  const std::string repeat = ", repeat = { level = " + std::to_string(level) + ", count = 2 }";
  return text + "values = { type" + rest + (level > 0 ? repeat : "") + " }\n";
}

std::string random_layout(Random& random, Steps records) {
  constexpr std::string_view kinds[] = {"record", "table", "iso"};
  std::string text = "[layout]\nkind = \"" + std::string(kinds[below(random, 3)]) +
                     "\"\nrecords = " + std::to_string(records) + "\ndata = \"d.csv\"\nquote = \"" +
                     (below(random, 2) == 0 ? "none" : "double") + "\"\n";
  const bool may_repeat = below(random, 3) == 0;
  const int items = static_cast<int>(1 + below(random, 4));
  int levels = 0;
  for (int number = 1; number <= items; ++number) {
    const std::string_view values = some_values[below(random, std::size(some_values))];
    const bool is_repeated =
        may_repeat && below(random, 2) == 0 && values.find("initial\"") == std::string_view::npos;
    text += item_text(values, number, is_repeated ? ++levels : 0);
  }
  return text;
}

OutputForm random_form(Random& random) {
  OutputForm form;
  form.is_data_file = below(random, 3) == 0;
  if (form.is_data_file) return form;
  form.format.dialect = dialect_names[below(random, dialect_names.size())].second;
  form.format.header = below(random, 2) == 0;
  form.format.in_code_page = form.format.dialect != Dialect::json_lines && below(random, 2) == 0;
  if (below(random, 2) == 0) form.format.table = "a\\b\n c";
  return form;
}

std::string taken(RecordStream& stream, RecordRange range, bool has_head) {
  std::string text;
  stream.go_to(range, has_head);
  for (std::string_view bytes; !(bytes = stream.next()).empty();) text += bytes;
  EXPECT_EQ(stream.failure(), "");
  EXPECT_EQ(stream.records(), range.size());
  return text;
}

class PartsTest : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& text) {
    std::ofstream(folder.file(name), std::ios::binary) << text;
  }

  void prepare(const std::string& layout, PreparedLayout& prepared) {
    write("l.toml", layout);
    std::ostringstream messages;
    ASSERT_EQ(prepared.prepare(folder.file("l.toml"), {}, messages), ExitStatus::done)
        << messages.str() << layout;
  }

  test::TempFolder folder;
  Random random{18};
};

TEST_F(PartsTest, JoinedAreTheWhole) {
  write("list.txt", "one\ntwo, three\nsay \"four\"\nfive\n\nO'six\\\n");
  for (int i = 0; i < 250; ++i) {
    const Steps records = below(random, 4) == 0 ? below(random, 4) : below(random, 2500);
    const std::string layout = random_layout(random, records);
    const OutputForm form = random_form(random);
    SCOPED_TRACE("layout " + std::to_string(i) + " as " + text_of(form) + "\n" + layout);
    PreparedLayout prepared;
    ASSERT_NO_FATAL_FAILURE(prepare(layout, prepared));
    const auto stream = stream_of(prepared, form);
    const std::string whole = taken(*stream, all_of(prepared.layout().records), true);
    Checksum expected;
    expected.add(whole);

    const std::uint64_t count = 1 + below(random, below(random, 2) == 0 ? 5 : 70);
    std::vector<std::string> parts(count);
    for (std::uint64_t turn = 0, place = below(random, count); turn < count; ++turn) {
      // Backwards, from anywhere.
      place = place == 0 ? count - 1 : place - 1;
      const RecordRange range = records_of({place + 1, count}, prepared.layout().records);
      ASSERT_LE(range.size().number(), records / count + 1);
      parts[place] = taken(*stream, range, place == 0);
    }
    std::string joined;
    Checksum sum;
    for (const std::string& part : parts) {
      Checksum own;
      own.add(part);
      sum.append(own);
      joined += part;
    }
    ASSERT_EQ(joined, whole) << count << " parts";
    ASSERT_EQ(sum.value(), expected.value());
    ASSERT_EQ(sum.bytes(), whole.size());
  }
}

TEST_F(PartsTest, TellsTheItemOfAByte) {
  constexpr Steps records = 60'000;
  const std::string layout = "[layout]\nkind = \"record\"\nrecords = " + std::to_string(records) +
                             "\ndata = \"d.csv\"\n" + item_text(some_values[0], 1, 0) +
                             item_text(some_values[3], 2, 0);
  PreparedLayout prepared;
  ASSERT_NO_FATAL_FAILURE(prepare(layout, prepared));
  OutputForm csv = {.is_data_file = false, .format = {}};
  csv.format.header = true;
  for (const OutputForm& form : {OutputForm{}, csv}) {
    const auto stream = stream_of(prepared, form);
    const RecordRange range = records_of({2, 3}, prepared.layout().records);
    for (int i = 0; i < 30; ++i) {
      stream->go_to(range, false);
      RecordNumber before = range.first;
      std::string bytes(stream->next());
      if (i % 2 == 1) {
        before = before + stream->records();
        bytes = stream->next();
      }
      const std::size_t offset = below(random, bytes.size());
      const std::string text = bytes.substr(0, offset);
      const RecordPlace place = stream->place_of(offset);
      ASSERT_EQ(place.record, before + RecordCount(static_cast<std::uint64_t>(
                                           std::count(text.begin(), text.end(), '\n'))));
      if (std::string_view("\r\n,").find(bytes[offset]) != std::string_view::npos) continue;
      const std::string line = text.substr(text.rfind('\n') + 1);
      ASSERT_EQ(place.item, line.find(',') == std::string::npos ? "I1" : "I2") << line;
    }
  }
}

TEST_F(PartsTest, ChecksumFindsDamage) {
  std::string text(5000, '\0');
  for (char& byte : text) byte = static_cast<char>(below(random, 256));
  const auto checksum = [](std::string_view bytes) {
    Checksum sum;
    sum.add(bytes);
    return sum.value();
  };
  // The value is that of the number which the bytes are.
  __extension__ using Wide = unsigned __int128;
  Wide value = 0;
  for (const char byte : text) {
    value = (value * 256 + static_cast<unsigned char>(byte)) % Checksum::modulus;
  }
  ASSERT_EQ(checksum(text), static_cast<std::uint64_t>(value));
  for (int i = 0; i < 2000; ++i) {
    std::string damaged = text;
    const std::size_t place = below(random, text.size());
    const std::size_t other = below(random, text.size());
    if (i % 2 == 0) {
      damaged[place] =
          static_cast<char>(damaged[place] + 1 + static_cast<char>(below(random, 255)));
    } else {
      std::swap(damaged[place], damaged[other]);
    }
    if (damaged == text) continue;
    ASSERT_NE(checksum(damaged), checksum(text)) << place << " " << other;
  }
}

// The same layout in other words, and what it may differ in.
TEST_F(PartsTest, FingerprintTellsWhatTheBytesDependOn) {
  const std::string head = "[layout]\nkind = \"record\"\nrecords = 5\ndata = \"d.csv\"\n";
  const std::string items = item_text(some_values[0], 1, 0) + item_text(some_values[5], 2, 0);
  const auto print_of = [&](const std::string& layout, const OutputForm& form = {}) {
    PreparedLayout prepared;
    prepare(layout, prepared);
    return fingerprint(prepared, form);
  };
  write("list.txt", "a\nbc\n");
  const std::string print = print_of(head + items);
  EXPECT_EQ(print_of("# said\n[layout]\nrecords=5\ndata = \"e.csv\"\nkind = 'record'\n" + items),
            print);
  std::string other = items;
  EXPECT_NE(print_of(head + other.replace(other.find("311"), 3, "312")), print);
  EXPECT_NE(print_of("[layout]\nkind = \"record\"\nrecords = 6\ndata = \"d.csv\"\n" + items),
            print);
  EXPECT_NE(print_of(head + items, {.is_data_file = false, .format = {}}), print);
  write("list.txt", "ab\nc\n");
  EXPECT_NE(print_of(head + items), print);
}

TEST(ManifestTest, IsWholeOrNothing) {
  const Manifest manifest = {
      {3, 64}, {RecordNumber(31250), RecordNumber(46875)}, 12345, 0xABCDEF, "sql utf-8 table a b",
      "0f"};
  const std::string text = text_of(manifest);
  const auto read = parse_manifest(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->part, manifest.part);
  EXPECT_EQ(read->records, manifest.records);
  EXPECT_EQ(read->form, manifest.form);
  EXPECT_EQ(read->fingerprint, manifest.fingerprint);
  EXPECT_EQ(read->bytes, manifest.bytes);
  EXPECT_EQ(read->checksum, manifest.checksum);
  for (std::size_t size = 0; size < text.size(); ++size) {
    EXPECT_FALSE(parse_manifest(text.substr(0, size))) << size;
    std::string damaged = text;
    damaged[size] = damaged[size] == '0' ? '1' : '0';
    EXPECT_FALSE(parse_manifest(damaged)) << size;
  }
  EXPECT_FALSE(parse_manifest(text + "\n"));
}

}  // namespace
}  // namespace korvex::host
