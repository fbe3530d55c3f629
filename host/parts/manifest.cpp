#include "host/parts/manifest.h"

#include <array>
#include <charconv>

#include "host/parts/digest.h"
#include "host/process/signals.h"
#include "platform/file.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

constexpr std::string_view title = "korvex part 1\n";
constexpr std::string_view digest_key = "digest ";
constexpr int hexadecimal_base = 16;

// The names of tables are the only part of a manifest that may be long.
constexpr std::size_t most_bytes = 64 * 1024;

std::string digest_of(std::string_view lines) {
  Digest digest;
  digest.add(lines);
  return digest.text();
}

std::string hexadecimal(std::uint64_t number) {
  std::array<char, 2 * sizeof number> digits;
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, hexadecimal_base);
  return std::string(digits.data(), end.ptr);
}

// Reads the lines of a manifest in their order.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}

  std::string_view value(std::string_view key) {
    std::string_view line = platform::take_until(text_, '\n');
    is_good_ = is_good_ && platform::take_until(line, ' ') == key;
    return line;
  }

  std::uint64_t number(std::string_view key, int base = 10) {
    const std::string_view digits = value(key);
    std::uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, number, base);
    is_good_ = is_good_ && failure == std::errc() && stop == end;
    return number;
  }

  bool is_good() const { return is_good_; }

 private:
  std::string_view text_;
  bool is_good_ = true;
};

}  // namespace

std::string mark_of(const Manifest& manifest) {
  return part_text(manifest.part) + " " + hexadecimal(manifest.checksum) + " " +
         manifest.fingerprint;
}

std::string text_of(const Manifest& manifest) {
  std::string text(title);
  const auto add = [&](std::string_view key, const std::string& value) {
    text.append(key).append(" ").append(value).append("\n");
  };
  add("part", std::to_string(manifest.part.number));
  add("parts", std::to_string(manifest.part.parts));
  add("before", std::to_string(manifest.records.first.number()));
  add("records", std::to_string(manifest.records.size().number()));
  add("bytes", std::to_string(manifest.bytes));
  add("checksum", hexadecimal(manifest.checksum));
  add("form", manifest.form);
  add("layout", manifest.fingerprint);
  return text + std::string(digest_key) + digest_of(text) + "\n";
}

std::optional<Manifest> parse_manifest(std::string_view text) {
  if (!text.starts_with(title)) return std::nullopt;
  Lines lines(text.substr(title.size()));
  Manifest manifest;
  manifest.part.number = lines.number("part");
  manifest.part.parts = lines.number("parts");
  manifest.records.first = RecordNumber(lines.number("before"));
  manifest.records.end = manifest.records.first + RecordCount(lines.number("records"));
  manifest.bytes = lines.number("bytes");
  manifest.checksum = lines.number("checksum", hexadecimal_base);
  manifest.form = lines.value("form");
  manifest.fingerprint = lines.value("layout");
  if (!lines.is_good() || text_of(manifest) != text) return std::nullopt;
  return manifest;
}

std::optional<Manifest> read_manifest(const std::string& path, bool* is_there) {
  check_interruption();
  platform::File file;
  const platform::FileCause cause = file.open_for_reading(path, platform::Sharing::unlocked);
  if (is_there != nullptr) *is_there = cause == platform::FileCause::none;
  std::string text(most_bytes, '\0');
  std::size_t size = 0;
  if (cause != platform::FileCause::none || !file.is_regular() ||
      file.read(text.data(), text.size(), size) != platform::FileCause::none) {
    return std::nullopt;
  }
  return parse_manifest(std::string_view(text).substr(0, size));
}

}  // namespace korvex::host
