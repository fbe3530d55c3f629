// What a record costs in the ways: indices by number, no files.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "host/sources/field.h"
#include "host/sources/record_sources.h"
#include "host/sources/text_list.h"
#include "host/ways/draw.h"
#include "host/ways/group_sizes.h"
#include "host/ways/permutation.h"
#include "host/ways/shares.h"
#include "host/ways/shuffle.h"
#include "host/ways/zipf.h"

namespace korvex {
namespace {

constexpr ways::Key key{0x0123456789ABCDEF};
constexpr std::uint64_t records = 1'000'000'000;

// Asks for records in a row, or far from each other.
template <class Ask>
void ask_records(benchmark::State& state, std::uint64_t stride, Ask ask) {
  std::uint64_t record = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ask(record));
    record = (record + stride) % records;
  }
  state.SetItemsProcessed(state.iterations());
}

constexpr std::uint64_t in_a_row = 1;
constexpr std::uint64_t anywhere = 382'124'239;

template <class Scheme>
void at(benchmark::State& state, Scheme scheme, std::uint64_t stride) {
  ask_records(state, stride, [&](std::uint64_t record) { return scheme.at(record); });
}

// Many records at once.
template <class Scheme>
void take(benchmark::State& state, Scheme scheme) {
  std::vector<std::uint64_t> indices(sources::TextBlock::most_texts);
  std::uint64_t record = 0;
  for (auto _ : state) {
    std::iota(indices.begin(), indices.end(), record);
    scheme.take(indices);
    benchmark::DoNotOptimize(indices.data());
    record = (record + indices.size()) % records;
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(indices.size()));
}

void make_permutation(benchmark::State& state, std::uint64_t n) {
  ask_records(state, in_a_row, [n](std::uint64_t record) {
    return ways::Permutation(key, n, {.round = record}).at(record % n);
  });
}

void share(benchmark::State& state, std::uint64_t stride) {
  ways::ExactShares shares(key, ways::Proportions::of_share({1, 20}), records);
  ask_records(state, stride, [&](std::uint64_t record) { return shares.category_of(record); });
}

ways::GroupSizes groups() {
  return *ways::GroupSizes::make({key}, records, records / 3, {0, 7, ways::Shape::even, {}});
}

void member(benchmark::State& state, std::uint64_t stride) {
  const ways::GroupSizes sizes = groups();
  ask_records(state, stride, [&](std::uint64_t record) { return sizes.member(record).parent; });
}

// Ten fields from lists of 300 texts and three keys, as one record.
void thirteen_fields(benchmark::State& state) {
  std::vector<std::string> values;
  for (int i = 0; i < 300; ++i) values.push_back("text number " + std::to_string(i));
  const auto list = sources::TextList::of_values(values);
  std::vector<sources::Field> fields;
  for (std::uint64_t i = 0; i < 10; ++i) {
    fields.emplace_back(sources::make_list_source(list),
                        sources::shuffled({i}, values.size(), sources::End::repeat));
  }
  for (int i = 0; i < 3; ++i) {
    const auto shared = std::make_shared<sources::Groups>(groups());
    fields.emplace_back(sources::make_line_source(shared), sources::forward());
  }
  std::string line;
  ask_records(state, in_a_row, [&](std::uint64_t record) {
    line.clear();
    if (record % sources::TextBlock::most_texts == 0) {
      for (sources::Field& field : fields) field.expect(record, sources::TextBlock::most_texts);
    }
    for (sources::Field& field : fields) {
      line += field.text(record).value_or("");
      line += ',';
    }
    return line.data();
  });
}

void register_all() {
  const auto add = [](const std::string& name, auto run) {
    benchmark::RegisterBenchmark(name.c_str(), run);
  };
  for (const std::uint64_t n : {std::uint64_t{6}, std::uint64_t{64}, std::uint64_t{65},
                                std::uint64_t{300}, std::uint64_t{1'000'003}, ways::most_indices}) {
    const std::string size = "/" + std::to_string(n);
    add("permutation" + size, [n](auto& state) { at(state, ways::Permutation(key, n), 0); });
    add("permutation_made" + size, [n](auto& state) { make_permutation(state, n); });
    add("shuffle" + size, [n](auto& state) { at(state, ways::Shuffle(key, n), in_a_row); });
    add("shuffle_together" + size, [n](auto& state) { take(state, ways::Shuffle(key, n)); });
    add("shuffle_anywhere" + size,
        [n](auto& state) { at(state, ways::Shuffle(key, n), anywhere); });
    add("zipf" + size, [n](auto& state) { at(state, ways::Zipf(key, n, {}), in_a_row); });
  }
  add("draw", [](auto& state) {
    ask_records(state, in_a_row, [](std::uint64_t record) { return draw_below(key, record, 300); });
  });
  add("share", [](auto& state) { share(state, in_a_row); });
  add("share_anywhere", [](auto& state) { share(state, anywhere); });
  add("member", [](auto& state) { member(state, in_a_row); });
  add("member_anywhere", [](auto& state) { member(state, anywhere); });
  add("thirteen_fields", thirteen_fields);
}

}  // namespace
}  // namespace korvex

int main(int argc, char** argv) {
  korvex::register_all();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
