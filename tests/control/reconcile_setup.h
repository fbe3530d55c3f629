#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/col_main.h"
#include "support/generation_setup.h"
#include "support/settings_bytes.h"

namespace korvex::test {

// A column of the settings file with one element, unless told otherwise.
struct StoredItem {
  ColumnFields column = {};
  ElementFields element = {};
};

// A folder with a control file and a settings file that tests spell out, both loaded by a ClColMain
// whose messages go to a script.
class ReconcileSetup : public GenerationSetup {
 public:
  void write_settings(const std::vector<StoredItem>& items, std::int32_t layout_kind = 1,
                      std::int32_t level = 1) const {
    std::string area;
    for (const StoredItem& item : items) {
      area += column_bytes(item.column) + element_bytes(item.element);
    }
    write_file(settings(), header_bytes(layout_kind, 0, 1) +
                               level_bytes(level, header_size + level_size, 5, area.size(),
                                           static_cast<std::int32_t>(items.size())) +
                               area);
  }

  // Writes the control file and loads it.
  void load(const std::vector<ControlItemFields>& items, std::int32_t layout_kind = 1,
            std::int32_t null_default = 0) {
    main = std::make_unique<ClColMain>();
    write_file(control(), control_bytes({.layout_kind = layout_kind,
                                         .null_default = null_default,
                                         .settings_path = settings(),
                                         .work_folder = folder.path()},
                                        items));
    main->control_path = control();
    main->set_run_mode(run_mode::settings_only);
    if (main->load() != 0) throw std::runtime_error("the control file is not loaded");
  }

  // What the display of an item's settings comes to, in one line.
  std::string shown(std::size_t place) const {
    const ItemDisplay& d = main->items.at(place)->display();
    return std::to_string(number_of(d.generation_type)) + " " + d.generation_text + " [" + d.start +
           "," + d.end + "," + d.increment + "] " + std::to_string(number_of(d.exceeded_action)) +
           std::to_string(d.is_custom) + " ref " + std::to_string(number_of(d.referenced_item));
  }

  std::unique_ptr<ClColMain> main;
};

}  // namespace korvex::test
