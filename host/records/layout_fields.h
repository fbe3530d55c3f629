#pragma once

#include <memory>
#include <vector>

#include "host/layout/layout.h"
#include "host/records/layout_family.h"
#include "host/records/prepared_item.h"
#include "host/sources/field.h"
#include "run/run.h"

namespace korvex::host {

// The fields of a layout beyond the module, or what is wrong with them.
struct LayoutFields {
  // Side by side with the items. They ask each other, so that they belong to one thread.
  std::vector<std::unique_ptr<sources::Field>> fields;
  std::vector<LayoutError> errors;
};

// `items` are those of the records, keys lead to layouts of the family; the run has the ones among
// them that have settings. Both must outlive the fields.
LayoutFields make_fields(const Layout& layout, const std::vector<PreparedItem>& items, Run& run,
                         LayoutFamily& family);

}  // namespace korvex::host
