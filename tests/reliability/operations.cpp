#include "reliability/operations.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "control/col_main.h"
#include "lists/enumeration_check.h"
#include "platform/replacing_file.h"
#include "platform/settings_store.h"
#include "run/generate_data_file.h"
#include "run/log_file.h"
#include "settings/settings_writer.h"
#include "support/control_bytes.h"
#include "support/settings_bytes.h"

namespace korvex::test {

namespace {

using Attempt = std::function<std::int32_t()>;

// What ends with a code.
Attempt numbered(auto run) {
  return [run = std::move(run)] { return number_of(run()); };
}

constexpr const char* memory_folder = "/dev/shm";

// Where synchronising costs nothing.
std::filesystem::path fast_folder() {
  return std::filesystem::is_directory(memory_folder) ? memory_folder
                                                      : std::filesystem::temp_directory_path();
}

void expect(bool holds, const char* step) {
  if (!holds) throw std::runtime_error(step);
}

std::shared_ptr<ClFmtFile> load_settings(const Place& place, std::int32_t expected) {
  auto file = std::make_shared<ClFmtFile>();
  file->set_run_mode(run_mode::data_file_dialog);
  file->set_paths(place.file("out.fif"), place.work());
  expect(file->load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file) == expected,
         "load");
  return file;
}

std::shared_ptr<ClFmtFile> change_settings(const Place& place, std::int32_t expected) {
  const auto file = load_settings(place, expected);
  file->edited().texts = {"%5U", "1", "99999", "1"};
  expect(file->check_and_store(ItemNumber{7}, {attribute::decimal, Flag::off, 5, 5, 0}) == 0,
         "store");
  return file;
}

Attempt prepare_save(Place& place) {
  write_file(place.file("out.fif"), settings_bytes({2, 1}));
  return numbered(
      [file = change_settings(place, 2)] { return file->save(quotation::double_mark); });
}

Attempt prepare_first_save(Place& place) {
  std::filesystem::remove(place.file("out.fif"));
  return numbered(
      [file = change_settings(place, 0)] { return file->save(quotation::double_mark); });
}

Attempt prepare_save_through_link(Place& place) {
  std::filesystem::create_directory(place.file("elsewhere"));
  write_file(place.file("elsewhere/real.fif"), settings_bytes({1}));
  std::filesystem::remove(place.file("out.fif"));
  std::filesystem::create_symlink("elsewhere/real.fif", place.file("out.fif"));
  return numbered([file = change_settings(place, 1)] { return file->save(quotation::none); });
}

std::string previous_version() {
  return header_bytes(1, 1, 1, "TAMBO DATA FORMAT V2L1") +
         level_bytes(1, header_size + level_size, 50, previous_column_size + element_size, 1) +
         previous_column_bytes({}) + element_bytes({});
}

Attempt prepare_upgrade(Place& place) {
  write_file(place.file("out.fif"), previous_version());
  return numbered([path = place.file("out.fif")] {
    return upgrade_settings_file(path, layout_kind::record_file);
  });
}

// A control file of one item that leads into the place.
void write_control_file(const Place& place, std::int32_t records, const std::string& item) {
  const ControlHead head = {.records = records,
                            .data_path = place.file("out.csv"),
                            .settings_path = place.file("out.fif"),
                            .work_folder = place.work()};
  write_file(place.file("run.ctl"), control_header(head, 1) + item);
}

Attempt prepare_short_control_file(Place& place) {
  write_control_file(place, 10, control_item({}));
  const auto main = std::make_shared<ClColMain>();
  main->control_path = place.file("run.ctl");
  main->set_run_mode(run_mode::data_file_dialog);
  expect(main->load() == 0, "load");
  main->settings.set_run_mode(run_mode::data_file_dialog);
  expect(main->settings.load(SettingsLevel{1}, StoredRecords{10}, layout_kind::record_file) == 0,
         "load settings");
  main->settings.edited().texts = {"%5U", "1", "9", "1"};
  expect(
      main->settings.check_and_store(ItemNumber{30}, {attribute::decimal, Flag::off, 5, 5, 0}) == 0,
      "store");
  expect(main->settings.save(quotation::none) == 0, "save");
  return numbered([main] { return main->write_temporary_control_file(); });
}

Attempt prepare_log(Place& place) {
  return numbered([path = place.file("out.log")] {
    return write_log(path, {StoredRecords{5}, SettingsLevel{1}, std::vector<ItemNumber>(3)});
  });
}

Attempt prepare_log_over_old(Place& place) {
  write_file(place.file("out.log"), "the log of an older run");
  return prepare_log(place);
}

Attempt prepare_list(Place& place, const std::string& lines) {
  write_file(place.file("list.txt"), lines);
  const auto main = std::make_shared<ClColMain>();
  return [main, path = place.file("list.txt")] {
    FmtColRec settings = {};
    settings.attribute = attribute::decimal;
    settings.length = settings.digits = 5;
    ClEnumDataList values;
    const Result<std::size_t> count = load_enumeration(*main, path, settings, values);
    return count ? static_cast<std::int32_t>(*count) : number_of(count.code());
  };
}

Attempt prepare_error_file(Place& place) { return prepare_list(place, "1\nx\n2\n1-\n"); }

Attempt prepare_good_list(Place& place) { return prepare_list(place, "1\n22\n"); }

Attempt prepare_output(Place& place) {
  write_file(place.file("out.txt"), "the output of an older run");
  return [path = place.file("out.txt")] {
    platform::ReplacingFile file;
    platform::FileCause cause = file.create(path, {});
    if (cause == platform::FileCause::none) cause = file.write("new", 3);
    if (cause == platform::FileCause::none) cause = file.finish();
    return cause == platform::FileCause::none ? 0 : -26;
  };
}

Attempt prepare_store(Place& place) {
  const platform::SettingsStore store("Host");
  expect(store.write("Name", "old") == platform::StoreStatus::ok, "first value");
  static_cast<void>(place);
  return [store] { return static_cast<std::int32_t>(store.write("Name", "new")); };
}

Attempt prepare_first_store(Place&) {
  const platform::SettingsStore store("Host");
  return [store] { return static_cast<std::int32_t>(store.write("Name", "new")); };
}

// Enough records for several writes.
constexpr std::int32_t many_records = 40'000;

std::shared_ptr<ClGenerateDataFile> make_generator(Place& place) {
  constexpr ItemNumber item_number{7};
  write_control_file(place, many_records, Bytes().i32(number_of(item_number)));
  const auto file = load_settings(place, 0);
  file->edited().texts = {"'0123456789'%3U", "1", "999", "1"};
  file->edited().choices.exceeded_action = exceeded_action::repeat;
  expect(
      file->check_and_store(item_number, {attribute::plain_character, Flag::off, 13, 13, 0}) == 0,
      "store");
  expect(file->save(quotation::none) == 0, "save");
  // The limits' file is made by the first run.
  read_limits(platform::SettingsStore("Host"));
  const auto generator = std::make_shared<ClGenerateDataFile>();
  generator->main.control_path = place.file("run.ctl");
  generator->output_option = OutputOption::guarded;
  return generator;
}

Attempt prepare_generation(Place& place) {
  return numbered([generator = make_generator(place)] { return generator->run(); });
}

Attempt prepare_generation_over_old(Place& place) {
  write_file(place.file("out.csv"), "the data of an older run");
  write_file(place.file("out.log"), "the log of an older run");
  return prepare_generation(place);
}

Attempt prepare_cancelled_generation(Place& place) {
  place.interface.cancel_at_poll = 50;  // of a hundred, one for each percent
  return prepare_generation(place);
}

// Takes a folder's name, which differs from place to place, out of a file's bytes.
void hide(const std::string& folder, std::string& bytes) {
  for (std::size_t at = 0; (at = bytes.find(folder, at)) != std::string::npos;) {
    bytes.replace(at, folder.size(), "(folder)");
  }
}

// What the settings store answers.
constexpr auto store_failed = static_cast<std::int32_t>(platform::StoreStatus::failure);

// Short, where the bytes themselves would fill pages.
std::string describe(const Files& files) {
  std::string text;
  for (const auto& [name, bytes] : files) {
    text += name + ": " + std::to_string(bytes.size()) + " bytes\n";
  }
  return text;
}

bool holds(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

Place::Place(bool crosses_file_systems)
    : crosses_(crosses_file_systems),
      home_(fast_folder()),
      work_(crosses_ ? std::filesystem::temp_directory_path() : fast_folder()) {}

bool Place::crosses_file_systems() const {
  struct stat here = {};
  struct stat there = {};
  return ::stat(home_.path().c_str(), &here) == 0 && ::stat(work_.path().c_str(), &there) == 0 &&
         here.st_dev != there.st_dev;
}

Files Place::files() const {
  Files found;
  for (const TempFolder* folder : {&home_, &work_}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder->path())) {
      if (!entry.is_regular_file()) continue;
      const std::string name = std::filesystem::relative(entry.path(), folder->path());
      std::string bytes = read_file(entry.path());
      for (const TempFolder* each : {&home_, &work_}) hide(each->path(), bytes);
      found[name.ends_with(".TMP") ? "temporary" : name] = bytes;
    }
  }
  return found;
}

const std::vector<Operation>& operations() {
  const std::vector<std::int32_t> of_lists = {-114, -115, -111, -121, -122, -123};
  const std::string data = "out.csv";
  const std::string lock = "config/Host/Korvex.conf.lock";
  constexpr std::int32_t report_failed = -124;
  static const std::vector<Operation> all = {
      {"Save", prepare_save, {-2}, true},
      {"FirstSave", prepare_first_save, {-2}, true},
      {"SaveThroughLink", prepare_save_through_link, {-2}, true},
      {"SaveAcrossFileSystems", prepare_save, {-2}, true, {}, {}, 0, -26, -27, true},
      {"Upgrade", prepare_upgrade, {-2, -3}, true},
      {"ShortControlFile", prepare_short_control_file, {-2}},
      {"Log", prepare_log, {-2}},
      {"LogOverOld", prepare_log_over_old, {-2}, false, {}, {"out.log"}},
      {"ErrorFile",
       prepare_error_file,
       of_lists,
       false,
       {},
       {},
       -135,
       report_failed,
       report_failed},
      {"GoodList", prepare_good_list, of_lists, false, {}, {}, 2},
      {"Output", prepare_output, {}, false, {}, {}, 0, -26, -26},
      {"Store", prepare_store, {}, true, {}, {}, 0, store_failed, store_failed},
      {"FirstStore", prepare_first_store, {}, true, {lock}, {}, 0, store_failed, store_failed},
      {"Generation", prepare_generation, {-2, -3}, false, {data}},
      {"GenerationOverOld",
       prepare_generation_over_old,
       {-2, -3},
       false,
       {data},
       {data, "out.log"}},
      {"CancelledGeneration", prepare_cancelled_generation, {-2, -3}, false, {}, {}, -79},
  };
  return all;
}

void expect_nothing_lost(const Operation& operation, const Outcome& outcome,
                         const Files& finished) {
  const bool succeeded = outcome.code == operation.success;
  if (succeeded && !outcome.removal_failed) {
    EXPECT_TRUE(outcome.after == finished) << describe(outcome.after);
    return;
  }
  for (const auto& [name, bytes] : outcome.after) {
    const auto old = outcome.before.find(name);
    const auto fresh = finished.find(name);
    const bool is_old = old != outcome.before.end() && old->second == bytes;
    const bool is_new = fresh != finished.end() && fresh->second == bytes;
    const bool may_be_new = succeeded || holds(operation.may_stay, name);
    const bool is_left_over =
        outcome.removal_failed && (old == outcome.before.end() || holds(operation.may_go, name));
    EXPECT_TRUE(is_old || (is_new && may_be_new) || is_left_over)
        << name << " has " << bytes.size() << " bytes";
  }
  for (const auto& [name, bytes] : outcome.before) {
    EXPECT_TRUE(outcome.after.contains(name) || holds(operation.may_go, name)) << name;
  }
}

std::size_t open_descriptors() {
  namespace fs = std::filesystem;
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

}  // namespace korvex::test
