#include "host/databases/sql_words.h"

#include <algorithm>
#include <cctype>

#include "host/text/any_case.h"

namespace korvex::host {

bool is_word_part(char byte) {
  return std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '_' || byte == '$' ||
         (byte & 0x80) != 0;
}

namespace {

// The end of a text that begins at a place and continues after the next `end`, or to the last byte.
std::size_t end_after(std::string_view sql, std::size_t place, std::string_view end) {
  const std::size_t found = sql.find(end, place);
  return found == std::string_view::npos ? sql.size() : found + end.size();
}

// Takes what is between two marks, the first of them at `place`, which then is after the
// second. A mark that comes twice is one of the text.
std::string take_marked(std::string_view sql, char mark, std::size_t& place) {
  std::string text;
  for (++place; place < sql.size(); ++place) {
    if (sql[place] == mark && ++place < sql.size() && sql[place] != mark) break;
    if (place < sql.size()) text += sql[place];
  }
  return text;
}

SqlWord take_word(std::string_view sql, std::size_t& place, Brackets brackets) {
  const char first = sql[place];
  if (first == '\'') return {SqlWord::Kind::text, take_marked(sql, first, place)};
  if (first == '"' || first == '`') {
    return {SqlWord::Kind::quoted_name, take_marked(sql, first, place)};
  }
  if (first == '[' && brackets == Brackets::quote_names)
    return {SqlWord::Kind::quoted_name, take_marked(sql, ']', place)};
  const std::size_t begin = place++;
  if (!is_word_part(first)) return {SqlWord::Kind::symbol, std::string(1, first)};
  while (place < sql.size() && is_word_part(sql[place])) ++place;
  return {SqlWord::Kind::name, std::string(sql.substr(begin, place - begin))};
}

// Where the next word begins: past blanks and comments.
std::size_t skip_blanks(std::string_view sql, std::size_t place) {
  while (place < sql.size()) {
    if (std::isspace(static_cast<unsigned char>(sql[place])) != 0) {
      ++place;
    } else if (sql.substr(place).starts_with("--")) {
      place = end_after(sql, place, "\n");
    } else if (sql.substr(place).starts_with("/*")) {
      place = end_after(sql, place + 2, "*/");
    } else {
      break;
    }
  }
  return place;
}

}  // namespace

bool SqlWord::is_keyword(std::string_view keyword) const {
  return kind == Kind::name && is_same_in_any_case(text, keyword);
}

std::vector<SqlWord> sql_words(std::string_view sql, Brackets brackets) {
  std::vector<SqlWord> words;
  for (std::size_t place = skip_blanks(sql, 0); place < sql.size();
       place = skip_blanks(sql, place)) {
    words.push_back(take_word(sql, place, brackets));
  }
  return words;
}

IndexText index_text(std::string_view create_index) {
  IndexText index;
  int depth = 0;
  std::size_t begin = 0;  // of the member, or of the condition
  bool is_list_over = false;
  for (std::size_t place = skip_blanks(create_index, 0); place < create_index.size();
       place = skip_blanks(create_index, place)) {
    const std::size_t word_begin = place;
    const SqlWord word = take_word(create_index, place, Brackets::quote_names);
    if (is_list_over && index.condition.empty() && word.is_keyword("WHERE")) {
      index.condition = create_index.substr(place);
    }
    if (is_list_over) continue;
    if (word.is_symbol('(') && ++depth == 1) begin = place;
    if (depth > 1) index.has_expression = true;
    const bool ends_list = word.is_symbol(')') && --depth == 0;
    if (ends_list || (depth == 1 && word.is_symbol(','))) {
      index.members.emplace_back(create_index.substr(begin, word_begin - begin));
      begin = place;
    }
    is_list_over = ends_list;
  }
  return index;
}

std::vector<std::string> check_texts(std::string_view create_table) {
  std::vector<std::string> texts;
  bool is_check = false;  // the word before was CHECK
  int depth = 0;          // of parentheses in a CHECK; 0 outside of one
  std::size_t begin = 0;
  for (std::size_t place = skip_blanks(create_table, 0); place < create_table.size();
       place = skip_blanks(create_table, place)) {
    const std::size_t word_begin = place;
    const SqlWord word = take_word(create_table, place, Brackets::quote_names);
    if (word.is_symbol('(') && (depth > 0 || is_check) && ++depth == 1) begin = place;
    if (word.is_symbol(')') && depth > 0 && --depth == 0) {
      texts.emplace_back(create_table.substr(begin, word_begin - begin));
    }
    is_check = word.is_keyword("CHECK");
  }
  return texts;
}

std::vector<std::size_t> names_in(const std::vector<SqlWord>& expression,
                                  const std::vector<std::string>& names) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < expression.size(); ++i) {
    const SqlWord& word = expression[i];
    const bool is_function = i + 1 < expression.size() && expression[i + 1].is_symbol('(');
    if (is_function ||
        (word.kind != SqlWord::Kind::name && word.kind != SqlWord::Kind::quoted_name)) {
      continue;
    }
    auto name = std::find(names.begin(), names.end(), word.text);
    if (name == names.end()) {
      name = std::find_if(names.begin(), names.end(), [&](const std::string& each) {
        return is_same_in_any_case(each, word.text);
      });
    }
    if (name != names.end()) places.push_back(static_cast<std::size_t>(name - names.begin()));
  }
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

std::vector<SqlWord> check_expression(std::string_view create_table, std::string_view name) {
  const std::vector<SqlWord> words = sql_words(create_table);
  std::vector<SqlWord> expression;
  bool has_name = false;   // the constraint that the words belong to
  bool is_inside = false;  // of its CHECK
  int depth = 0;           // of parentheses since CONSTRAINT
  for (std::size_t i = 0; i < words.size(); ++i) {
    const SqlWord& word = words[i];
    if (word.is_keyword("CONSTRAINT") && i + 1 < words.size()) {
      has_name = is_same_in_any_case(words[i + 1].text, name);
      is_inside = false;
      depth = 0;
      continue;
    }
    if (!has_name) continue;
    if (is_inside) expression.push_back(word);
    if (word.is_keyword("CHECK") && depth == 0) is_inside = true;
    if (word.is_symbol('(')) ++depth;
    if (word.is_symbol(')') && --depth <= 0) is_inside = false;
    if (depth < 0 || (depth == 0 && word.is_symbol(','))) has_name = false;
  }
  return expression;
}

}  // namespace korvex::host
