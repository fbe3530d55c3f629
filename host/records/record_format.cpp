#include "host/records/record_format.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/databases/sql_names.h"
#include "host/records/value_text.h"
#include "platform/codepage.h"
#include "platform/path.h"

namespace korvex::host {

using sources::TextBlock;

namespace {

constexpr int records_in_insert = 500;

std::vector<ValueText> texts_of(const std::vector<PreparedItem>& items) {
  return {items.begin(), items.end()};
}

// Characters that a field can't hold as they are.
class Specials {
 public:
  explicit constexpr Specials(std::string_view characters) {
    for (const char c : characters) is_special_[static_cast<unsigned char>(c)] = true;
  }

  constexpr bool has(char c) const { return is_special_[static_cast<unsigned char>(c)]; }
  bool has_any_of(std::string_view text) const {
    bool found = false;
    for (const char c : text) found = found | has(c);
    return found;
  }

 private:
  std::array<bool, 256> is_special_ = {};
};

class Csv {
 public:
  static constexpr char separator = ',';
  static constexpr std::string_view line_end = "\r\n";
  static constexpr std::string_view lone_empty = "\"\"";

  explicit Csv(const FormatChoices&) {}

  // A value without any stands as it is.
  static bool has_special(std::string_view value) {
    static constexpr Specials specials(",\"\r\n");
    return specials.has_any_of(value);
  }

  void append_field(std::string_view value, std::string& out) const {
    if (!has_special(value)) {
      out += value;
      return;
    }
    out += '"';
    for (const char c : value) {
      if (c == '"') out += '"';
      out += c;
    }
    out += '"';
  }
};

class Tsv {
 public:
  static constexpr char separator = '\t';
  static constexpr std::string_view line_end = "\n";
  static constexpr std::string_view lone_empty = "";

  explicit Tsv(const FormatChoices& choices) : in_code_page_(choices.in_code_page) {}

  static bool has_special(std::string_view value) { return specials.has_any_of(value); }

  void append_field(std::string_view value, std::string& out) const {
    for (std::size_t i = 0; i < value.size(); ++i) {
      const char c = value[i];
      // The second byte of a character of the code page may look like a backslash.
      if (in_code_page_ && platform::is_lead_byte(c) && i + 1 < value.size()) {
        out += value.substr(i++, 2);
      } else if (specials.has(c)) {
        out += '\\';
        out += std::string_view("tnr\\")[characters.find(c)];
      } else {
        out += c;
      }
    }
  }

 private:
  static constexpr std::string_view characters = "\t\n\r\\";
  static constexpr Specials specials = Specials(characters);

  bool in_code_page_;
};

// Fields between separators.
template <class Form>
class Lines : public RecordFormat {
 public:
  Lines(const std::vector<std::string>& names, const std::vector<PreparedItem>& items,
        const FormatChoices& choices)
      : names_(names.begin(), names.end()),
        texts_(texts_of(items)),
        written_(items.size()),
        form_(choices),
        header_(choices.header) {}

  void begin(std::string& out) override {
    if (!header_) return;
    append_line(names_, out,
                [&](std::size_t, std::string_view name) { form_.append_field(name, out); });
  }

  void append(std::span<const std::string_view> values, std::string& out) override {
    append_line(values, out, [&](std::size_t i, std::string_view value) {
      const std::string_view text = texts_[i].convert(value);
      if (texts_[i].is_number_or_moment()) {
        out += text;
      } else {
        form_.append_field(text, out);
      }
    });
  }

  // First each column, then the rows: so a loop has one kind of value, and a row consists of texts
  // that are only copied.
  void append_rows(std::span<const RecordColumn> columns, std::size_t rows,
                   std::string& out) override {
    std::size_t bytes = rows * (columns.size() + Form::line_end.size()) + TextBlock::overhang;
    fields_.clear();
    for (std::size_t i = 0; i < columns.size(); ++i) {
      fields_.push_back(as_written(columns[i], rows, i));
      bytes += fields_.back()->bytes();
    }
    if (columns.size() == 1) bytes += rows * Form::lone_empty.size();
    const std::size_t begin = out.size();
    out.resize(begin + bytes);
    char* end = out.data() + begin;
    for (std::size_t row = 0; row < rows; ++row) {
      const char* const line = end;
      for (const TextBlock* field : fields_) {
        end = sources::copy_text((*field)[row], end);
        *end++ = Form::separator;
      }
      --end;
      if (columns.size() == 1 && end == line) end = put(Form::lone_empty, end);
      end = put(Form::line_end, end);
    }
    out.resize(static_cast<std::size_t>(end - out.data()));
  }

 private:
  static char* put(std::string_view text, char* out) {
    return std::copy(text.begin(), text.end(), out);
  }

  // The values of a column as they stand in lines: most often just as they are.
  const TextBlock* as_written(const RecordColumn& column, std::size_t rows, std::size_t i) {
    if (column.shape.only_plain && texts_[i].keeps_values()) return column.texts;
    if (written_[i] == nullptr) written_[i] = std::make_unique<TextBlock>();
    texts_[i].convert(column, rows, *written_[i],
                      [this](std::string_view text, TextBlock& to) { frame(text, to); });
    return written_[i].get();
  }

  void frame(std::string_view text, TextBlock& to) {
    if (!Form::has_special(text)) {
      to.add(text);
      return;
    }
    framed_.clear();
    form_.append_field(text, framed_);
    to.add_copy(framed_);
  }

  template <typename Append>
  void append_line(std::span<const std::string_view> fields, std::string& out, Append append) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (i > 0) out += Form::separator;
      append(i, fields[i]);
      end_field(out);
    }
    // An empty line would be no record at all.
    if (fields.size() == 1 && fields.front().empty()) out += Form::lone_empty;
    out += Form::line_end;
  }

  std::vector<std::string_view> names_;
  std::vector<ValueText> texts_;
  std::vector<std::unique_ptr<TextBlock>> written_;  // columns that are not written as they are
  std::vector<const TextBlock*> fields_;             // of rows that are put together
  std::string framed_;
  Form form_;
  bool header_;
};

void append_json_text(std::string_view text, std::string& out) {
  static constexpr std::string_view digits = "0123456789abcdef";
  out += '"';
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (code < 0x20 || code == 0x7F) {
      out += "\\u00";
      out += digits[code >> 4];
      out += digits[code & 0xF];
    } else {
      out += c;
    }
  }
  out += '"';
}

void append_sql_text(std::string_view text, std::string& out, char quote) {
  out += quote;
  for (const char c : text) {
    if (c == quote) out += quote;
    out += c;
  }
  out += quote;
}

class JsonLines : public RecordFormat {
 public:
  JsonLines(const std::vector<std::string>& names, const std::vector<PreparedItem>& items)
      : texts_(texts_of(items)) {
    for (const std::string& name : names) {
      keys_.emplace_back(keys_.empty() ? "{" : ",");
      append_json_text(name, keys_.back());
      keys_.back() += ':';
    }
  }

  void append(std::span<const std::string_view> values, std::string& out) override {
    for (std::size_t i = 0; i < values.size(); ++i) {
      out += keys_[i];
      const std::string_view text = texts_[i].convert(values[i]);
      if (text.empty()) {
        out += "null";
      } else if (texts_[i].is_number() || texts_[i].is_boolean()) {
        out += text;
      } else {
        append_json_text(text, out);
      }
      end_field(out);
    }
    out += "}\n";
  }

 private:
  std::vector<ValueText> texts_;
  std::vector<std::string> keys_;
};

class SqlInserts : public RecordFormat {
 public:
  SqlInserts(const std::string& table, const std::vector<std::string>& names,
             const std::vector<PreparedItem>& items)
      : texts_(texts_of(items)) {
    head_ = "INSERT INTO " + table;
    for (std::size_t i = 0; i < names.size(); ++i) {
      head_ += i == 0 ? " (" : ", ";
      append_sql_text(names[i], head_, '"');
    }
    head_ += ") VALUES\n";
  }

  void append(std::span<const std::string_view> values, std::string& out) override {
    out += in_insert_ == 0 ? head_ : ",\n";
    for (std::size_t i = 0; i < values.size(); ++i) {
      out += i == 0 ? "(" : ", ";
      append_value(texts_[i], values[i], out);
      end_field(out);
    }
    out += ')';
    if (++in_insert_ == records_in_insert) end(out);
  }

  void end(std::string& out) override {
    if (in_insert_ > 0) out += ";\n";
    in_insert_ = 0;
  }

  void go_to(RecordNumber record) override {
    in_insert_ = static_cast<int>(record.number() % records_in_insert);
  }

 private:
  static void append_value(ValueText& item, std::string_view value, std::string& out) {
    const std::string_view text = item.convert(value);
    if (text.empty()) {
      out += "NULL";
    } else if (item.is_number()) {
      out += text;
    } else {
      append_sql_text(text, out, '\'');
    }
  }

  std::vector<ValueText> texts_;
  std::string head_;
  int in_insert_ = 0;
};

}  // namespace

void RecordFormat::append_rows(std::span<const RecordColumn> columns, std::size_t rows,
                               std::string& out) {
  row_.resize(columns.size());
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) row_[i] = (*columns[i].texts)[row];
    append(row_, out);
  }
}

std::string sql_table(const FormatChoices& choices, const Layout& layout) {
  if (!choices.table.empty()) return quoted_path(choices.table);
  return layout.table.empty() ? quoted_name(platform::stem(layout.data))
                              : quoted_path(layout.table);
}

std::unique_ptr<RecordFormat> make_record_format(const FormatChoices& choices,
                                                 const std::vector<std::string>& names,
                                                 const std::vector<PreparedItem>& items) {
  switch (choices.dialect) {
    case Dialect::csv:
      return std::make_unique<Lines<Csv>>(names, items, choices);
    case Dialect::tsv:
      return std::make_unique<Lines<Tsv>>(names, items, choices);
    case Dialect::json_lines:
      return std::make_unique<JsonLines>(names, items);
    case Dialect::sql:
      break;
  }
  return std::make_unique<SqlInserts>(choices.table, names, items);
}

}  // namespace korvex::host
