#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "settings/fmt_file.h"
#include "support/control_bytes.h"
#include "support/environment.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace korvex::test {

// What a control file in the short form says; empty paths become those of the setup.
struct ControlFields {
  std::int32_t records = 3, layout_kind = 1, level = 1;
  std::vector<std::int32_t> items = {1};
  std::string data = "", settings = "", work = "";
};

// One item's settings as they are saved; without a format the initial value.
struct SavedItem {
  std::int32_t number = 1;
  ItemAttributes item = {attribute::decimal, Flag::off, 20, 18, 0};
  RangeTexts texts = {"%3U", "1", "999", "1"};
  ExceededAction action = exceeded_action::repeat;
  std::int32_t repeat_level = 0;  // for none; one time each
};

// A fresh folder with everything that a generation run needs, and a scripted user interface. The
// user's own settings are out of reach.
class GenerationSetup {
 public:
  std::string control() const { return folder.file("run.ctl"); }
  std::string settings() const { return folder.file("out.fif"); }
  std::string data() const { return folder.file("out.csv"); }
  std::string log() const { return folder.file("out.log"); }

  void write_control(const ControlFields& fields = {}) const {
    const auto count = static_cast<std::int32_t>(fields.items.size());
    Bytes bytes;
    bytes.raw(
        control_header({.records = fields.records,
                        .layout_kind = fields.layout_kind,
                        .level = fields.level,
                        .data_path = fields.data.empty() ? data() : fields.data,
                        .settings_path = fields.settings.empty() ? settings() : fields.settings,
                        .work_folder = fields.work.empty() ? folder.path() : fields.work},
                       count));
    for (const std::int32_t item : fields.items) bytes.i32(item);
    write_file(control(), std::string(bytes));
  }

  void save_settings(const std::vector<SavedItem>& items = {{}}, std::int32_t layout_kind = 1,
                     std::int32_t quotation = 0, std::int32_t level = 1) const {
    ClFmtFile file;
    file.set_paths(settings(), folder.path());
    expect(file.load(SettingsLevel{level}, StoredRecords{}, LayoutKind{layout_kind}).code(),
           "load");
    for (const SavedItem& item : items) {
      if (item.texts.format.empty()) {
        expect(file.set_initial_value(ItemNumber{item.number}, item.item), "initial value");
        continue;
      }
      file.edited().texts = item.texts;
      file.edited().choices.exceeded_action = item.action;
      expect(file.check_and_store(ItemNumber{item.number}, item.item), item.texts.format);
      if (item.repeat_level == 0) continue;
      FmtColRec& record = file.find_column(ItemNumber{item.number})->record;
      record.repeat_level = RepeatLevel{item.repeat_level};
      record.repeat_flag = Flag::on;
      record.repeat_count = 1;
      file.current_level()->record.repeat_flag = 1;
    }
    expect(file.save(Quotation{quotation}), "save");
  }

  // What is in the folder beside the files that the run was given.
  std::vector<std::string> outputs() const {
    std::vector<std::string> names = folder.names();
    std::erase_if(names, [](const std::string& name) {
      return name == "config" || name == "run.ctl" || name == "out.fif";
    });
    return names;
  }

  TempFolder folder;
  ScriptedInterface interface;

 private:
  static void expect(ErrorCode result, const std::string& step) {
    if (result != error::none)
      throw std::runtime_error(step + ": " + std::to_string(number_of(result)));
  }

  ScopedVariable config_{"XDG_CONFIG_HOME", folder.file("config")};
  platform::UserInterfaceOverride override_{interface};
};

using Names = std::vector<std::string>;

}  // namespace korvex::test
