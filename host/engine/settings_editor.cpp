#include "host/engine/settings_editor.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "control/item_settings.h"
#include "formatlang/default_settings.h"
#include "host/engine/kept_settings.h"
#include "host/engine/run_folders.h"
#include "settings/fmt_file.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex::host {

namespace {

// Stores the items of a layout one after the other; a reference brings its item forward, so that
// there is something to take over.
class ItemStore {
 public:
  ItemStore(const Layout& layout, ClFmtFile& file)
      : layout_(layout), file_(file), is_stored_(layout.items.size(), false) {
    for (std::size_t i = 0; i < layout.items.size(); ++i) {
      places_.try_emplace(layout.items[i].name, i);
    }
  }

  std::vector<ItemFailure> store_all() {
    for (std::size_t i = 0; i < layout_.items.size(); ++i) store(i);
    std::sort(failures_.begin(), failures_.end(),
              [](const auto& left, const auto& right) { return left.item < right.item; });
    return std::move(failures_);
  }

 private:
  // The items that have to be there before this one come first: a chain of references, from its
  // end. Such a chain may be as long as the layout.
  void store(std::size_t index) {
    std::vector<std::size_t> chain;
    for (std::optional<std::size_t> next = index; next && !is_stored_[*next];
         next = referenced_item(layout_.items[*next])) {
      is_stored_[*next] = true;
      chain.push_back(*next);
    }
    for (auto place = chain.rbegin(); place != chain.rend(); ++place) store_one(*place);
  }

  void store_one(std::size_t index) {
    const LayoutItem& item = layout_.items[index];
    if (!item.values) return;
    ErrorCode code = check_repeat(item.values->repeat);
    if (code == error::none) code = store_values(item, *item.values);
    if (code == error::none) store_repeat(item);
    if (code != error::none) failures_.push_back({&item, code});
  }

  std::optional<std::size_t> referenced_item(const LayoutItem& item) const {
    if (!item.values || item.values->source != ValueSource::reference) return std::nullopt;
    const auto place = places_.find(item.values->item_name);
    return place == places_.end() ? std::nullopt : std::optional(place->second);
  }

  static ErrorCode check_repeat(const std::optional<RepeatSettings>& repeat) {
    if (!repeat) return error::none;
    if (repeat->level == RepeatLevel::none) return error::repeat_level_zero;
    return repeat->count == 0 ? error::repeat_count_zero : error::none;
  }

  ErrorCode store_values(const LayoutItem& item, const ItemValues& values) {
    switch (values.source) {
      case ValueSource::initial:
        return store_initial_value(item);
      case ValueSource::range:
        return store_range(item, values.texts, values.choices);
      case ValueSource::attribute_default:
        return store_default(item);
      case ValueSource::reference:
        return store_reference(item);
      case ValueSource::enumeration:
        return store_enumeration(item, values);
      case ValueSource::own:
        break;  // the engine has nothing to do with it
    }
    return error::none;
  }

  ErrorCode store_initial_value(const LayoutItem& item) {
    if (!item.nullable) return error::null_not_allowed;
    return file_.set_initial_value(item.number, item.attributes);
  }

  ErrorCode store_range(const LayoutItem& item, const RangeTexts& texts,
                        const RangeChoices& choices) {
    file_.edited().texts = texts;
    file_.edited().choices = choices;
    return file_.check_and_store(item.number, item.attributes);
  }

  ErrorCode store_default(const LayoutItem& item) {
    const std::optional<RangeTexts> texts = default_settings(item.attributes);
    if (!texts) return error::bad_attribute;
    return store_range(item, *texts, {exceeded_action::repeat, Flag::on});
  }

  ErrorCode store_reference(const LayoutItem& item) {
    const std::optional<std::size_t> place = referenced_item(item);
    if (!place) return error::no_such_reference;
    const LayoutItem& source = layout_.items[*place];
    if (source.number == item.number) return error::same_reference_target;

    const ClFmtColInf* settings = file_.find_column(source.number);
    if (settings != nullptr && settings->record.generation_type == generation_type::initial_value) {
      return store_initial_value(item);
    }
    const ErrorCode code = check_reference(source.attributes, item.attributes);
    return code != error::none ? code
                               : file_.copy_settings(item.number, source.number, item.attributes);
  }

  // The list itself is checked when the data is generated, which reports every bad line of it.
  ErrorCode store_enumeration(const LayoutItem& item, const ItemValues& values) {
    const ErrorCode code = file_.set_initial_value(item.number, item.attributes);
    if (code != error::none) return code;
    file_.set_enumeration(item.number, values.file, values.choices.exceeded_action);
    return error::none;
  }

  void store_repeat(const LayoutItem& item) {
    FmtColRec& settings = file_.find_column(item.number)->record;
    const RepeatSettings repeat = item.values->repeat.value_or(RepeatSettings{});
    settings.repeat_flag = flag_of(item.values->repeat.has_value());
    settings.repeat_level = repeat.level;
    settings.repeat_count = repeat.count;
  }

  const Layout& layout_;
  ClFmtFile& file_;
  std::vector<bool> is_stored_;
  std::unordered_map<std::string_view, std::size_t> places_;  // by name; the first of several
  std::vector<ItemFailure> failures_;
};

std::int32_t count_repeated(const Layout& layout, const ClFmtFile& file) {
  return static_cast<std::int32_t>(
      std::count_if(layout.items.begin(), layout.items.end(), [&](const LayoutItem& item) {
        const ClFmtColInf* column = file.find_column(item.number);
        return column != nullptr && is_on(column->record.repeat_flag);
      }));
}

std::size_t count_settings(const ClFmtLvlInf& level) {
  return static_cast<std::size_t>(
      std::count_if(level.columns.begin(), level.columns.end(),
                    [](const auto& column) { return !column->elements.empty(); }));
}

}  // namespace

SettingsResult write_settings_of(const Layout& layout) {
  SettingsResult result;
  result.file = layout.settings;
  make_output_folders(layout);
  ClFmtFile file;
  file.set_run_mode(run_mode::settings_only);
  file.set_paths(layout.settings, layout.work);
  result.file_code = file.load(layout.level, layout.records.stored(), layout.kind).code();
  if (result.file_code != error::none) return result;
  result.unfit = find_unfit_items(layout, file, Keeping::items_without_values);
  if (!result.unfit.empty()) return result;
  result.failures = ItemStore(layout, file).store_all();
  if (result.failures.empty()) result.failures = find_shared_levels(layout, file);
  if (!result.failures.empty()) return result;

  ClFmtLvlInf& level = *file.current_level();
  level.record.repeat_flag = count_repeated(layout, file);
  result.items_with_settings = count_settings(level);
  result.repeated_items = level.record.repeat_flag;
  for (const LayoutItem& item : layout.items) {
    const ClFmtColInf* column = file.find_column(item.number);
    if (column == nullptr || column->elements.empty()) result.left_out.push_back(&item);
  }
  result.file_code = file.save(layout.quotation);
  return result;
}

}  // namespace korvex::host
