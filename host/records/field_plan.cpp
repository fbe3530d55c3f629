#include "host/records/field_plan.h"

#include "platform/printable_text.h"

namespace korvex::host {

std::string quoted_text(std::string_view text) { return '"' + platform::printable(text) + '"'; }

FieldPlan::FieldPlan(const Layout& layout, const std::vector<PreparedItem>& items)
    : layout_(layout), items_(items) {
  std::size_t engine_fields = 0;
  for (std::size_t i = 0; i < items.size(); ++i) {
    places_.try_emplace(item(i).name, i);
    engine_fields_.push_back(engine_fields);
    if (column(i) != nullptr) ++engine_fields;
  }
}

std::optional<std::size_t> FieldPlan::find(std::string_view name) const {
  const auto place = places_.find(name);
  return place == places_.end() ? std::nullopt : std::optional(place->second);
}

void FieldPlan::report(std::size_t i, SourcePlace place, const std::string& text) {
  errors_.push_back({place, "item " + platform::printable(item(i).name) + ": " + text});
}

}  // namespace korvex::host
