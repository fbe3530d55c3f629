#include "control/col_main.h"

#include <algorithm>
#include <ctime>
#include <new>
#include <vector>

#include "platform/temporary_file.h"
#include "values/error_codes.h"
#include "values/error_texts.h"
#include "values/file_failure.h"
#include "values/record_text.h"

namespace korvex {

namespace {

// Names of items with impossible digits are collected up to this many characters.
constexpr std::size_t offending_names_limit = 128;

constexpr std::int32_t most_record_decimals = 11;

// Item records are read in blocks, so that a hostile count allocates no more than the file holds.
constexpr std::int32_t block_records = 1024;

// Reads `count` records of one kind, handing each to `take`; false when the file ends before.
template <typename Record, typename Take>
bool read_records(platform::File& file, std::int32_t count, Take take) {
  std::vector<Record> block;
  for (std::int32_t left = count; left > 0;) {
    block.resize(static_cast<std::size_t>(std::min(left, block_records)));
    std::size_t bytes = 0;
    const std::size_t wanted = block.size() * sizeof(Record);
    const platform::FileCause cause = file.read(block.data(), wanted, bytes);
    const std::size_t whole = bytes / sizeof(Record);
    for (std::size_t i = 0; i < whole; ++i) take(block[i]);
    if (cause != platform::FileCause::none || bytes < wanted) return false;
    left -= static_cast<std::int32_t>(whole);
  }
  return count >= 0;
}

}  // namespace

bool has_invalid_digits(LayoutKind layout, std::int32_t digits, std::int32_t decimals) {
  switch (layout) {
    case layout_kind::record_file:
      return decimals < 0 || digits < 0 || decimals > most_record_decimals;
    case layout_kind::table:
      return decimals > digits || decimals < 0 || digits < 0;
    default:
      return false;
  }
}

ErrorCode ClColMain::load() {
  try {
    platform::File file;
    if (file.open_for_reading(control_path, platform::Sharing::unlocked) !=
        platform::FileCause::none) {
      return error::cannot_open;
    }
    std::size_t count = 0;
    if (file.read(&header_, sizeof header_, count) != platform::FileCause::none ||
        count < sizeof header_) {
      return error::cannot_read;
    }
    const ErrorCode result = run_mode_ == run_mode::generator ? load_short(file) : load_long(file);
    if (result != error::none) return result;
    file.discard();

    limits_ = read_limits(platform::SettingsStore(platform::host_key()));
    if (run_mode_ != run_mode::generator) settings.set_paths(settings_path(), work_folder());
    return error::none;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode ClColMain::load_short(platform::File& file) {
  const bool complete =
      read_records<ItemNumber>(file, header_.item_count, [this](ItemNumber number) {
        auto item = std::make_unique<ClDGCol>();
        item->item_number = number;
        items.push_back(std::move(item));
      });
  return complete ? error::none : error::cannot_read;
}

ErrorCode ClColMain::load_long(platform::File& file) {
  offending_names_.clear();
  const bool complete = read_records<korvex_control_item>(
      file, header_.item_count, [this](const korvex_control_item& record) { append_item(record); });
  for (const auto& item : items) items_by_number_.try_emplace(item->item_number, item.get());
  return complete ? error::none : error::cannot_read;
}

void ClColMain::append_item(const korvex_control_item& record) {
  auto item = std::make_unique<ClDGCol>();
  item->item_number = ItemNumber{record.item_number};
  item->name = field_text(record.name);
  item->description = field_text(record.description);
  item->attribute = Attribute{record.attribute};
  item->signed_flag = is_always_signed(item->attribute) ? Flag::on : Flag{record.signed_flag};
  item->length = record.length;
  item->digits = record.digits;
  if (has_invalid_digits(layout_kind(), record.digits, record.decimals)) {
    load_error_ = error::invalid_items;
    if (offending_names_.size() + item->name.size() < offending_names_limit) {
      offending_names_ += item->name + " ";
    }
  }
  item->decimals = record.decimals <= record.digits ? record.decimals : 0;
  item->null_allowed = Flag{record.null_allowed};
  items.push_back(std::move(item));
}

ErrorCode ClColMain::write_temporary_control_file() {
  try {
    platform::TemporaryFile temporary;
    if (temporary.create(work_folder()) != platform::FileCause::none) return error::cannot_open;
    control_path = temporary.path();
    const ErrorCode result = write_short_form(temporary.file());
    if (result == error::none) temporary.keep();
    return result;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode ClColMain::write_short_form(platform::File& file) {
  const std::vector<ItemNumber>& numbers = settings.saved_items();
  header_.item_count = static_cast<std::int32_t>(numbers.size());
  platform::FileCause cause = file.write(&header_, sizeof header_);
  if (cause == platform::FileCause::none) {
    cause = file.write(numbers.data(), numbers.size() * sizeof(ItemNumber));
  }
  if (cause == platform::FileCause::none) cause = file.close();
  return cause == platform::FileCause::none ? error::none : write_failure(cause);
}

void ClColMain::append_error_text(ErrorCode code, std::string& text) const {
  korvex::append_error_text(code, layout_kind(), text);
}

bool ClColMain::build_default_settings() {
  const auto texts = current_item_ != nullptr ? default_settings(current_item_->attributes())
                                              : std::optional<RangeTexts>();
  if (texts) default_texts = *texts;
  return texts.has_value();
}

const ClDGCol* ClColMain::find_item(ItemNumber item_number) const {
  const auto place = items_by_number_.find(item_number);
  return place == items_by_number_.end() ? nullptr : place->second;
}

ClDGCol* ClColMain::select_item(std::size_t index) {
  current_item_ = index < items.size() ? items[index].get() : nullptr;
  return current_item_;
}

std::string ClColMain::data_path() const { return std::string(field_text(header_.data_path)); }

std::string ClColMain::settings_path() const {
  return std::string(field_text(header_.settings_path));
}

std::string ClColMain::work_folder() const { return std::string(field_text(header_.work_folder)); }

}  // namespace korvex
