#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/layout/layout.h"
#include "host/records/prepared_layout.h"
#include "host/ways/key.h"

namespace korvex::host {

// A text from outside in quotation marks, for messages.
std::string quoted_text(std::string_view text);

// The items of a layout on their way to become fields: how they are called, what their draws are
// made with, and what is wrong with them. Keeps references to layout and items, which must outlive
// it.
class FieldPlan {
 public:
  FieldPlan(const Layout& layout, const std::vector<PreparedItem>& items);
  FieldPlan(const FieldPlan&) = delete;
  FieldPlan& operator=(const FieldPlan&) = delete;

  std::size_t size() const { return items_.size(); }
  const Layout& layout() const { return layout_; }
  std::uint64_t records() const { return layout_.records.number(); }
  const LayoutItem& item(std::size_t i) const { return *items_[i].item; }

  // Null for an item that has no settings.
  const ClFmtColInf* column(std::size_t i) const { return items_[i].column; }

  // Its field in the run, of an item that has settings.
  std::size_t engine_field(std::size_t i) const { return engine_fields_[i]; }

  // Null for an item that keeps its settings.
  const ItemValues* values_of(std::size_t i) const { return item(i).values.get(); }

  std::optional<std::size_t> find(std::string_view name) const;

  // The key of one use for an item. All ways of a group are drawn from the group's own, or from
  // that of a table for each that it takes rows of.
  template <ways::Use use>
  ways::KeyFor<use> way_key(std::size_t i, std::string_view table = {}) const {
    const std::optional<PlacedText>& group = values_of(i)->group;
    if (!group) return item_key<use>(i);
    std::string salt = group->text;
    if (!table.empty()) salt.append("/").append(table);
    return {{ways::key_bits(origin(salt), ways::Use::group)}};
  }
  template <ways::Use use>
  ways::KeyFor<use> item_key(std::size_t i) const {
    const ItemValues& values = *values_of(i);
    return ways::make_key<use>(origin(values.salt ? values.salt->text : item(i).name));
  }
  ways::KeyOrigin origin(std::string_view salt) const { return {layout_.seed, layout_.salt, salt}; }

  void report(std::size_t i, SourcePlace place, const std::string& text);
  std::vector<LayoutError>& errors() { return errors_; }

 private:
  const Layout& layout_;
  const std::vector<PreparedItem>& items_;
  std::unordered_map<std::string_view, std::size_t> places_;
  std::vector<std::size_t> engine_fields_;
  std::vector<LayoutError> errors_;
};

}  // namespace korvex::host
