#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>

#include "courses/steps.h"

namespace korvex::host {

// "Loading table 2 of 3:  42 %" on a terminal, and nothing anywhere else.
class LoadProgress {
 public:
  LoadProgress(Steps records, std::size_t tables)
      : records_(records), tables_(tables), is_drawing_(::isatty(STDERR_FILENO) == 1) {}
  ~LoadProgress() { clear(); }
  LoadProgress(const LoadProgress&) = delete;
  LoadProgress& operator=(const LoadProgress&) = delete;

  void begin_table() {
    ++table_;
    next_ = done_;
  }

  // One more record.
  void advance() {
    ++done_;
    if (is_drawing_ && done_ >= next_) draw();
  }

  // The rows are all there: what remains is the database's to check and keep.
  void show_checking() {
    if (is_drawing_) std::fputs("\r\033[KChecking and keeping the rows", stderr);
  }

  void clear() {
    if (is_drawing_) std::fputs("\r\033[K", stderr);
    is_drawing_ = false;
  }

 private:
  __extension__ using Wide = unsigned __int128;  // of records in percents

  static constexpr unsigned percents = 100;

  void draw() {
    const auto percent = static_cast<unsigned>(Wide{done_} * percents / records_);
    next_ = static_cast<Steps>((Wide{records_} * (percent + 1) + percents - 1) / percents);
    if (tables_ == 1) {
      std::fprintf(stderr, "\rLoading %3u %%", percent);
    } else {
      std::fprintf(stderr, "\rLoading table %zu of %zu: %3u %%", table_, tables_, percent);
    }
  }

  const Steps records_;
  const std::size_t tables_;
  bool is_drawing_;
  std::size_t table_ = 0;
  Steps done_ = 0;
  Steps next_ = 1;
};

}  // namespace korvex::host
