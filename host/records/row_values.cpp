#include "host/records/row_values.h"

#include <filesystem>
#include <utility>

#include "host/layout/own_text.h"
#include "host/process/distinct_files.h"
#include "host/records/value_rule.h"
#include "host/sets/catalogue.h"
#include "host/sources/text_list.h"
#include "platform/file.h"
#include "platform/printable_text.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

using sources::TextList;

// A list is kept in memory with the place of each value. That has room for some times this size.
constexpr std::uintmax_t most_list_bytes = 256 * 1024 * 1024;

// Why a file is not read at all: a device or a pipe may have no end. One that can't be looked at is
// left to the reader, which knows the reason.
std::optional<std::string> refusal_of_file(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (failure || !fs::exists(status) || fs::is_directory(status)) return std::nullopt;
  if (!fs::is_regular_file(status)) return ", which is not a regular file";
  const std::uintmax_t size = fs::file_size(path, failure);
  if (failure || size <= most_list_bytes) return std::nullopt;
  return ", which has " + std::to_string(size) + " bytes, expected at most " +
         std::to_string(most_list_bytes);
}

std::string of_item(const LayoutItem& item) {
  return "item " + platform::printable(item.name) + ": ";
}

// What is wrong with a text of an item, as the end of a message.
std::optional<std::string> fault_of(std::string_view text, const ValueRule& rule,
                                    const Layout& layout) {
  if (auto bad = find_bad_character(layout, text)) return bad;
  if (const auto fault = rule.fault(text)) return ' ' + *fault;
  return std::nullopt;
}

// The first text that does not fit; `first_line` is where the texts begin in their file.
std::optional<std::string> find_fault(const TextList& texts, std::size_t first_line,
                                      const LayoutItem& item, const Layout& layout) {
  const ValueRule rule(item, layout);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (const auto fault = fault_of(texts[i], rule, layout)) {
      return "line " + std::to_string(first_line + i) + *fault;
    }
  }
  return std::nullopt;
}

TextList column_of(const sets::ValueTable& table, std::size_t column, sources::ReadText content) {
  std::vector<std::string_view> texts;
  texts.reserve(table.row_count());
  for (std::size_t row = 0; row < table.row_count(); ++row) {
    texts.push_back(table.value(row, column));
  }
  return TextList::of_texts(texts, std::move(content));
}

std::vector<ways::Fraction> weights_of(const sets::ValueTable& table) {
  std::vector<ways::Fraction> weights;
  for (const std::uint32_t weight : table.weights()) weights.push_back({weight, 1});
  return weights;
}

// The values of a number are the same where their texts mean the same number.
std::unique_ptr<sources::Source> list_source(TextList texts, const LayoutItem& item) {
  const bool is_number = is_numeric(item.attributes.attribute);
  return sources::make_list_source(std::move(texts), is_number ? sources::Comparison::as_numbers
                                                               : sources::Comparison::as_texts);
}

std::optional<RowValues> read_inline(const ListValues& list, const LayoutItem& item,
                                     const Layout& layout, std::vector<LayoutError>& errors) {
  const ValueRule rule(item, layout);
  const std::size_t errors_before = errors.size();
  std::vector<std::string> texts;
  for (const PlacedText& value : list.values) {
    if (const auto fault = rule.fault(value.text))
      errors.push_back({value.place, of_item(item) + "the value " + *fault});
    texts.push_back(value.text);
  }
  if (errors.size() != errors_before) return std::nullopt;
  Rows rows = {std::to_string(texts.size()) + " values", {}};
  return RowValues{list_source(TextList::of_values(texts), item), {}, std::move(rows)};
}

// A list's file, with what is said of it.
class ListReader {
 public:
  ListReader(const ListValues& list, const LayoutItem& item, const Layout& layout,
             std::vector<LayoutError>& errors)
      : list_(list), item_(item), layout_(layout), errors_(errors) {}

  std::optional<RowValues> read() {
    if (const auto refusal = refusal_of_file(list_.file)) return fail(*refusal);
    std::string content;
    if (const auto failure = platform::read_file(list_.file, content)) {
      return fail(", which cannot be read: " + failure.message());
    }
    return list_.column ? read_column(std::move(content)) : read_lines(std::move(content));
  }

 private:
  std::nullopt_t fail(const std::string& what) {
    errors_.push_back({list_.file_place,
                       of_item(item_) + "file names " + platform::printable(list_.file) + what});
    return std::nullopt;
  }

  std::optional<RowValues> read_lines(std::string content) {
    auto lines = TextList::of_lines(std::move(content));
    if (!lines) return fail(": " + lines.reason() + ", expected a text in UTF-8");
    return finish(std::move(*lines), 1, {});
  }

  std::optional<RowValues> read_column(std::string text) {
    const auto content = std::make_shared<const std::string>(std::move(text));
    const auto read = sets::ValueTable::read(*content);
    if (const auto* fault = std::get_if<sets::TableFault>(&read)) {
      return fail(": line " + std::to_string(fault->line) + ": " + fault->text);
    }
    const auto& table = std::get<sets::ValueTable>(read);
    const auto column = table.find_column(list_.column->text);
    if (!column) {
      errors_.push_back({list_.column->place,
                         of_item(item_) + "column is \"" + platform::printable(list_.column->text) +
                             "\", expected one of " + list_names(table.columns())});
      return std::nullopt;
    }
    return finish(column_of(table, *column, {*content, content}), 2, weights_of(table));
  }

  std::optional<RowValues> finish(TextList texts, std::size_t first_line,
                                  std::vector<ways::Fraction> weights) {
    if (texts.size() == 0) return fail(", which is empty, expected a value a line");
    if (const auto fault = find_fault(texts, first_line, item_, layout_)) {
      return fail(": " + *fault);
    }
    return RowValues{
        list_source(std::move(texts), item_), std::move(weights), {settled_path(list_.file), {}}};
  }

  const ListValues& list_;
  const LayoutItem& item_;
  const Layout& layout_;
  std::vector<LayoutError>& errors_;
};

}  // namespace

std::optional<RowValues> read_rows(const ListValues& list, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors) {
  return list.file.empty() ? read_inline(list, item, layout, errors)
                           : ListReader(list, item, layout, errors).read();
}

std::optional<RowValues> read_rows(const BuiltinValues& builtin, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors) {
  const auto found =
      sets::find_column(builtin.set.text, builtin.language.text, layout.sets_version);
  if (const auto* fault = std::get_if<sets::Fault>(&found)) {
    const bool is_language = fault->key == sets::Fault::Key::language;
    const char* key = is_language                               ? "language "
                      : fault->key == sets::Fault::Key::version ? "the version of the set "
                                                                : "set ";
    errors.push_back({is_language ? builtin.language.place : builtin.set.place,
                      of_item(item) + key + fault->text});
    return std::nullopt;
  }
  const sets::Column column = std::get<sets::Column>(found);
  const sets::ValueTable table = sets::read_table(*column.table);
  // What a set was read from is in the program, or is kept as long as it runs.
  TextList texts = column_of(table, column.column, {column.table->text, nullptr});
  if (const auto fault = find_fault(texts, 2, item, layout)) {
    errors.push_back(
        {builtin.set.place, of_item(item) + "set \"" + builtin.set.text + "\": " + *fault});
    return std::nullopt;
  }
  return RowValues{
      list_source(std::move(texts), item),
      weights_of(table),
      {"set " + std::string(column.table->set) + '.' + std::string(column.table->language),
       std::string(column.table->part)}};
}

}  // namespace korvex::host
