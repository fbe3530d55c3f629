#include "host/parts/part.h"

#include <charconv>

namespace korvex::host {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::string_view part_mark = ".part-";
constexpr std::string_view parts_mark = "-of-";

std::optional<std::uint64_t> parse_number(std::string_view text) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<Part> part_of(std::string_view number, std::string_view parts) {
  const auto first = parse_number(number);
  const auto second = parse_number(parts);
  if (!first || !second || *first < 1 || *first > *second || *second > most_parts) {
    return std::nullopt;
  }
  return Part{*first, *second};
}

RecordNumber boundary(RecordCount records, std::uint64_t before, std::uint64_t parts) {
  return RecordNumber(static_cast<std::uint64_t>(Wide{records.number()} * before / parts));
}

}  // namespace

std::optional<Part> parse_part(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return std::nullopt;
  return part_of(text.substr(0, slash), text.substr(slash + 1));
}

std::string part_text(Part part) {
  return std::to_string(part.number) + " of " + std::to_string(part.parts);
}

RecordRange records_of(Part part, RecordCount records) {
  return {boundary(records, part.number - 1, part.parts),
          boundary(records, part.number, part.parts)};
}

Part part_with(RecordNumber record, std::uint64_t parts, RecordCount records) {
  // Rounding moves it by one part at most.
  const Wide before = Wide{record.number()} * parts / records.number();
  Part part = {static_cast<std::uint64_t>(before) + 1, parts};
  while (records_of(part, records).end <= record) ++part.number;
  return part;
}

std::string part_path(const std::string& whole, Part part) {
  const std::string parts = std::to_string(part.parts);
  std::string number = std::to_string(part.number);
  number.insert(0, parts.size() - number.size(), '0');
  return whole + std::string(part_mark) + number + std::string(parts_mark) + parts;
}

std::string manifest_path(const std::string& file) { return file + ".manifest"; }

std::optional<PartName> parse_part_path(std::string_view path) {
  const std::size_t mark = path.rfind(part_mark);
  if (mark == std::string_view::npos) return std::nullopt;
  const std::string_view numbers = path.substr(mark + part_mark.size());
  const std::size_t of = numbers.find(parts_mark);
  if (of == std::string_view::npos) return std::nullopt;
  const auto part = part_of(numbers.substr(0, of), numbers.substr(of + parts_mark.size()));
  if (!part) return std::nullopt;
  PartName name{std::string(path.substr(0, mark)), *part};
  // A name with too few or too many zeros is another file's.
  if (part_path(name.whole, *part) != path) return std::nullopt;
  return name;
}

}  // namespace korvex::host
