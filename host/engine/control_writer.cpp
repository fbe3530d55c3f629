#include "host/engine/control_writer.h"

#include "korvex/control_file.h"
#include "platform/codepage.h"
#include "values/error_codes.h"
#include "values/file_failure.h"
#include "values/record_text.h"

namespace korvex::host {

namespace {

korvex_control_header header_of(const Layout& layout) {
  korvex_control_header header = {};
  header.records = number_of(layout.records.stored());
  header.layout_kind = number_of(layout.kind);
  header.null_default = layout.null_default ? 1 : 0;
  header.level = number_of(layout.level);
  header.item_count = static_cast<std::int32_t>(layout.items.size());
  store_field(header.data_path, layout.data);
  store_field(header.settings_path, layout.settings);
  store_field(header.work_folder, layout.work);
  return header;
}

// What the code page lacks is in layouts that never come to the module itself.
std::string code_page_text(const std::string& text) {
  return platform::from_utf8(text).value_or(std::string());
}

korvex_control_item item_of(const LayoutItem& item) {
  korvex_control_item record = {};
  record.item_number = number_of(item.number);
  store_field(record.name, code_page_text(item.name));
  store_field(record.description, code_page_text(item.description));
  record.attribute = number_of(item.attributes.attribute);
  record.signed_flag = number_of(item.attributes.signed_flag);
  record.length = item.attributes.length;
  record.digits = item.attributes.digits;
  record.decimals = item.attributes.decimals;
  record.null_allowed = item.nullable ? 1 : 0;
  return record;
}

platform::FileCause write_items(const Layout& layout, ControlForm form, platform::File& file) {
  platform::FileCause cause = platform::FileCause::none;
  for (const LayoutItem& item : layout.items) {
    if (cause != platform::FileCause::none) return cause;
    const korvex_control_item record = item_of(item);
    cause = form == ControlForm::short_form ? file.write(&item.number, sizeof item.number)
                                            : file.write(&record, sizeof record);
  }
  return cause;
}

}  // namespace

ErrorCode TemporaryControlFile::write(const Layout& layout, ControlForm form) {
  if (temporary_.create(layout.work) != platform::FileCause::none) return error::cannot_open;
  platform::File& file = temporary_.file();
  const korvex_control_header header = header_of(layout);
  platform::FileCause cause = file.write(&header, sizeof header);
  if (cause == platform::FileCause::none) cause = write_items(layout, form, file);
  const platform::FileCause closed = file.close();
  if (cause == platform::FileCause::none) cause = closed;
  return cause == platform::FileCause::none ? error::none : write_failure(cause);
}

}  // namespace korvex::host
