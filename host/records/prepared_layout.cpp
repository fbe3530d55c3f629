#include "host/records/prepared_layout.h"

#include <algorithm>
#include <ostream>
#include <set>

#include "format/error_codes.h"
#include "format/record_text.h"
#include "generate/enumeration_check.h"
#include "host/exit_status.h"
#include "host/layout/failure_text.h"
#include "host/layout/layout_messages.h"
#include "host/layout/layout_reader.h"
#include "host/records/prediction.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

std::optional<RepeatCount> predict_on_copy(const Layout& copy, bool has_repeats) {
  TemporaryControlFile control_file;
  if (control_file.write(copy, ControlForm::long_form) != 0) return std::nullopt;
  return predict(control_file.path(), has_repeats);
}

}  // namespace

int PreparedLayout::prepare(const std::string& file, std::optional<std::int32_t> records,
                            std::ostream& messages, MisreadTexts misread,
                            std::optional<RepeatCount>* prediction) {
  LayoutReading reading = read_layout(file, records, MissingLists::refused);
  if (print_layout_errors(reading, messages)) return exit_status::wrong_usage;
  layout_ = std::move(reading.layout);
  if (misread == MisreadTexts::warned) {
    print_warnings(layout_, messages);
  } else {
    print_digit_warnings(layout_, messages);
    if (refuses_lists(messages)) return exit_status::wrong_usage;
  }
  if (scratch_.path().empty()) {
    messages << "no folder for temporary files can be made" << std::endl;
    return exit_status::failed;
  }
  const std::optional<Layout> copy = copy_layout(layout_, scratch_.path());
  if (!copy) {
    messages << platform::printable(layout_.settings) << ": "
             << numbered_message(error::cannot_open, layout_) << std::endl;
    return exit_status::failed;
  }
  copy_ = *copy;
  const SettingsResult settings = write_settings_of(copy_);
  if (print_failures(settings, layout_, messages)) return exit_status::failed;
  if (prediction != nullptr) *prediction = predict_on_copy(copy_, settings.repeated_items > 0);
  const int status = load(messages);
  // Settings may have lists of their own.
  const bool is_refused = misread == MisreadTexts::refused && refuses_lists(messages);
  return status == exit_status::done && is_refused ? exit_status::wrong_usage : status;
}

// The lists that are known of so far, each of them looked at once.
bool PreparedLayout::refuses_lists(std::ostream& messages) {
  std::set<std::string> lists;
  for (const LayoutItem& item : layout_.items) {
    if (item.values && !item.values->file.empty()) lists.insert(item.values->file);
  }
  for (const PreparedItem& item : items_) {
    if (item.values) lists.emplace(field_text(item.column->record.enumeration_path));
  }
  bool is_refused = false;
  for (const std::string& list : lists) {
    if (!looked_at_.insert(list).second) continue;
    is_refused |= print_misread_list(list, messages);
  }
  return is_refused;
}

int PreparedLayout::load(std::ostream& messages) {
  std::int32_t code = control_file_.write(copy_, ControlForm::short_form);
  std::int32_t bad_line = 0;
  if (code == 0) {
    main_.control_path = control_file_.path();
    main_.set_run_mode(run_mode::generator);
    code = main_.load();
  }
  if (code == 0) {
    main_.settings.set_paths(main_.settings_path(), main_.work_folder());
    code = std::min(main_.settings.load(layout_.level, layout_.records, layout_.kind), 0);
  }
  if (code == 0 && main_.settings.current_level()->record.repeat_flag != 0) {
    code = repeats_.build(main_);
  }
  if (code == 0) code = prepare_items(bad_line);
  if (code == 0) return exit_status::done;
  messages << failure_text(code, main_, bad_line) << std::endl;
  return exit_status::failed;
}

std::int32_t PreparedLayout::prepare_items(std::int32_t& bad_line) {
  for (const LayoutItem& item : layout_.items) {
    const ClFmtColInf* column = main_.settings.find_column(item.number);
    if (column == nullptr) {
      left_out_.push_back(&item);
      continue;
    }
    PreparedItem prepared = {&item, column, nullptr};
    if (column->record.generation_type == generation_type::enumeration) {
      prepared.values = std::make_unique<ClEnumDataList>();
      const std::string path(field_text(column->record.enumeration_path));
      const std::int32_t count =
          check_enumeration(main_, path, column->record, bad_line, prepared.values.get());
      if (count < 0) return count;
    }
    items_.push_back(std::move(prepared));
  }
  return items_.empty() ? error::no_format_for_item : 0;
}

}  // namespace korvex::host
