#pragma once

#include <cctype>
#include <string>
#include <vector>

#include "control/user_limits.h"
#include "support/generation_setup.h"

namespace korvex::test {

// One item of a control file: by default a number of two digits that may be NULL.
struct DialogItem {
  std::int32_t number = 1;
  std::string name = "A";
  ItemAttributes attributes = {attribute::decimal, Flag::off, 2, 2, 0};
  std::int32_t null_allowed = 1;
  std::string description = "first";
};

inline constexpr ItemAttributes letters = {attribute::character, Flag::on, 3, 3, 0};

inline std::vector<DialogItem> three_items() {
  return {{}, {.number = 2, .name = "B"}, {.number = 3, .name = "C", .attributes = letters}};
}

struct DialogOptions {
  std::int32_t records = 3;
  std::int32_t layout_kind = 1;
  std::int32_t null_default = 0;
  std::string data = "";
};

// A folder with the long control file of a dialog; messages and file choices are scripted.
class DialogSetup : public GenerationSetup {
 public:
  void write(const std::vector<DialogItem>& items = three_items(),
             const DialogOptions& options = {}) const {
    std::vector<ControlItemFields> records;
    for (const DialogItem& item : items) {
      records.push_back(control_fields(item.number, item.name, item.description, item.attributes,
                                       item.null_allowed));
    }
    write_file(control(), control_bytes({.records = options.records,
                                         .layout_kind = options.layout_kind,
                                         .null_default = options.null_default,
                                         .data_path = options.data.empty() ? data() : options.data,
                                         .settings_path = settings(),
                                         .work_folder = folder.path()},
                                        records));
  }

  static platform::SettingsStore store() { return platform::SettingsStore(platform::host_key()); }

  // The messages since the last time, each as its kind's first letter and its code: "w102"; whole
  // those that have none.
  Names told() {
    Names list;
    for (const ScriptedInterface::Message& message : interface.messages) {
      constexpr std::string_view kinds = "ipwsqu";
      const std::string& text = message.text;
      const bool is_numbered = text.size() > 5 && text.starts_with("99") && text[5] == ':';
      list.push_back(kinds[static_cast<std::size_t>(message.kind)] +
                     (is_numbered ? std::to_string(std::stoi(text.substr(2, 3))) : text));
    }
    if (!interface.messages.empty()) last_text = interface.messages.back().text;
    interface.messages.clear();
    return list;
  }

  std::string last_text;  // of the messages that told() answered last
};

}  // namespace korvex::test
