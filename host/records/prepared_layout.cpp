#include "host/records/prepared_layout.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <sstream>

#include "host/engine/layout_messages.h"
#include "host/engine/run_folders.h"
#include "host/layout/failure_text.h"
#include "host/layout/layout_reader.h"
#include "host/layout/own_items.h"
#include "host/layout/run_files.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/layout_family.h"
#include "lists/enumeration_check.h"
#include "platform/printable_text.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex::host {

namespace {

bool has_only_booleans(const ClEnumDataList& values) {
  EnumCursor cursor(values);
  while (!cursor.is_at_end() && (cursor.value() == "true" || cursor.value() == "false")) {
    cursor.next();
  }
  return cursor.is_at_end();
}

LayoutReading read_for(MadeBy maker, const std::string& file, std::optional<RecordCount> records,
                       MissingLists lists) {
  switch (maker) {
    case MadeBy::anyone:
      break;
    case MadeBy::module:
      return read_plain_layout(file, records, lists);
    case MadeBy::module_at_once:
      return read_module_layout(file, records, lists);
  }
  return read_layout(file, records, lists);
}

}  // namespace

ExitStatus PreparedLayout::prepare(const std::string& file, std::optional<RecordCount> records,
                                   std::ostream& messages, const Preparation& how) {
  ExitStatus status = read(file, records, messages, how);
  if (status == ExitStatus::done) status = prepare_records(messages, how);
  if (status != ExitStatus::done || host::is_plain(layout_)) return status;
  LayoutFamily family(*this, messages, how.misread, how.trial);
  return family.make_fields() ? ExitStatus::done : ExitStatus::wrong_usage;
}

ExitStatus PreparedLayout::prepare_member(const std::string& file, std::ostream& messages,
                                          MisreadTexts misread) {
  const Preparation how = {.misread = misread};
  const ExitStatus status = read(file, std::nullopt, messages, how);
  return status == ExitStatus::done ? prepare_records(messages, how) : status;
}

ExitStatus PreparedLayout::prepare_copy(const PreparedLayout& other, std::ostream& messages,
                                        MisreadTexts misread) {
  layout_ = other.layout_;
  return prepare_records(messages, {.misread = misread});
}

bool PreparedLayout::prepare_like(const PreparedLayout& other) {
  // All has been said once.
  std::ostringstream unheard;
  if (!other.is_plain()) {
    if (prepare_copy(other, unheard, MisreadTexts::warned) != ExitStatus::done) return false;
    return LayoutFamily(*this, unheard, MisreadTexts::warned, Trial::begin).make_fields();
  }
  layout_ = other.layout_;
  items_ = other.items_;
  written_ = other.written_;
  left_out_ = other.left_out_;
  return run_.prepare_like(other.run_) == error::none;
}

void PreparedLayout::take_fields(std::vector<std::unique_ptr<sources::Field>> fields,
                                 std::vector<std::unique_ptr<PreparedLayout>> relatives,
                                 std::vector<UntoldFit> untold_fits) {
  fields_ = std::move(fields);
  relatives_ = std::move(relatives);
  untold_ = std::move(untold_fits);
}

ExitStatus PreparedLayout::read(const std::string& file, std::optional<RecordCount> records,
                                std::ostream& messages, const Preparation& how) {
  // Settings that are kept may name other lists than the layout does.
  const MissingLists lists =
      how.settings == Settings::kept ? MissingLists::allowed : MissingLists::refused;
  LayoutReading reading = read_for(how.made_by, file, records, lists);
  if (print_layout_errors(reading, messages)) return ExitStatus::wrong_usage;
  layout_ = std::move(reading.layout);
  if (how.asked == RecordsAsked::first && layout_.own_records) {
    layout_.records = std::max(layout_.records, *layout_.own_records);
  }
  if (how.misread == MisreadTexts::warned) {
    print_warnings(layout_, messages);
  } else {
    print_digit_warnings(layout_, messages);
    if (refuses_lists(messages)) return ExitStatus::wrong_usage;
  }
  return ExitStatus::done;
}

ExitStatus PreparedLayout::prepare_records(std::ostream& messages, const Preparation& how) {
  const std::optional<Layout> copy = copy_layout(layout_, scratch_, messages);
  if (!copy) return ExitStatus::failed;
  copy_ = *copy;
  from_engine_ = engine_items(layout_);
  copy_.items.clear();
  for (std::size_t i = 0; i < layout_.items.size(); ++i) {
    if (from_engine_[i]) copy_.items.push_back(layout_.items[i]);
  }
  if (copy_.items.empty()) {
    match_items();
    return ExitStatus::done;
  }
  if (how.settings == Settings::of_layout) {
    const SettingsResult settings = write_settings_of(copy_);
    if (print_failures(settings, layout_, messages)) return ExitStatus::failed;
    const ExitStatus status =
        how.look_at_settings ? how.look_at_settings(copy_, settings) : ExitStatus::done;
    if (status != ExitStatus::done) return status;
  }
  const ExitStatus status = load(messages);
  // Settings may have lists of their own.
  const bool is_refused = how.misread == MisreadTexts::refused && refuses_lists(messages);
  return status == ExitStatus::done && is_refused ? ExitStatus::wrong_usage : status;
}

// The lists that are known of so far, each of them looked at once.
bool PreparedLayout::refuses_lists(std::ostream& messages) {
  std::set<std::string> lists;
  for (const LayoutItem& item : layout_.items) {
    if (item.values && !item.values->file.empty()) lists.insert(item.values->file);
  }
  for (const PreparedItem& item : items_) {
    if (item.column == nullptr) continue;
    const FmtColRec& settings = item.column->record;
    if (settings.generation_type == generation_type::enumeration) {
      lists.emplace(field_text(settings.enumeration_path));
    }
  }
  bool is_refused = false;
  for (const std::string& list : lists) {
    if (!looked_at_.insert(list).second) continue;
    is_refused |= print_misread_list(list, messages);
  }
  return is_refused;
}

void PreparedLayout::add_read_files(DistinctFiles& files) const {
  std::vector<std::string> lists;
  for (const PreparedItem& item : items_) {
    if (item.column == nullptr) continue;
    const std::string_view list = field_text(item.column->record.enumeration_path);
    if (!list.empty()) lists.emplace_back(list);
  }
  host::add_read_files(layout_, lists, files);
  files.read(layout_.settings, "the settings file");
}

ExitStatus PreparedLayout::load(std::ostream& messages) {
  ListLine bad_line = ListLine::none;
  ErrorCode code = control_file_.write(copy_, ControlForm::short_form);
  if (code == error::none) {
    main_.control_path = control_file_.path();
    const Result<bool> loaded =
        run_.load(main_, [&](const FmtColRec& settings, ClEnumDataList& values) {
          return load_list(settings, values, bad_line);
        });
    code = loaded && !*loaded ? error::no_format_for_item : loaded.code();
  }
  if (code == error::none) {
    match_items();
    return ExitStatus::done;
  }
  check_interruption();
  messages << failure_text(code, main_, bad_line) << std::endl;
  return ExitStatus::failed;
}

// Any number of commands read a list at once.
ErrorCode PreparedLayout::load_list(const FmtColRec& settings, ClEnumDataList& values,
                                    ListLine& bad_line) {
  const std::string path(field_text(settings.enumeration_path));
  const ErrorCode code =
      check_enumeration(main_, path, settings, bad_line, &values, platform::Sharing::shared).code();
  if (code == error::none && has_only_booleans(values)) booleans_.insert(settings.item_number);
  return code;
}

void PreparedLayout::match_items() {
  for (std::size_t i = 0; i < layout_.items.size(); ++i) {
    const LayoutItem& item = layout_.items[i];
    const ClFmtColInf* column = from_engine_[i] ? main_.settings.find_column(item.number) : nullptr;
    if (from_engine_[i] && column == nullptr) {
      left_out_.push_back(&item);
    } else {
      items_.push_back({&item, column, booleans_.contains(item.number), items_.size()});
      if (!item.is_hidden()) written_.push_back(items_.back());
    }
  }
}

std::string PreparedLayout::message_of(ErrorCode code) const {
  return failure_text(code, main_, ListLine::none);
}

std::optional<std::size_t> PreparedLayout::find_item(std::string_view name) const {
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (items_[i].item->name == name) return i;
  }
  return std::nullopt;
}

}  // namespace korvex::host
