#include "dialogs/windows/range_controls.h"

#include <QAbstractButton>

#include "dialogs/widgets/code_page_edit.h"
#include "dialogs/widgets/control_ids.h"

namespace korvex {

RangeEntry read_range(const FormDialog& dialog) {
  const auto bytes = [&](int id) { return dialog.control<CodePageEdit>(id)->bytes(); };
  const auto is_checked = [&](int id) { return dialog.control<QAbstractButton>(id)->isChecked(); };
  return {.texts = {bytes(control_id::format), bytes(control_id::start), bytes(control_id::end),
                    bytes(control_id::increment)},
          .initializes = is_checked(control_id::exceeded_initialize),
          .is_custom = is_checked(control_id::custom_format)};
}

int control_of(const FormDialog& dialog, RangePart part) {
  switch (part) {
    case RangePart::format:
      return dialog.control(control_id::format)->isEnabled() ? control_id::format
                                                             : control_id::custom_format;
    case RangePart::start:
      return control_id::start;
    case RangePart::end:
      return control_id::end;
    case RangePart::increment:
      return control_id::increment;
    case RangePart::none:
      break;
  }
  return 0;
}

void clear_values(const FormDialog& dialog) {
  for (const int id : {control_id::start, control_id::end, control_id::increment}) {
    dialog.control<CodePageEdit>(id)->set_bytes({});
  }
}

}  // namespace korvex
