#include "host/engine/kept_settings.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unordered_map>

#include "control/reconcile.h"
#include "host/engine/run_folders.h"
#include "host/process/scratch_folder.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex::host {

namespace {

bool keeps(const LayoutItem& item, Keeping keeping) {
  return keeping != Keeping::items_without_values || !item.values;
}

// Never over a file that is there. Not every file system can do so in one step.
std::error_code rename_to_free_name(const std::string& from, const std::string& to) {
  const auto error_of = [](int result) {
    return std::error_code(result == 0 ? 0 : errno, std::generic_category());
  };
  const std::error_code failure =
      error_of(::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE));
  const bool is_unknown =
      failure == std::errc::invalid_argument || failure == std::errc::function_not_supported;
  if (!is_unknown) return failure;
  const std::error_code linked = error_of(::link(from.c_str(), to.c_str()));
  return linked ? linked : error_of(::unlink(from.c_str()));
}

}  // namespace

std::vector<const LayoutItem*> find_unfit_items(const Layout& layout, const ClFmtFile& file,
                                                Keeping keeping) {
  std::vector<const LayoutItem*> unfit;
  for (const LayoutItem& item : layout.items) {
    const ClFmtColInf* kept = keeps(item, keeping) ? file.find_column(item.number) : nullptr;
    if (kept != nullptr && !settings_fit(item.attributes, kept->record, layout.kind)) {
      unfit.push_back(&item);
    }
  }
  return unfit;
}

std::vector<ItemFailure> find_shared_levels(const Layout& layout, const ClFmtFile& file) {
  const auto level_of = [&](const LayoutItem& item) -> std::optional<RepeatLevel> {
    const ClFmtColInf* column = file.find_column(item.number);
    const bool repeats = column != nullptr && is_on(column->record.repeat_flag);
    return repeats ? std::optional(column->record.repeat_level) : std::nullopt;
  };
  std::unordered_map<RepeatLevel, int> takers;
  for (const LayoutItem& item : layout.items) {
    if (const auto level = level_of(item)) ++takers[*level];
  }
  std::vector<ItemFailure> failures;
  for (const LayoutItem& item : layout.items) {
    const auto level = level_of(item);
    if (level && takers[*level] > 1) failures.push_back({&item, error::repeat_level_taken});
  }
  return failures;
}

std::optional<KeptSettings> look_at_settings(const Layout& layout, Keeping keeping,
                                             std::ostream& messages) {
  KeptSettings found;
  const bool keeps_any = keeping == Keeping::whole_level ||
                         std::any_of(layout.items.begin(), layout.items.end(),
                                     [&](const LayoutItem& item) { return keeps(item, keeping); });
  if (!keeps_any) return found;
  std::error_code ignored;
  if (!std::filesystem::exists(layout.settings, ignored)) return found;
  const ScratchFolder scratch;
  const auto copy = copy_layout(layout, scratch, messages);
  if (!copy) return std::nullopt;
  ClFmtFile file;
  file.set_run_mode(run_mode::settings_only);
  file.set_paths(copy->settings, copy->work);
  const Result<std::size_t> loaded = file.load(layout.level, layout.records.stored(), layout.kind);
  if (!loaded || *loaded == 0) return found;
  found.refused.unfit = find_unfit_items(layout, file, keeping);
  if (keeping != Keeping::items_without_values && file.current_level()->record.repeat_flag != 0) {
    found.refused.failures = find_shared_levels(layout, file);
  }
  const auto add_list = [&](const ClFmtColInf* kept) {
    if (kept == nullptr || kept->record.generation_type != generation_type::enumeration) return;
    found.lists.emplace_back(field_text(kept->record.enumeration_path));
  };
  for (const LayoutItem& item : layout.items) {
    if (keeps(item, keeping)) add_list(file.find_column(item.number));
  }
  if (keeping == Keeping::whole_level) {
    for (const auto& column : file.current_level()->columns) add_list(column.get());
  }
  return found;
}

std::string move_settings_aside(const Layout& layout, std::string& name) {
  platform::File held;
  const bool is_in_use = held.open_for_reading(layout.settings, platform::Sharing::exclusive) ==
                         platform::FileCause::sharing_violation;
  for (int number = 1;; ++number) {
    name = layout.settings + "." + std::to_string(number);
    if (is_in_use) return "another run holds it";
    const std::error_code failure = rename_to_free_name(layout.settings, name);
    if (!failure) return {};
    if (failure != std::errc::file_exists) return failure.message();
  }
}

}  // namespace korvex::host
