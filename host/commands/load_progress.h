#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>

namespace korvex::host {

// "Loading table 2 of 3:  42 %" on a terminal, and nothing anywhere else.
class LoadProgress {
 public:
  LoadProgress(std::int64_t records, std::size_t tables)
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
  static constexpr std::int64_t percents = 100;

  void draw() {
    const std::int64_t percent = done_ * percents / records_;
    next_ = (records_ * (percent + 1) + percents - 1) / percents;
    if (tables_ == 1) {
      std::fprintf(stderr, "\rLoading %3d %%", static_cast<int>(percent));
    } else {
      std::fprintf(stderr, "\rLoading table %zu of %zu: %3d %%", table_, tables_,
                   static_cast<int>(percent));
    }
  }

  const std::int64_t records_;
  const std::size_t tables_;
  bool is_drawing_;
  std::size_t table_ = 0;
  std::int64_t done_ = 0;
  std::int64_t next_ = 1;
};

}  // namespace korvex::host
