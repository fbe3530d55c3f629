#include "host/imports/type_samples.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "host/imports/calendar_days.h"

namespace korvex::host {

namespace {

using Shape = TypeShape::Kind;

constexpr std::array<std::string_view, 12> sample_words = {"amber",  "birch", "cedar", "delta",
                                                           "ember",  "fern",  "grove", "harbor",
                                                           "island", "jade",  "kiln",  "lake"};

std::string word(std::uint64_t index) {
  const std::uint64_t round = index / sample_words.size();
  return std::string(sample_words[index % sample_words.size()]) +
         (round == 0 ? "" : std::to_string(round));
}

std::string hexadecimal(std::uint64_t number, int digits) {
  char text[17];
  std::snprintf(text, sizeof text, "%0*llx", digits, static_cast<unsigned long long>(number));
  return text;
}

std::string day(std::uint64_t index) {
  using namespace std::chrono;
  constexpr std::uint64_t most_days = 36'500;
  return sql_day(sys_days(year{2000} / 1 / 1) + days(index % most_days));
}

std::string hour(std::uint64_t index) {
  const std::uint64_t of_day = index % 24;
  return day(index / 24) + (of_day < 10 ? " 0" : " ") + std::to_string(of_day) + ":00:00";
}

std::string address(std::uint64_t index) {
  return "10." + std::to_string(index / 65'536 % 256) + "." + std::to_string(index / 256 % 256) +
         "." + std::to_string(index % 256);
}

// The size in `bit(8)` or `varchar(3)[]`.
std::size_t size_in(const std::string& declared, std::size_t size) {
  if (const std::size_t open = declared.find('('); open != std::string::npos) {
    std::from_chars(declared.data() + open + 1, declared.data() + declared.size(), size);
  }
  return size;
}

std::string bits(std::uint64_t index, std::size_t size) {
  std::string text(size, '0');
  for (std::size_t place = size; place > 0 && index > 0; index >>= 1) {
    text[--place] = (index & 1) != 0 ? '1' : '0';
  }
  return text;
}

using Maker = std::string (*)(std::uint64_t index);

struct NamedMaker {
  std::string_view name;
  Maker make;
};

std::string number(std::uint64_t index) { return std::to_string(index + 1); }

constexpr Maker whole_numbers = [](std::uint64_t i) { return number(i); };
constexpr Maker text = [](std::uint64_t i) { return word(i); };

// In the order of their kinds. What counts on goes up with the index, for the bounds of ranges.
constexpr std::array makers = std::to_array<NamedMaker>({
    {"int2", [](std::uint64_t i) { return std::to_string(i % 30'000 + 1); }},
    {"int4", whole_numbers},
    {"int8", whole_numbers},
    {"numeric", whole_numbers},
    {"float4", whole_numbers},
    {"float8", whole_numbers},
    {"oid", whole_numbers},
    {"xid", whole_numbers},
    {"money", [](std::uint64_t i) { return std::to_string(i + 1) + ".99"; }},
    {"bool", [](std::uint64_t i) { return std::string(i % 2 == 0 ? "true" : "false"); }},
    {"text", text},
    {"varchar", text},
    {"bpchar", text},
    {"name", text},
    {"citext", text},
    {"char", [](std::uint64_t i) { return std::string(1, static_cast<char>('A' + i % 26)); }},
    {"date", day},
    {"timestamp", hour},
    {"timestamptz", hour},
    {"time", [](std::uint64_t i) { return hour(i).substr(11); }},
    {"timetz", [](std::uint64_t i) { return hour(i).substr(11); }},
    {"interval", [](std::uint64_t i) { return std::to_string(i + 1) + " hours"; }},
    {"uuid",
     [](std::uint64_t i) { return "00000000-0000-4000-8000-" + hexadecimal(i + 1, 12); }},
    {"json", [](std::uint64_t i) { return "{\"" + word(i) + "\": " + number(i) + "}"; }},
    {"jsonb", [](std::uint64_t i) { return "{\"" + word(i) + "\": " + number(i) + "}"; }},
    {"jsonpath", [](std::uint64_t i) { return "$.\"" + word(i) + "\""; }},
    {"bytea", [](std::uint64_t i) { return "\\x" + hexadecimal(i + 1, 16); }},
    {"inet", address},
    {"cidr", [](std::uint64_t i) { return address(i) + "/32"; }},
    {"macaddr",
     [](std::uint64_t i) {
       return "02:00:" + hexadecimal(i >> 24 & 255, 2) + ":" + hexadecimal(i >> 16 & 255, 2) + ":" +
              hexadecimal(i >> 8 & 255, 2) + ":" + hexadecimal(i & 255, 2);
     }},
    {"macaddr8",
     [](std::uint64_t i) {
       return "02:00:00:ff:fe:" + hexadecimal(i >> 16 & 255, 2) + ":" +
              hexadecimal(i >> 8 & 255, 2) + ":" + hexadecimal(i & 255, 2);
     }},
    {"point", [](std::uint64_t i) { return "(" + number(i) + "," + number(i % 90) + ")"; }},
    {"line", [](std::uint64_t i) { return "{1,-1," + number(i) + "}"; }},
    {"lseg", [](std::uint64_t i) { return "[(0,0),(" + number(i) + ",1)]"; }},
    {"box", [](std::uint64_t i) { return "(" + number(i) + ".5,1),(" + number(i) + ",0)"; }},
    {"path", [](std::uint64_t i) { return "[(0,0),(" + number(i) + ",1),(2,0)]"; }},
    {"polygon", [](std::uint64_t i) { return "((0,0),(" + number(i) + ",0),(0,1))"; }},
    {"circle", [](std::uint64_t i) { return "<(" + number(i) + ",1),1>"; }},
    {"xml", [](std::uint64_t i) { return "<item id=\"" + number(i) + "\">" + word(i) + "</item>"; }},
    {"tsvector", [](std::uint64_t i) { return "'" + word(i) + "':1 '" + word(i + 5) + "':2"; }},
    {"tsquery", [](std::uint64_t i) { return "'" + word(i) + "'"; }},
    {"hstore", [](std::uint64_t i) { return "\"" + word(i) + "\"=>\"" + number(i) + "\""; }},
    {"ltree", [](std::uint64_t i) { return "top." + word(i); }},
    {"cube", [](std::uint64_t i) { return "(" + number(i) + ",1)"; }},
    {"pg_lsn", [](std::uint64_t i) { return "0/" + hexadecimal(i + 1, 1); }},
});

// An element of an array or a composite value between its own quotation marks.
std::string element(const std::string& plain) {
  std::string quoted = "\"";
  for (const char letter : plain) {
    if (letter == '"' || letter == '\\') quoted += '\\';
    quoted += letter;
  }
  return quoted + '"';
}

std::optional<std::string> plain_text(const TypeShape& shape, const std::string& declared,
                                      std::uint64_t index) {
  if (shape.name == "bit" || shape.name == "varbit") return bits(index + 1, size_in(declared, 1));
  for (const NamedMaker& maker : makers) {
    if (maker.name != shape.name) continue;
    std::string made = maker.make(index);
    const bool is_text = maker.make == static_cast<Maker>(text);
    if (is_text) made.resize(std::min(made.size(), size_in(declared, made.size())));
    return made;
  }
  return std::nullopt;
}

constexpr std::uint64_t array_size = 2;
// Ranges begin so far from each other, and are half as long.
constexpr std::uint64_t range_distance = 10;

std::optional<std::string> joined(const TypeShape& shape, const std::string& declared,
                                  std::uint64_t index, std::uint64_t count,
                                  const std::string& ends) {
  std::string list;
  for (std::uint64_t i = 0; i < count; ++i) {
    const bool is_array = shape.kind == Shape::array;
    const TypeShape& part = shape.parts[is_array ? 0 : i];
    const auto text_of_part =
        sample_text(part, is_array ? declared : "", is_array ? index * count + i : index);
    if (!text_of_part) return std::nullopt;
    list += (i == 0 ? "" : ",") + element(*text_of_part);
  }
  return ends.front() + list + ends.back();
}

}  // namespace

std::optional<std::string> sample_text(const TypeShape& shape, const std::string& declared,
                                       std::uint64_t index) {
  switch (shape.kind) {
    case Shape::plain:
      return plain_text(shape, declared, index);
    case Shape::choice:
      if (shape.choices.empty()) return std::nullopt;
      return shape.choices[index % shape.choices.size()];
    case Shape::array:
      return joined(shape, declared, index, array_size, "{}");
    case Shape::composite:
      return joined(shape, declared, index, shape.parts.size(), "()");
    case Shape::range:
    case Shape::multirange: {
      const auto first = sample_text(shape.parts.front(), "", index * range_distance);
      const auto last =
          sample_text(shape.parts.front(), "", index * range_distance + range_distance / 2);
      if (!first || !last) return std::nullopt;
      const std::string range = "[" + *first + "," + *last + ")";
      return shape.kind == Shape::range ? range : "{" + range + "}";
    }
  }
  return std::nullopt;
}

}  // namespace korvex::host
