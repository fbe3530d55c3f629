#include "host/imports/table_layout.h"

#include <algorithm>
#include <utility>

#include "host/imports/lists.h"
#include "host/layout/item_texts.h"
#include "host/layout/own_text.h"
#include "host/text/code_page_text.h"

namespace korvex::host {

namespace {

using Role = ColumnRole::Kind;

class LayoutWriter {
 public:
  LayoutWriter(const ImportPlan& plan, std::size_t table, const KeyPlan& keys,
               std::vector<PlannedItem>& items, PlannedTable& planned)
      : plan_(plan),
        table_(table),
        imported_(plan.model.tables[table]),
        schema_(imported_.schema),
        keys_(keys),
        items_(items),
        planned_(planned) {}

  void run() {
    LayoutDraft& layout = planned_.layout;
    layout.table = schema_.name;
    layout.records = static_cast<std::int32_t>(plan_.records[table_]);
    layout.is_utf8 = plan_.form == DraftForm::ways;
    // Rows that are there were drawn without a seed, or with another one: new ones are to differ.
    if (layout.is_utf8) layout.seed = imported_.rows;
    planned_.file = plan_.files[table_];
    layout.data = planned_.file.substr(0, planned_.file.rfind('.')) + ".csv";
    planned_.attributes.resize(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (items_[i].is_left_out || !takes_name(i)) continue;
      layout.items.push_back(item_draft(i));
      planned_.attributes[i] = layout.items.back().attributes;
      if (items_[i].is_gap) {
        report_gap(i, items_[i].reason);
      } else if (items_[i].is_empty) {
        layout.remarks.push_back(label(i) + items_[i].reason + ", stays NULL");
      }
    }
    write_unique_sets();
    layout.remarks.insert(layout.remarks.end(), keys_.remarks.begin(), keys_.remarks.end());
    layout.remarks.insert(
        layout.remarks.begin(),
        "The table " + schema_.name + ": an item's values go to the column of its name.");
  }

 private:
  // What the item's comment says of the column.
  std::vector<std::string> remarks_of(std::size_t i) const {
    const ColumnSchema& column = schema_.columns[i];
    std::string text = column.declared_type.empty() ? "no type" : column.declared_type;
    if (!column.nullable) text += ", not null";
    if (keys_.columns[i].is_unique) text += ", unique";
    if (keys_.columns[i].kind == Role::key) {
      text += ", refers to " + keys_.keys[keys_.columns[i].key].key->table;
    }
    std::vector<std::string> remarks = {text};
    if (!items_[i].reason.empty()) remarks.push_back(items_[i].reason);
    for (const UnreadCondition& unread : imported_.facts.unread) {
      if (std::count(unread.columns.begin(), unread.columns.end(), i) > 0) {
        remarks.push_back("a condition that korvex can't read: " + unread.text);
      }
    }
    if (items_[i].is_gap) remarks.emplace_back("korvex: needs a value");
    return remarks;
  }

  std::string label(std::size_t i) const { return column_names(schema_, {i}) + ": "; }

  void report_gap(std::size_t i, const std::string& why) {
    ++planned_.gaps;
    planned_.remarks.push_back(label(i) + why + ", but must not be NULL");
  }

  // Why a column's name is none that an item may have; empty for one that is.
  std::string wrong_name(const std::string& name) const {
    const bool is_encoded = plan_.form == DraftForm::settings;
    if (name.find_first_of("\r\n") != std::string::npos) return "its name has a line end";
    const auto encoded = is_encoded ? exact_code_page_text(name) : std::optional(name);
    if (!encoded) return "its name has a character that code page 932 lacks";
    const std::size_t size = is_encoded ? encoded->size() : character_count(name);
    if (size <= longest_item_name) return {};
    return "its name has " + std::to_string(size) +
           (is_encoded ? " bytes in code page 932" : " characters") + ", expected at most " +
           std::to_string(longest_item_name);
  }

  bool takes_name(std::size_t i) {
    const ColumnSchema& column = schema_.columns[i];
    const std::string why = wrong_name(column.name);
    if (why.empty()) return true;
    if (column.nullable || column.has_default) {
      planned_.remarks.push_back(label(i) + why + ", left out");
    } else {
      report_gap(i, why);
    }
    return false;
  }

  // Those whose columns all have items: another column's values are the database's business.
  void write_unique_sets() {
    LayoutDraft& layout = planned_.layout;
    for (const std::vector<std::size_t>& set : schema_.unique_sets) {
      std::vector<std::string> names;
      for (const std::size_t column : set) {
        const std::string& name = schema_.columns[column].name;
        const bool has_item = std::any_of(layout.items.begin(), layout.items.end(),
                                          [&](const ItemDraft& item) { return item.name == name; });
        if (has_item) names.push_back(name);
      }
      if (names.size() == set.size()) layout.unique.push_back(std::move(names));
    }
  }

  ItemDraft item_draft(std::size_t i) {
    PlannedItem& item = items_[i];
    ItemDraft draft;
    draft.name = schema_.columns[i].name;
    draft.nullable = item.is_nullable;
    draft.remarks = remarks_of(i);
    draft.attributes = text_attributes(1);
    if (item.is_empty || !item.values) {
      draft.values = {{"type", toml_text("initial")}};
      return draft;
    }
    ColumnValues& values = *item.values;
    draft.attributes = values.attributes;
    if (plan_.form == DraftForm::settings) {
      set_plain_values(i, draft);
      return draft;
    }
    if (!values.listed.empty()) {
      draft.values = list_keys(std::move(values.listed), planned_.file, draft.name, planned_.lists);
    }
    const ColumnRole& role = keys_.columns[i];
    for (LayoutKey& key : values.keys) {
      const bool is_replaced =
          key.name == "order" && !item.is_combined && (role.has_within || !role.joint.empty());
      if (!is_replaced) draft.values.push_back(std::move(key));
    }
    if (role.kind == Role::own && role.has_within) {
      draft.values.push_back({"within", toml_text(hub_item())});
    }
    if (role.kind == Role::own && !role.joint.empty() && !item.is_combined) {
      draft.values.push_back({"joint", toml_text(role.joint)});
    }
    if (!item.group.empty()) draft.values.push_back({"group", toml_text(item.group)});
    if (!draft.nullable) return draft;
    if (!item.when.empty()) draft.values.push_back({"when", item.when});
    if (!item.empty_share.empty()) draft.values.push_back({"empty", item.empty_share});
    if (!item.empty_with.empty()) {
      draft.values.push_back({"empty_with", toml_text(item.empty_with)});
    }
    return draft;
  }

  // Ranges, references and lists in their own order.
  void set_plain_values(std::size_t i, ItemDraft& draft) {
    ColumnValues& values = *items_[i].values;
    if (!values.listed.empty()) {
      std::vector<std::string> lines;
      for (const std::string& value : values.listed) {
        auto line =
            keys_.columns[i].kind == Role::key ? std::optional(value) : list_line(value, true);
        if (line) {
          lines.push_back(std::move(*line));
        } else {
          planned_.remarks.push_back(label(i) + "the value \"" + value +
                                     "\" left out, as a list of code page 932 cannot hold it");
        }
      }
      draft.values = enumeration_keys(lines, schema_.columns[i], planned_.file, planned_.lists,
                                      draft.attributes);
    } else {
      std::erase_if(values.keys, [](const LayoutKey& key) { return key.name == "order"; });
      draft.values = std::move(values.keys);
    }
    if (items_[i].repeat_level > 0) {
      draft.values.push_back(
          {"repeat", "{ level = " + std::to_string(items_[i].repeat_level) + ", count = 1 }"});
    }
  }

  const std::string& hub_item() const {
    return schema_.columns[keys_.keys[*keys_.hub].key->columns.front()].name;
  }

  const ImportPlan& plan_;
  const std::size_t table_;
  const ImportedTable& imported_;
  const TableSchema& schema_;
  const KeyPlan& keys_;
  std::vector<PlannedItem>& items_;
  PlannedTable& planned_;
};

}  // namespace

void write_layout(const ImportPlan& plan, std::size_t table, const KeyPlan& keys,
                  std::vector<PlannedItem>& items, PlannedTable& planned) {
  LayoutWriter(plan, table, keys, items, planned).run();
}

}  // namespace korvex::host
