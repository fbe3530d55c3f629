#pragma once

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>

namespace korvex {

// Goes from line feed to line feed in a text. Lines are short, so that a search for each would cost
// more than to look at all bytes and turn them into a bit each.
class LineFeedScan {
 public:
  // So many bytes must be readable after the last line feed.
  static constexpr std::size_t overhang = 64;

  // Goes on from `begin`, after which there must be another line feed whenever next() is called.
  void start(const char* begin) {
    window_ = begin;
    feeds_ = feeds_in(window_);
  }

  const char* next() {
    while (feeds_ == 0) {
      window_ += overhang;
      feeds_ = feeds_in(window_);
    }
    const char* feed = window_ + std::countr_zero(feeds_);
    feeds_ &= feeds_ - 1;
    return feed;
  }

 private:
  static std::uint64_t feeds_in(const char* window) {
    std::uint64_t feeds = 0;
#ifdef __SSE2__
    const __m128i feed = _mm_set1_epi8('\n');
    for (std::size_t place = 0; place < overhang; place += sizeof(__m128i)) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(window + place));
      const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed));
      feeds |= static_cast<std::uint64_t>(found) << place;
    }
#else
    for (std::size_t place = 0; place < overhang; ++place) {
      feeds |= std::uint64_t{window[place] == '\n'} << place;
    }
#endif
    return feeds;
  }

  const char* window_ = nullptr;
  std::uint64_t feeds_ = 0;
};

}  // namespace korvex
