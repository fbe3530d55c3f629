#include "host/databases/table_import.h"

#include <algorithm>
#include <map>

#include "control/control_file.h"
#include "host/databases/type_mapping.h"
#include "host/process/signals.h"
#include "host/text/code_page_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t longest_name = sizeof(ControlItem::name) - 1;

// A name without what a file's name, or the layout that has it, cannot hold.
std::string file_name_part(std::string_view name) {
  std::string part;
  while (!name.empty()) {
    const std::size_t size = platform::first_character_size(name);
    const bool is_kept = size > 0 && name.front() != '/' && name.front() != '\0';
    part += is_kept ? name.substr(0, size) : "_";
    name.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return part;
}

class TableImporter {
 public:
  TableImporter(Database& database, const std::string& table, std::int32_t records,
                const std::string& folder)
      : database_(database),
        schema_(database.read_schema(table)),
        folder_(folder),
        columns_(schema_.columns.size()) {
    use_.records = records;
    result_.layout.table = schema_.name;
    result_.layout.records = records;
    result_.layout.data = file_name_part(schema_.bare_name) + ".csv";
  }

  TableImport run() {
    if (!schema_.obstacle.empty()) remark("load cannot fill it: " + schema_.obstacle);
    for (const auto& set : schema_.unique_sets) {
      if (set.size() == 1) columns_[set.front()].is_unique = true;
    }
    for (const ForeignKey& key : schema_.foreign_keys) read_keys(key);
    for (std::size_t i = 0; i < columns_.size(); ++i) write_type_list(i);
    for (const auto& set : schema_.unique_sets) make_distinct(set);
    for (std::size_t i = 0; i < columns_.size(); ++i) add_item(i);
    if (result_.layout.items.empty()) {
      result_.errors.emplace_back("no column can become an item");
    }
    result_.layout.remarks.insert(
        result_.layout.remarks.begin(),
        "The table " + schema_.name + ": an item's values go to the column of its name.");
    return std::move(result_);
  }

 private:
  struct Column {
    bool is_unique = false;
    const ForeignKey* key = nullptr;
    const ListFile* list = nullptr;
    std::string obstacle;  // why the keys cannot be read
    std::string same_as;   // a column of this table whose values it takes
    int repeat_level = 0;
  };

  std::string label(std::size_t column) const { return "column " + schema_.columns[column].name; }

  void remark(const std::string& text) { result_.remarks.push_back(text); }

  // A column that gets no values: nothing is wrong with that unless it must have some.
  void leave_without_values(std::size_t column, const std::string& why) {
    if (schema_.columns[column].nullable) {
      remark(label(column) + ": " + why + ", stays NULL");
    } else {
      result_.errors.push_back(label(column) + ": " + why + ", but must not be NULL");
    }
  }

  // Names of columns may differ in what a file's name cannot hold.
  std::string list_name(const ColumnSchema& schema) const {
    const std::string stem = file_name_part(schema_.bare_name) + "." + file_name_part(schema.name);
    std::string name = stem + ".txt";
    const auto is_taken = [&](const auto& list) { return list->name() == name; };
    for (int i = 2; std::any_of(result_.lists.begin(), result_.lists.end(), is_taken); ++i) {
      name = stem + "." + std::to_string(i) + ".txt";
    }
    return name;
  }

  ListFile& begin_list(std::size_t column) {
    const ColumnSchema& schema = schema_.columns[column];
    const auto mapped = map_column(schema, use_);
    const bool is_for_numbers = mapped && is_numeric(mapped->attributes.attribute);
    result_.lists.push_back(std::make_unique<ListFile>(
        folder_, list_name(schema),
        is_for_numbers ? std::optional(mapped->attributes) : std::nullopt));
    columns_[column].list = result_.lists.back().get();
    return *result_.lists.back();
  }

  // Keys of several columns get a list for each: the lists run side by side, so a record's values
  // are those of one key.
  void read_keys(const ForeignKey& key) {
    const bool is_taken = std::any_of(key.columns.begin(), key.columns.end(),
                                      [&](std::size_t i) { return columns_[i].key != nullptr; });
    if (is_taken) {
      remark(names_of(key.columns) + ": a second foreign key, to " + key.table +
             ", is not looked at");
      return;
    }
    std::vector<ListFile*> lists;
    for (const std::size_t column : key.columns) {
      columns_[column].key = &key;
      lists.push_back(&begin_list(column));
    }
    std::int64_t unreadable = 0;
    const auto take = [&](const std::vector<std::string_view>& texts) {
      check_interruption();
      std::vector<std::string> lines;
      for (const std::string_view text : texts) {
        if (auto line = ListFile::line_of(text)) lines.push_back(std::move(*line));
      }
      if (lines.size() < lists.size()) {
        ++unreadable;
        return;
      }
      for (std::size_t i = 0; i < lists.size(); ++i) lists[i]->append(lines[i]);
    };
    try {
      database_.read_keys(key, take);
    } catch (const KeysUnreadable& failure) {
      return leave_out(key, std::string("which cannot be read: ") + failure.what());
    }
    if (unreadable > 0) {
      remark(
          names_of(key.columns) + ": keys of " + key.table +
          " left out, as a list of code page 932 cannot hold them: " + std::to_string(unreadable));
    }
    if (key.columns.size() > 1) {
      remark(names_of(key.columns) + ": together the key of " + key.table +
             ", their lists belong together line by line");
    }
    if (lists.front()->values() > 0) return;
    if (unreadable > 0) return leave_out(key, "none of whose keys can be in a list");
    use_own_keys(key);
  }

  // The table that a key refers to may be this one, and empty: then each row can be its own parent.
  void use_own_keys(const ForeignKey& key) {
    leave_out(key, "which has no rows yet" +
                       (key.is_to_own_table ? "" : " (load " + key.table + " first)"));
    for (std::size_t i = 0; i < key.columns.size(); ++i) {
      if (key.is_to_own_table && !schema_.columns[key.columns[i]].nullable) {
        columns_[key.columns[i]].same_as = key.referenced_columns[i];
      }
    }
  }

  void leave_out(const ForeignKey& key, const std::string& obstacle) {
    for (const std::size_t column : key.columns) {
      columns_[column].obstacle = obstacle;
      const ListFile* list = columns_[column].list;
      std::erase_if(result_.lists, [&](const auto& each) { return each.get() == list; });
      columns_[column].list = nullptr;
    }
  }

  void write_type_list(std::size_t column) {
    const ColumnSchema& schema = schema_.columns[column];
    if (!has_listed_values(schema) || columns_[column].key != nullptr) return;
    ListFile& list = begin_list(column);
    for (const std::string& choice : schema.choices) {
      if (const auto line = ListFile::line_of(choice)) {
        list.append(*line);
      } else {
        remark(label(column) + ": the value \"" + choice +
               "\" left out, as a list of code page 932 cannot hold it");
      }
    }
  }

  // Columns that are only unique together: one that never repeats is enough; keys of other tables
  // are combined.
  void make_distinct(const std::vector<std::size_t>& set) {
    if (set.size() < 2 ||
        std::any_of(set.begin(), set.end(), [&](std::size_t i) { return columns_[i].is_unique; })) {
      return;
    }
    for (const std::size_t column : set) {
      if (columns_[column].key != nullptr) continue;
      const auto mapped = map_column(schema_.columns[column], unique_use(column));
      if (!mapped || mapped->distinct_values < use_.records) continue;
      columns_[column].is_unique = true;
      return;
    }
    if (!combine_keys(set)) {
      remark(names_of(set) + ": unique together, which their values may not be");
    }
  }

  bool combine_keys(const std::vector<std::size_t>& set) {
    const ForeignKey* const first = columns_[set.front()].key;
    std::int64_t combinations = 1;
    bool is_one_key = true;
    for (const std::size_t column : set) {
      const Column& state = columns_[column];
      if (state.list == nullptr || state.list->values() == 0 || state.repeat_level > 0)
        return false;
      is_one_key = is_one_key && first != nullptr && state.key == first;
      combinations *= state.list->values();
      if (combinations > use_.records) combinations = use_.records;
    }
    if (is_one_key) {
      limit_records(set, columns_[set.front()].list->values());
      return true;
    }
    const bool has_wide_key = std::any_of(set.begin(), set.end(), [&](std::size_t i) {
      return columns_[i].key != nullptr && columns_[i].key->columns.size() > 1;
    });
    if (has_wide_key || has_repeats_) return false;
    has_repeats_ = true;
    int level = 0;
    for (const std::size_t column : set) columns_[column].repeat_level = ++level;
    limit_records(set, combinations);
    return true;
  }

  void limit_records(const std::vector<std::size_t>& columns, std::int64_t distinct) {
    if (distinct >= result_.layout.records) return;
    result_.layout.records = static_cast<std::int32_t>(distinct);
    remark(names_of(columns) + ": unique, with only " + std::to_string(distinct) +
           " different values: the layout has " + std::to_string(distinct) + " records");
  }

  std::string names_of(const std::vector<std::size_t>& columns) const {
    if (columns.size() == 1) return label(columns.front());
    std::string names;
    for (const std::size_t column : columns) {
      names += (names.empty() ? "columns " : ", ") + schema_.columns[column].name;
    }
    return names;
  }

  // What the item's comment says of the column.
  std::string description(std::size_t column) const {
    const ColumnSchema& schema = schema_.columns[column];
    std::string text = schema.declared_type.empty() ? "no type" : schema.declared_type;
    if (!schema.nullable) text += ", not null";
    const bool is_unique =
        std::any_of(schema_.unique_sets.begin(), schema_.unique_sets.end(),
                    [column](const auto& set) { return set.size() == 1 && set.front() == column; });
    if (is_unique) text += ", unique";
    if (const ForeignKey* key = columns_[column].key) text += ", refers to " + key->table;
    return text;
  }

  // Why a column's name is none that an item may have; empty for one that is.
  static std::string wrong_name(const std::string& name) {
    const auto encoded = exact_code_page_text(name);
    if (!encoded) return "its name has a character that code page 932 lacks";
    if (encoded->find('\n') != std::string::npos) return "its name has a line end";
    if (encoded->size() <= longest_name) return {};
    return "its name has " + std::to_string(encoded->size()) +
           " bytes in code page 932, expected at most " + std::to_string(longest_name);
  }

  bool takes_name(std::size_t column) {
    const ColumnSchema& schema = schema_.columns[column];
    const std::string why = wrong_name(schema.name);
    if (why.empty()) return true;
    if (schema.nullable || schema.has_default) {
      remark(label(column) + ": " + why + ", left out");
    } else {
      result_.errors.push_back(label(column) + ": " + why + ", but must not be NULL");
    }
    return false;
  }

  void add_item(std::size_t column) {
    const ColumnSchema& schema = schema_.columns[column];
    if (schema.is_generated) {
      remark(label(column) + ": computed by the database, left out");
      return;
    }
    if (!takes_name(column)) return;
    ItemDraft item;
    item.name = schema.name;
    item.nullable = schema.nullable;
    item.remarks.push_back(description(column));
    if (set_values(column, item)) result_.layout.items.push_back(std::move(item));
  }

  // False when the column is left to its default.
  bool set_values(std::size_t column, ItemDraft& item) {
    const Column& state = columns_[column];
    const ColumnSchema& schema = schema_.columns[column];
    if (state.list != nullptr && state.list->values() > 0) {
      set_list(column, item);
      return true;
    }
    const bool is_distinct = state.is_unique || !state.same_as.empty();
    const ColumnUse use = is_distinct ? unique_use(column) : use_;
    const auto mapped = map_column(schema, use);
    item.attributes = mapped ? mapped->attributes : attributes_for_list(schema, 1);
    if (!state.same_as.empty()) {
      item.values.source = ValuesDraft::Source::reference;
      item.values.item_name = state.same_as;
    } else if (state.key != nullptr) {
      leave_without_values(column, "refers to " + state.key->table + ", " + state.obstacle);
    } else if (mapped && mapped->distinct_values == 0) {
      const std::string largest = use.largest ? " (" + std::to_string(*use.largest) + ")" : "";
      leave_without_values(column,
                           "no range of values remains behind the largest that it holds" + largest);
    } else if (mapped) {
      item.values = mapped->values;
      if (state.is_unique) limit_records({column}, mapped->distinct_values);
    } else if (!schema.nullable && schema.has_default) {
      remark(label(column) + ": no item suits the type " + schema.declared_type +
             ", left to its default");
      return false;
    } else {
      leave_without_values(column, "no item suits the type " + schema.declared_type);
    }
    return true;
  }

  ColumnUse unique_use(std::size_t column) {
    ColumnUse use = use_;
    use.is_unique = true;
    if (may_count_on(schema_.columns[column])) {
      use.largest = database_.largest_number(schema_, column);
    }
    use.largest_text = [this, column](const TextForm& form) {
      return database_.largest_text(schema_, column, form);
    };
    return use;
  }

  static bool may_count_on(const ColumnSchema& schema) {
    return schema.type == ColumnType::integer16 || schema.type == ColumnType::integer32 ||
           schema.type == ColumnType::integer64 ||
           (schema.type == ColumnType::decimal && schema.precision > 0 && schema.scale == 0);
  }

  void set_list(std::size_t column, ItemDraft& item) {
    const Column& state = columns_[column];
    const ListFile& list = *state.list;
    const ColumnSchema& schema = schema_.columns[column];
    item.attributes = list.fits_number_item() ? map_column(schema, use_)->attributes
                                              : attributes_for_list(schema, list.longest());
    item.values.source = ValuesDraft::Source::enumeration;
    item.values.file = list.name();
    item.values.repeat_level = state.repeat_level;
    if (state.is_unique) limit_records({column}, list.values());
  }

  Database& database_;
  const TableSchema schema_;
  const std::string folder_;
  ColumnUse use_;
  std::vector<Column> columns_;
  bool has_repeats_ = false;
  TableImport result_;
};

}  // namespace

TableImport import_table(Database& database, const std::string& table, std::int32_t records,
                         const std::string& folder) {
  return TableImporter(database, table, records, folder).run();
}

}  // namespace korvex::host
