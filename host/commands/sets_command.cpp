#include <algorithm>
#include <ostream>

#include "host/commands/commands.h"
#include "host/process/exit_status.h"
#include "host/sets/catalogue.h"
#include "host/text/text_table.h"

namespace korvex::host {

namespace {

using Tables = std::vector<const sets::Table*>;

constexpr std::size_t default_rows = 10;
constexpr std::size_t examples = 3;

// The languages of a table's set, one after the other.
std::string languages_of(const sets::Table& wanted, const Tables& tables) {
  std::string languages;
  for (const sets::Table* table : tables) {
    if (table->set != wanted.set || table->part != wanted.part || table->language.empty()) continue;
    languages.append(languages.empty() ? "" : " ").append(table->language);
  }
  return languages;
}

// The first texts of a column that differ.
std::string examples_of(const sets::ValueTable& texts, std::size_t column) {
  std::vector<std::string_view> shown;
  for (std::size_t row = 0; row < texts.row_count() && shown.size() < examples; ++row) {
    const std::string_view text = texts.value(row, column);
    if (std::find(shown.begin(), shown.end(), text) == shown.end()) shown.push_back(text);
  }
  std::string line;
  for (const std::string_view text : shown) line.append(line.empty() ? "" : ", ").append(text);
  return line;
}

void print_sets(const Tables& tables, std::ostream& out) {
  const Tables of_all_languages = sets::tables_of_version();
  TextTable lines;
  constexpr std::size_t rows_column = 2;
  lines.align_right(rows_column);
  const auto add = [&](std::string_view name, std::string languages, std::string rows,
                       std::string_view values) {
    lines.add({TextTable::from_utf8(name), TextTable::plain(std::move(languages)),
               TextTable::plain(std::move(rows)), TextTable::from_utf8(values)});
  };
  add("Column", "Languages", "Rows", "Examples");
  for (const sets::Table* table : tables) {
    const sets::ValueTable texts = sets::read_table(*table);
    for (std::size_t column = 0; column < texts.columns().size(); ++column) {
      add(std::string(table->set) + "." + std::string(texts.columns()[column]),
          languages_of(*table, of_all_languages), std::to_string(texts.row_count()),
          examples_of(texts, column));
    }
  }
  lines.print(out);
}

void print_rows(const sets::ValueTable& texts, std::size_t count, std::ostream& out) {
  const bool has_weights = !texts.weights().empty();
  TextTable lines;
  if (has_weights) lines.align_right(texts.columns().size());
  std::vector<TextTable::Cell> names;
  for (const std::string_view name : texts.columns()) names.push_back(TextTable::from_utf8(name));
  if (has_weights) names.push_back(TextTable::plain("weight"));
  lines.add(std::move(names));
  for (std::size_t row = 0; row < std::min(count, texts.row_count()); ++row) {
    std::vector<TextTable::Cell> line;
    for (std::size_t column = 0; column < texts.columns().size(); ++column) {
      line.push_back(TextTable::from_utf8(texts.value(row, column)));
    }
    if (has_weights) line.push_back(TextTable::plain(std::to_string(texts.weights()[row])));
    lines.add(std::move(line));
  }
  lines.print(out);
}

void print_tables(const Tables& tables, std::optional<std::int32_t> rows, std::ostream& out) {
  const std::size_t count = rows ? static_cast<std::size_t>(*rows) : default_rows;
  for (const sets::Table* table : tables) {
    if (table != tables.front()) out << '\n';
    print_rows(sets::read_table(*table), count, out);
  }
}

}  // namespace

ExitStatus run_sets(const SetsOptions& options, std::ostream& out, std::ostream& messages) {
  const bool is_list = options.name.empty();
  const auto found = is_list ? sets::find_tables_in(options.language)
                             : sets::find_tables(options.name, options.language);
  if (const auto* fault = std::get_if<sets::Fault>(&found)) {
    messages << (fault->key == sets::Fault::Key::language ? "--language " : "the set ")
             << fault->text << std::endl;
    return ExitStatus::wrong_usage;
  }
  const auto& tables = std::get<Tables>(found);
  if (options.as_file && tables.size() > 1) {
    messages << "--tsv prints one table, expected the name of a column that is in it" << std::endl;
    return ExitStatus::wrong_usage;
  }
  if (options.as_file) {
    out << tables.front()->text;
  } else if (is_list) {
    print_sets(tables, out);
    for (const sets::UserFault& fault : sets::user_tables().faults) {
      messages << fault.text << std::endl;
    }
  } else {
    print_tables(tables, options.rows, out);
  }
  out.flush();
  return ExitStatus::done;
}

}  // namespace korvex::host
