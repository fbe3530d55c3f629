#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "courses/course_cursor.h"
#include "courses/enum_data_list.h"
#include "courses/item_course.h"
#include "host/sources/source.h"
#include "host/text/code_page_text.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"
#include "run/item_generator.h"

// The texts of the engine's items, at any of their steps, in UTF-8.
namespace korvex::host {

// Texts of code page 932 on their way into UTF-8.
class Decoder {
 public:
  void append(std::string_view text, std::string& out) {
    if (platform::is_ascii(text)) {
      out += text;
    } else {
      out += decoded(text);
    }
  }

  // Valid until the next call.
  const std::string& decoded(std::string_view text) {
    if (!decoder_.decode(text, decoded_)) {
      throw sources::BadValue(platform::printable_from_code_page(text) +
                              " has bytes without meaning in code page 932, expected characters");
    }
    return decoded_;
  }

 private:
  CodePageDecoder decoder_;
  std::string decoded_;
};

// The texts of an item by their steps. Those in a row cost least.
class CourseTexts {
 public:
  CourseTexts(const ItemGenerator& item, LayoutKind layout_kind)
      : course_(*ItemCourse::of(item.column(), layout_kind)),
        room_(course_.size() + Course::max_text_size) {
    for (const auto& element : course_.elements()) {
      cursors_.emplace_back(*element);
      // Elements count in characters of one kind, so that the first text tells it of all.
      is_ascii_ = is_ascii_ && platform::is_ascii(cursors_.back().text());
    }
  }

  void append(Steps step, std::string& out) {
    text_.resize(room_);
    const char* const end = write(step, text_.data());
    const std::string_view text(text_.data(), static_cast<std::size_t>(end - text_.data()));
    out += is_ascii_ ? text : decoder_.decoded(text);
  }

  void append_all(std::span<const Steps> steps, sources::TextBlock& out) {
    for (const Steps step : steps) {
      if (out.is_full()) return;
      char* const begin = out.room(room_);
      const char* const end = write(step, begin);
      if (is_ascii_) {
        out.add_written(end);
      } else {
        out.add_copy(decoder_.decoded({begin, static_cast<std::size_t>(end - begin)}));
      }
    }
  }

 private:
  // Writes a text where there is `room_` for it; answers its end.
  char* write(Steps step, char* out) {
    const bool is_next = step == latest_ + 1;
    latest_ = step;
    return is_next ? write_next(step, out) : write_anywhere(step, out);
  }

  char* write_anywhere(Steps step, char* out) const {
    const std::size_t shown = course_.shown_at(step);
    for (std::size_t i = 0; i < shown; ++i) {
      const Course& element = *course_.elements()[i];
      const Steps restart = element.facts().restart;
      element.write(step < restart ? step : step % restart, out);
      out += element.facts().size;
    }
    return out;
  }

  char* write_next(Steps step, char* out) {
    for (CourseCursor& cursor : cursors_) {
      if (in_a_row_ + 1 == step) {
        cursor.advance(step);
      } else {
        cursor.seek(step);
      }
    }
    in_a_row_ = step;
    const std::size_t shown = course_.shown_at(step);
    for (std::size_t i = 0; i < shown; ++i) out = cursors_[i].write(out);
    return out;
  }

  ItemCourse course_;
  std::size_t room_;
  std::vector<CourseCursor> cursors_;
  Steps in_a_row_ = 0;  // where the cursors are
  Steps latest_ = 0;
  bool is_ascii_ = true;
  Decoder decoder_;
  std::string text_;
};

// The values of a list by their places.
class ListTexts {
 public:
  ListTexts(const ItemGenerator& item, LayoutKind) : cursor_(*item.enumeration()) {}

  void append(Steps index, std::string& out) {
    if (index == cursor_.index() + 1) {
      cursor_.next();
    } else {
      cursor_.seek(index);
    }
    decoder_.append(cursor_.value(), out);
  }

  void append_all(std::span<const Steps> indices, sources::TextBlock& out) {
    for (const Steps index : indices) {
      if (out.is_full()) return;
      text_.clear();
      append(index, text_);
      out.add_copy(text_);
    }
  }

 private:
  std::string text_;
  EnumCursor cursor_;
  Decoder decoder_;
};

}  // namespace korvex::host
