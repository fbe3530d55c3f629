#pragma once

#include <optional>
#include <string>
#include <vector>

#include "control/limits.h"
#include "format/record_text.h"
#include "generate/generate_data_file.h"
#include "support/generation_setup.h"

namespace korvex::test {

// One item of a run: a range, unless it has the lines of a list, or neither and thus the initial
// value.
struct RunItem {
  std::int32_t number = 1;
  ItemAttributes item = {4, 0, 20, 18, 0};
  RangeTexts texts = {};
  std::optional<std::string> list = std::nullopt;
  std::int32_t level = 0, count = 1;  // of its repeat; level 0 for none
  std::int32_t action = exceeded_action::repeat;
  std::string name = "", description = "";
  bool is_in_settings = true;
};

// What goes with the items of a run.
struct RunOptions {
  std::int32_t records = 3, layout_kind = 1, quotation = 0;
  std::int32_t repeat_flag = 1;  // of the level
};

// A folder with settings that repeat and take values from lists, and control files of both forms.
class RepeatSetup : public GenerationSetup {
 public:
  std::string list_path(std::int32_t number) const {
    return folder.file("list" + std::to_string(number) + ".txt");
  }
  std::string long_control() const { return folder.file("long.ctl"); }

  static void limit(const char* name, const std::string& value) {
    ASSERT_EQ(write_store_value(platform::SettingsStore(platform::host_key()), name, value), 0);
  }

  // Writes everything that the run reads.
  void write(const std::vector<RunItem>& items, const RunOptions& options = {}) const {
    write_settings(items, options);
    ControlFields fields = {.records = options.records, .layout_kind = options.layout_kind};
    fields.items.clear();
    for (const RunItem& item : items) fields.items.push_back(item.number);
    write_control(fields);
    write_long_control(items, options);
  }

  // Changes what the settings file holds behind the back of all checks.
  template <typename Change>
  void change_settings(const RunOptions& options, Change change) const {
    ClFmtFile file;
    file.set_paths(settings(), folder.path());
    ASSERT_TRUE(file.load(1, options.records, options.layout_kind));
    change(file);
    ASSERT_EQ(file.save(options.quotation), 0);
  }

  // Generates from the short control file; the data without its line ends, a record an entry.
  std::vector<std::string> generate(std::int32_t expected_result = 0) const {
    ClGenerateDataFile generator;
    generator.main.control_path = control();
    EXPECT_EQ(generator.run(), expected_result);
    std::vector<std::string> lines;
    const std::string bytes = read_file(data());
    for (std::size_t begin = 0, end = 0; (end = bytes.find('\n', begin)) != std::string::npos;) {
      lines.push_back(bytes.substr(begin, end - begin));
      begin = end + 1;
    }
    return lines;
  }

 private:
  void write_settings(const std::vector<RunItem>& items, const RunOptions& options) const {
    platform::remove_file(settings());
    change_settings(options, [&](ClFmtFile& file) {
      file.current_level()->record.repeat_flag = options.repeat_flag;
      for (const RunItem& item : items) {
        if (item.is_in_settings) write_item(file, item);
      }
    });
  }

  void write_item(ClFmtFile& file, const RunItem& item) const {
    if (item.texts.format.empty()) {
      ASSERT_EQ(file.set_initial_value(item.number, item.item), 0);
    } else {
      file.edited().texts = item.texts;
      ASSERT_EQ(file.check_and_store(item.number, item.item), 0) << item.texts.format;
    }
    FmtColRec& record = file.find_column(item.number)->record;
    record.exceeded_action = item.action;
    record.repeat_flag = item.level != 0 ? 1 : 0;
    record.repeat_level = item.level;
    record.repeat_count = item.count;
    if (!item.list) return;
    record.generation_type = generation_type::enumeration;
    store_field(record.enumeration_path, list_path(item.number));
    write_file(list_path(item.number), *item.list);
  }

  void write_long_control(const std::vector<RunItem>& items, const RunOptions& options) const {
    std::vector<ControlItemFields> records;
    for (const RunItem& item : items) {
      records.push_back(control_fields(item.number, item.name, item.description, item.item));
    }
    write_file(long_control(), control_bytes({.records = options.records,
                                              .layout_kind = options.layout_kind,
                                              .data_path = data(),
                                              .settings_path = settings(),
                                              .work_folder = folder.path()},
                                             records));
  }
};

}  // namespace korvex::test
