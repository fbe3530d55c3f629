#include "host/records/layout_family.h"

#include <algorithm>

#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/records/prepared_layout.h"
#include "platform/printable_text.h"

namespace korvex::host {

LayoutFamily::LayoutFamily(const std::string& file, std::ostream& messages, MisreadTexts misread)
    : messages_(messages), misread_(misread), path_{settled_path(file)} {}

ways::Result<std::shared_ptr<PreparedLayout>> LayoutFamily::find(const std::string& file) {
  const std::string path = settled_path(file);
  if (const auto begin = std::find(path_.begin(), path_.end(), path); begin != path_.end()) {
    std::string cycle;
    for (auto place = begin; place != path_.end(); ++place) cycle += *place + " -> ";
    return ways::Refusal{", which leads back to itself: " + platform::printable(cycle + path) +
                         ", expected no cycle"};
  }
  if (!known_.contains(path)) {
    path_.push_back(path);
    auto layout = std::make_shared<PreparedLayout>();
    const bool is_good =
        layout->prepare_member(file, messages_, misread_, *this) == exit_status::done;
    known_[path] = is_good ? std::move(layout) : nullptr;
    path_.pop_back();
  }
  if (known_[path] == nullptr) return ways::Refusal{", which can't be used as it is"};
  return known_[path];
}

std::vector<std::shared_ptr<PreparedLayout>> LayoutFamily::members() const {
  std::vector<std::shared_ptr<PreparedLayout>> members;
  for (const auto& [path, layout] : known_) {
    if (layout != nullptr) members.push_back(layout);
  }
  return members;
}

}  // namespace korvex::host
