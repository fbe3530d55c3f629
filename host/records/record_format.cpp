#include "host/records/record_format.h"

#include <algorithm>

#include "host/databases/sql_names.h"
#include "host/records/moment_form.h"
#include "platform/codepage.h"
#include "platform/path.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

constexpr int records_in_insert = 500;

// What becomes of an item's values in every dialect: a number has no plus and no zeros that say
// nothing, dates have hyphens and times colons whatever the layout's kind makes of them. A text
// that is no such value stays as it is.
class ValueText {
 public:
  explicit ValueText(const PreparedItem& prepared)
      : is_numeric_(is_numeric(prepared.item->attributes.attribute)),
        is_boolean_(prepared.is_boolean),
        form_(moment_form(prepared.item->attributes.attribute)) {}

  // Valid until the next call.
  std::string_view convert(std::string_view value) {
    is_number_ = is_numeric_ && take_number(value);
    return is_number_ ? std::string_view(number_) : moment_.convert(form_, value);
  }

  // Whether the last value is one that JSON and SQL write without quotation marks.
  bool is_number() const { return is_number_; }

  // The same for JSON's true and false.
  bool is_boolean() const { return is_boolean_; }

 private:
  // False when the text is no plain decimal number.
  bool take_number(std::string_view text) {
    const bool is_minus = text.starts_with('-');
    if (is_minus || text.starts_with('+')) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string_view whole = text.substr(0, point);
    const std::string_view fraction = point < text.size() ? text.substr(point + 1) : "";
    const auto is_digits = [](std::string_view digits) {
      return digits.find_first_not_of("0123456789") == std::string_view::npos;
    };
    if ((whole.empty() && fraction.empty()) || !is_digits(whole) || !is_digits(fraction)) {
      return false;
    }
    whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
    const bool is_zero = whole.empty() && fraction.find_first_not_of('0') == std::string_view::npos;
    number_ = is_minus && !is_zero ? "-" : "";
    number_ += whole.empty() ? std::string_view("0") : whole;
    if (!fraction.empty()) number_.append(".").append(fraction);
    return true;
  }

  bool is_numeric_;
  bool is_boolean_;
  MomentForm form_;
  bool is_number_ = false;
  std::string number_;
  MomentText moment_;
};

std::vector<ValueText> texts_of(const std::vector<PreparedItem>& items) {
  return {items.begin(), items.end()};
}

// Fields between separators.
class Lines : public RecordFormat {
 public:
  Lines(const std::vector<std::string>& names, const std::vector<PreparedItem>& items, bool header)
      : names_(names), texts_(texts_of(items)), header_(header) {}

  void begin(std::string& out) override {
    if (header_) append_line(names_, out, [](std::size_t, std::string_view name) { return name; });
  }

  void append(const std::vector<std::string>& values, std::string& out) override {
    append_line(values, out,
                [this](std::size_t i, std::string_view value) { return texts_[i].convert(value); });
  }

 protected:
  virtual char separator() const = 0;
  virtual std::string_view line_end() const = 0;
  virtual void append_field(std::string_view value, std::string& out) const = 0;
  virtual void append_lone_empty(std::string&) const {}

 private:
  template <typename Convert>
  void append_line(const std::vector<std::string>& fields, std::string& out, Convert convert) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (i > 0) out += separator();
      append_field(convert(i, fields[i]), out);
      end_field(out);
    }
    // An empty line would be no record at all.
    if (fields.size() == 1 && fields.front().empty()) append_lone_empty(out);
    out += line_end();
  }

  const std::vector<std::string>& names_;
  std::vector<ValueText> texts_;
  bool header_;
};

class Csv : public Lines {
 public:
  using Lines::Lines;

 private:
  char separator() const override { return ','; }
  std::string_view line_end() const override { return "\r\n"; }
  void append_field(std::string_view value, std::string& out) const override {
    if (value.find_first_of(",\"\r\n") == std::string_view::npos) {
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
  void append_lone_empty(std::string& out) const override { out += "\"\""; }
};

class Tsv : public Lines {
 public:
  Tsv(const std::vector<std::string>& names, const std::vector<PreparedItem>& items,
      const FormatChoices& choices)
      : Lines(names, items, choices.header), in_code_page_(choices.in_code_page) {}

 private:
  char separator() const override { return '\t'; }
  std::string_view line_end() const override { return "\n"; }
  void append_field(std::string_view value, std::string& out) const override {
    for (std::size_t i = 0; i < value.size(); ++i) {
      const char c = value[i];
      // The second byte of a character of the code page may look like a backslash.
      if (in_code_page_ && platform::is_lead_byte(c) && i + 1 < value.size()) {
        out += value.substr(i++, 2);
        continue;
      }
      const std::size_t special = std::string_view("\t\n\r\\").find(c);
      if (special == std::string_view::npos) {
        out += c;
      } else {
        out += '\\';
        out += std::string_view("tnr\\")[special];
      }
    }
  }

  bool in_code_page_;
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

  void append(const std::vector<std::string>& values, std::string& out) override {
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

  void append(const std::vector<std::string>& values, std::string& out) override {
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

  void go_to(Steps record) override { in_insert_ = static_cast<int>(record % records_in_insert); }

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
      return std::make_unique<Csv>(names, items, choices.header);
    case Dialect::tsv:
      return std::make_unique<Tsv>(names, items, choices);
    case Dialect::json_lines:
      return std::make_unique<JsonLines>(names, items);
    case Dialect::sql:
      break;
  }
  return std::make_unique<SqlInserts>(choices.table, names, items);
}

}  // namespace korvex::host
