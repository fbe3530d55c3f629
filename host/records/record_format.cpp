#include "host/records/record_format.h"

#include <algorithm>

#include "formatlang/attributes.h"
#include "host/records/field_form.h"
#include "platform/codepage.h"

namespace korvex::host {

namespace {

constexpr int records_in_insert = 500;

// Fields between separators.
class Lines : public RecordFormat {
 public:
  Lines(const std::vector<std::string>& names, bool header) : names_(names), header_(header) {}

  void begin(std::string& out) override {
    if (header_) append(names_, out);
  }

  void append(const std::vector<std::string>& values, std::string& out) override {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i > 0) out += separator();
      append_field(values[i], out);
    }
    // An empty line would be no record at all.
    if (values.size() == 1 && values.front().empty()) append_lone_empty(out);
    out += line_end();
  }

 protected:
  virtual char separator() const = 0;
  virtual std::string_view line_end() const = 0;
  virtual void append_field(const std::string& value, std::string& out) const = 0;
  virtual void append_lone_empty(std::string&) const {}

 private:
  const std::vector<std::string>& names_;
  bool header_;
};

class Csv : public Lines {
 public:
  using Lines::Lines;

 private:
  char separator() const override { return ','; }
  std::string_view line_end() const override { return "\r\n"; }
  void append_field(const std::string& value, std::string& out) const override {
    if (value.find_first_of(",\"\r\n") == std::string::npos) {
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
  Tsv(const std::vector<std::string>& names, const FormatChoices& choices)
      : Lines(names, choices.header), in_code_page_(choices.in_code_page) {}

 private:
  char separator() const override { return '\t'; }
  std::string_view line_end() const override { return "\n"; }
  void append_field(const std::string& value, std::string& out) const override {
    for (std::size_t i = 0; i < value.size(); ++i) {
      const char c = value[i];
      // The second byte of a character of the code page may look like a backslash.
      if (in_code_page_ && platform::is_lead_byte(c) && i + 1 < value.size()) {
        out.append(value, i++, 2);
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

// Dates are written with hyphens and times with colons, whatever the layout's kind makes of them.
std::string_view standard_moment(const LayoutItem& item, const std::string& value,
                                 MomentText& text) {
  return text.convert(moment_form(item.attributes.attribute), value);
}

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
  JsonLines(const std::vector<std::string>& names, const std::vector<const LayoutItem*>& items)
      : items_(items) {
    for (const std::string& name : names) {
      keys_.emplace_back(keys_.empty() ? "{" : ",");
      append_json_text(name, keys_.back());
      keys_.back() += ':';
    }
  }

  void append(const std::vector<std::string>& values, std::string& out) override {
    for (std::size_t i = 0; i < values.size(); ++i) {
      out += keys_[i];
      if (values[i].empty()) {
        out += "null";
        continue;
      }
      const auto number =
          is_numeric(items_[i]->attributes.attribute) ? plain_number(values[i]) : std::nullopt;
      if (number) {
        out += *number;
      } else {
        MomentText moment;
        append_json_text(standard_moment(*items_[i], values[i], moment), out);
      }
    }
    out += "}\n";
  }

 private:
  const std::vector<const LayoutItem*>& items_;
  std::vector<std::string> keys_;
};

class SqlInserts : public RecordFormat {
 public:
  SqlInserts(const std::string& table, const std::vector<std::string>& names,
             const std::vector<const LayoutItem*>& items)
      : items_(items) {
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
      append_value(*items_[i], values[i], out);
    }
    out += ')';
    if (++in_insert_ == records_in_insert) end(out);
  }

  void end(std::string& out) override {
    if (in_insert_ > 0) out += ";\n";
    in_insert_ = 0;
  }

 private:
  static void append_value(const LayoutItem& item, const std::string& value, std::string& out) {
    const auto number = is_numeric(item.attributes.attribute) ? plain_number(value) : std::nullopt;
    if (value.empty()) {
      out += "NULL";
    } else if (number) {
      out += *number;
    } else {
      MomentText moment;
      append_sql_text(standard_moment(item, value, moment), out, '\'');
    }
  }

  const std::vector<const LayoutItem*>& items_;
  std::string head_;
  int in_insert_ = 0;
};

}  // namespace

std::unique_ptr<RecordFormat> make_record_format(const FormatChoices& choices,
                                                 const std::vector<std::string>& names,
                                                 const std::vector<const LayoutItem*>& items) {
  switch (choices.dialect) {
    case Dialect::csv:
      return std::make_unique<Csv>(names, choices.header);
    case Dialect::tsv:
      return std::make_unique<Tsv>(names, choices);
    case Dialect::json_lines:
      return std::make_unique<JsonLines>(names, items);
    case Dialect::sql:
      break;
  }
  return std::make_unique<SqlInserts>(choices.table, names, items);
}

std::optional<std::string> plain_number(std::string_view text) {
  const bool is_minus = text.starts_with('-');
  if (is_minus || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  std::string_view whole = text.substr(0, point);
  const std::string_view fraction = point < text.size() ? text.substr(point + 1) : "";
  const auto is_digits = [](std::string_view digits) {
    return digits.find_first_not_of("0123456789") == std::string_view::npos;
  };
  if ((whole.empty() && fraction.empty()) || !is_digits(whole) || !is_digits(fraction)) {
    return std::nullopt;
  }
  whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
  std::string number = is_minus ? "-" : "";
  number += whole.empty() ? std::string_view("0") : whole;
  if (!fraction.empty()) number.append(".").append(fraction);
  const bool is_zero = number.find_first_of("123456789") == std::string::npos;
  return is_zero && is_minus ? number.substr(1) : number;
}

}  // namespace korvex::host
