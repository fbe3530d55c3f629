#include "host/records/layout_family.h"

#include <algorithm>
#include <utility>

#include "host/engine/layout_messages.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/records/field_maker.h"
#include "host/records/prepared_layout.h"
#include "host/records/value_trial.h"

namespace korvex::host {

LayoutFamily::LayoutFamily(PreparedLayout& root, std::ostream& messages, MisreadTexts misread,
                           Trial trial)
    : root_(root),
      messages_(messages),
      misread_(misread),
      trial_(trial),
      root_path_(settled_path(root.layout().file)),
      root_maker_(std::make_unique<FieldMaker>(root, *this, root)) {}

LayoutFamily::~LayoutFamily() = default;

bool LayoutFamily::make_fields() {
  root_maker_->make_all();
  bool has_errors = root_maker_->print_errors(messages_);
  for (auto& [path, member] : members_) {
    if (member.maker != nullptr) has_errors |= member.maker->print_errors(messages_);
  }
  if (has_errors) return false;
  std::vector<std::unique_ptr<PreparedLayout>> others;
  std::vector<UntoldFit> all_untold = root_maker_->untold();
  for (auto& [path, member] : members_) {
    if (member.maker == nullptr) continue;
    const std::vector<UntoldFit>& more = member.maker->untold();
    all_untold.insert(all_untold.end(), more.begin(), more.end());
    member.layout->take_fields(member.maker->take_fields(), {}, {});
    others.push_back(std::move(member.layout));
  }
  root_.take_fields(root_maker_->take_fields(), std::move(others), std::move(all_untold));
  return true;
}

ways::Result<const PreparedLayout*> LayoutFamily::find(const std::string& file) {
  const std::string path = settled_path(file);
  if (path == root_path_) return &root_;
  auto found = members_.find(path);
  if (found == members_.end()) {
    auto layout = std::make_unique<PreparedLayout>();
    const ExitStatus status = layout->prepare_member(file, messages_, misread_);
    const PreparedLayout& known_as = *layout;
    found = members_.emplace(path, make_member(std::move(layout), status, known_as)).first;
  }
  if (found->second.maker == nullptr) return ways::Refusal{", which can't be used as it is"};
  return found->second.layout.get();
}

FieldMaker* LayoutFamily::fields_for_others(const PreparedLayout& layout) {
  if (&layout == &root_) {
    const auto [copy, is_new] = members_.try_emplace(root_path_);
    if (is_new) {
      auto prepared = std::make_unique<PreparedLayout>();
      const ExitStatus status = prepared->prepare_copy(root_, messages_, misread_);
      copy->second = make_member(std::move(prepared), status, root_);
    }
    return copy->second.maker.get();
  }
  const auto member = std::find_if(members_.begin(), members_.end(), [&](const auto& other) {
    return other.second.layout.get() == &layout;
  });
  return member->second.maker.get();
}

LayoutFamily::Member LayoutFamily::make_member(std::unique_ptr<PreparedLayout> layout,
                                               ExitStatus status, const PreparedLayout& known_as) {
  Member member;
  if (status == ExitStatus::done) {
    member.maker = std::make_unique<FieldMaker>(*layout, *this, known_as);
  }
  member.layout = std::move(layout);
  return member;
}

}  // namespace korvex::host
