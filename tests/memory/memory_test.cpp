// Memory runs out at each block that an operation asks for.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <new>
#include <stdexcept>

#include "control/col_main.h"
#include "memory/counted_memory.h"
#include "reliability/operations.h"
#include "settings/fmt_file.h"
#include "values/error_codes.h"

namespace korvex::test {
namespace {

// Operations that write nothing, prepared by those that do.
const Operation& writing_operation(const std::string& name) {
  for (const Operation& operation : operations()) {
    if (operation.name == name) return operation;
  }
  throw std::runtime_error(name);
}

std::shared_ptr<ClFmtFile> settings_file(const Place& place) {
  auto file = std::make_shared<ClFmtFile>();
  file->set_paths(place.file("out.fif"), place.work());
  return file;
}

std::function<std::int32_t()> prepare_load(Place& place) {
  writing_operation("Save").prepare(place)();
  return [file = settings_file(place)] {
    return number_of(
        file->load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file).code());
  };
}

std::function<std::int32_t()> prepare_validation(Place& place) {
  writing_operation("Save").prepare(place)();
  const auto file = settings_file(place);
  static_cast<void>(file->load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file));
  file->edited().texts = {"%3U'-'%2U", "001,01", "999,99", "1"};
  return [file] {
    return number_of(
        file->check_and_store(ItemNumber{9}, {attribute::plain_character, Flag::off, 6, 6, 0}));
  };
}

std::function<std::int32_t()> prepare_copy(Place& place) {
  writing_operation("Save").prepare(place)();
  const auto file = settings_file(place);
  static_cast<void>(file->load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file));
  return [file] {
    return number_of(file->copy_settings(ItemNumber{9}, ItemNumber{7},
                                         {attribute::decimal, Flag::off, 5, 5, 0}));
  };
}

std::function<std::int32_t()> prepare_control_load(Place& place) {
  writing_operation("ShortControlFile").prepare(place);
  const auto main = std::make_shared<ClColMain>();
  main->control_path = place.file("run.ctl");
  main->set_run_mode(run_mode::data_file_dialog);
  return [main] { return number_of(main->load()); };
}

std::vector<Operation> operations_in_memory() {
  std::vector<Operation> all = operations();
  std::erase_if(all, [](const Operation& operation) { return operation.crosses_file_systems; });
  all.push_back({.name = "Load", .prepare = prepare_load});
  all.push_back({.name = "Validation", .prepare = prepare_validation});
  all.push_back({.name = "Copy", .prepare = prepare_copy});
  all.push_back({.name = "ControlLoad", .prepare = prepare_control_load});
  return all;
}

struct MemoryOutcome : Outcome {
  bool ran_out = false;
};

class MemoryTest : public testing::TestWithParam<Operation> {
 protected:
  // One attempt, which leaves no block and no descriptor.
  MemoryOutcome attempt(std::int64_t n, bool for_good) const {
    Place place(false);
    MemoryOutcome outcome;
    const std::size_t descriptors = open_descriptors();
    const std::int64_t blocks = live_blocks();
    {
      const auto run = operation.prepare(place);
      const FailingMemory memory(n, for_good);
      outcome.code = run_caught(run);
      outcome.ran_out = memory.ran_out();
      std::vector<int>().swap(place.interface.percentages);
    }
    EXPECT_EQ(live_blocks(), blocks);
    EXPECT_EQ(open_descriptors(), descriptors);
    outcome.after = place.files();
    return outcome;
  }

  Files files_before() const {
    Place place(false);
    const auto run = operation.prepare(place);
    return place.files();
  }

  const Operation& operation = GetParam();

 private:
  // What promises no code for lack of memory may raise instead.
  static std::int32_t run_caught(const std::function<std::int32_t()>& run) {
    try {
      return run();
    } catch (const std::bad_alloc&) {
      return number_of(error::out_of_memory);
    }
  }
};

TEST_P(MemoryTest, RunsOutAtEachBlock) {
  constexpr std::int64_t never = 0;
  attempt(never, false);  // makes what the process keeps for good
  const Files before = files_before();
  const MemoryOutcome finished = attempt(never, false);
  ASSERT_EQ(finished.code, operation.success);
  int cases = 0;
  for (const bool for_good : {false, true}) {
    for (std::int64_t n = 1;; ++n) {
      SCOPED_TRACE(testing::Message() << "block " << n << (for_good ? " and all later ones" : ""));
      MemoryOutcome outcome = attempt(n, for_good);
      if (!outcome.ran_out) break;
      outcome.before = before;
      // Removing a file goes without the memory that it asks for.
      EXPECT_TRUE(ErrorCode{outcome.code} == error::out_of_memory ||
                  outcome.code == operation.success)
          << outcome.code;
      expect_nothing_lost(operation, outcome, finished.after);
      ++cases;
    }
  }
  EXPECT_GT(cases, 0);
  std::printf("%s: memory ran out %d times\n", operation.name.c_str(), cases);
}

INSTANTIATE_TEST_SUITE_P(Operations, MemoryTest, testing::ValuesIn(operations_in_memory()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace korvex::test
