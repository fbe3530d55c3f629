// What a record costs, one by one, by the kind of its one element, and what it costs to go to
// any record: no file, no driver.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "courses/line_block.h"
#include "run/run.h"
#include "settings/fmt_file.h"
#include "values/attributes.h"
#include "values/records.h"

namespace korvex {
namespace {

constexpr ItemNumber item_number{1};
constexpr SettingsLevel level{1};
constexpr std::int32_t records = 1;

constexpr std::size_t block_size = 64 * 1024;

// Places without a pattern over more records than any item has values: a stride that shares no
// factor with the range visits all of them.
constexpr Steps seek_range = 1'000'000'000'000'000'000;
constexpr Steps seek_stride = 618'033'988'749'894'849;

struct Workload {
  const char* name;
  ItemAttributes item;
  RangeTexts texts;
};

constexpr ItemAttributes date_item = {.attribute = attribute::date,
                                      .signed_flag = Flag::off,
                                      .length = 8,
                                      .digits = 8,
                                      .decimals = 0};

const Workload workloads[] = {
    {"number_10U", {attribute::decimal, Flag::off, 10, 10, 0}, {"%10U", "1", "9999999999", "1"}},
    {"signed_number_5D", {attribute::decimal, Flag::on, 6, 5, 0}, {"%5D", "1", "99999", "1"}},
    {"decimal_number_6.2U",
     {attribute::decimal, Flag::off, 9, 8, 2},
     {"%6.2U", "0.01", "999999.99", "0.01"}},
    {"letters_5S", {attribute::character, Flag::off, 5, 5, 0}, {"%5S", "AAAAA", "ZZZZZ", "1"}},
    {"full_width_2N",
     {attribute::national, Flag::off, 4, 2, 0},
     {"%2N", "\x82\xa0\x82\xa0", "\x82\xf1\x82\xf1", "1"}},
    {"date_4YMD", date_item, {"%4YMD", "19700101", "20380119", "1"}},
    {"unchecked_date_2YMA", date_item, {"%2YMA", "700101", "991231", "1"}},
    {"time_T", {attribute::time, Flag::off, 6, 6, 0}, {"%T", "000000", "235959", "1"}},
    {"timestamp_TS",
     {attribute::timestamp, Flag::off, 15, 15, 0},
     {"%TS", "19700101 090000", "20380119 031407", "9"}},
    {"fixed_and_letters_5s",
     {attribute::character, Flag::off, 10, 10, 0},
     {"CUST-'%5s", "aaaaa", "zzzzz", "1"}},
};

// Checked as settings that a user enters. They are of no file, and nothing is saved.
ErrorCode store_settings(const Workload& workload, ClFmtFile& settings) {
  settings.set_run_mode(run_mode::settings_only);
  settings.begin(level, StoredRecords{records}, layout_kind::record_file);
  settings.edited().texts = workload.texts;
  settings.edited().choices.exceeded_action = exceeded_action::repeat;
  return settings.check_and_store(item_number, workload.item);
}

void assemble_records(benchmark::State& state, const Workload& workload, bool seeks) {
  ClColMain main;
  main.items.push_back(std::make_unique<ClDGCol>());
  main.items.back()->item_number = item_number;
  Run run;
  if (store_settings(workload, main.settings) != error::none ||
      run.prepare(main, {layout_kind::record_file, false}, {}) != error::none) {
    return state.SkipWithError("settings refused");
  }
  LineBlock lines(block_size);
  Steps place = 0;
  for (auto _ : state) {
    if (seeks) {
      place = (place + seek_stride) % seek_range;
      run.seek(place);
    }
    if (run.append(lines, 1) != error::none) return state.SkipWithError("the run failed");
    if (lines.size() >= block_size) {
      benchmark::DoNotOptimize(lines.data());
      benchmark::ClobberMemory();
      lines.clear();
    }
  }
  state.SetItemsProcessed(state.iterations());
}

}  // namespace
}  // namespace korvex

int main(int argc, char** argv) {
  for (const korvex::Workload& workload : korvex::workloads) {
    for (const bool seeks : {false, true}) {
      const std::string name = std::string(workload.name) + (seeks ? "/seek" : "");
      benchmark::RegisterBenchmark(name.c_str(), [&workload, seeks](benchmark::State& state) {
        korvex::assemble_records(state, workload, seeks);
      });
    }
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
