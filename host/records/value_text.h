#pragma once

#include <string>
#include <string_view>

#include "host/records/moment_form.h"
#include "host/records/record_format.h"
#include "platform/text_lines.h"
#include "values/attributes.h"

namespace korvex::host {

// What becomes of an item's values in every dialect: a number has no plus and no zeros that say
// nothing, dates have hyphens and times colons whatever the layout's kind makes of them. A text
// that is no such value stays as it is.
class ValueText {
 public:
  explicit ValueText(const PreparedItem& prepared)
      : is_numeric_(is_numeric(prepared.item->attributes.attribute)),
        is_boolean_(prepared.is_boolean),
        form_(moment_form(prepared.item->attributes.attribute)) {}

  // Valid until the next call, and as long as the value.
  std::string_view convert(std::string_view value) {
    is_number_ = is_numeric_ && take_number(value);
    if (is_number_) return number_;
    const std::string_view text = moment_.convert(form_, value);
    is_moment_ = text.data() != value.data();
    return text;
  }

  // The same for the values of the first rows of a column, as another one. Those that are no number
  // or moment are framed: `frame` adds what is written of them.
  template <class Frame>
  void convert(const RecordColumn& column, std::size_t rows, sources::TextBlock& out, Frame frame) {
    const sources::TextBlock& values = *column.texts;
    out.clear();
    if (is_numeric_ && column.shape.only_digits) {
      for (std::size_t row = 0; row < rows; ++row) out.add(without_zeros(values[row]));
      return;
    }
    for (std::size_t row = 0; row < rows; ++row) {
      const std::string_view value = values[row];
      if (is_numeric_ && take_number(value)) {
        if (number_.data() == changed_.data()) {
          out.add_copy(number_);
        } else {
          out.add(number_);
        }
        continue;
      }
      char* const room = form_ == MomentForm::as_it_is ? nullptr : out.room(longest_moment);
      const std::size_t size = room == nullptr ? 0 : write_moment(form_, value, room);
      if (size > 0) {
        out.add_written(room + size);
      } else {
        frame(value, out);
      }
    }
  }

  // Whether every value stays as it is.
  bool keeps_values() const { return !is_numeric_ && form_ == MomentForm::as_it_is; }

  // Whether the last value consists of digits and what is between them.
  bool is_number_or_moment() const { return is_number_ || is_moment_; }

  // Whether the last value is one that JSON and SQL write without quotation marks.
  bool is_number() const { return is_number_; }

  // The same for JSON's true and false.
  bool is_boolean() const { return is_boolean_; }

 private:
  // False when the text is no plain decimal number.
  bool take_number(std::string_view text) {
    const bool is_minus = text.starts_with('-');
    if (is_minus || text.starts_with('+')) text.remove_prefix(1);
    std::size_t size = text.size();
    std::size_t point = size;
    for (std::size_t i = 0; i < size; ++i) {
      if (platform::is_digit(text[i])) continue;
      if (text[i] != '.' || point != size) return false;
      point = i;
    }
    const bool has_point = point != size;
    if (size == (has_point ? 1 : 0)) return false;
    if (point + 1 == size) --size;
    std::size_t zeros = 0;  // that say nothing
    while (zeros + 1 < point && text[zeros] == '0') ++zeros;
    number_ = {text.data() + zeros, size - zeros};
    const bool is_negative = is_minus && number_.find_first_not_of("0.") != std::string_view::npos;
    if (point == 0 || is_negative) {
      changed_ = is_negative ? "-" : "";
      if (point == 0) changed_ += '0';
      number_ = changed_ += number_;
    }
    return true;
  }

  // A number of digits alone.
  static std::string_view without_zeros(std::string_view digits) {
    while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
    return digits;
  }

  bool is_numeric_;
  bool is_boolean_;
  MomentForm form_;
  bool is_number_ = false;
  bool is_moment_ = false;
  std::string_view number_;
  std::string changed_;
  MomentText moment_;
};

}  // namespace korvex::host
