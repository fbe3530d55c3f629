#pragma once

#include <cstdint>
#include <string>

#include "host/sources/source.h"

namespace korvex::sources {

// Values of other records that one value takes, each perhaps with values of further ones: two from
// each of thirty tables in a row are a thousand million. Who takes more than `most` is a BadValue
// rather than a wait without end. One lives as long as values are looked up.
//
// Values that are looked up together may take no more than one by itself: where that is too little,
// they are made one by one.
class Lookup {
 public:
  static constexpr std::uint64_t most = 1'000'000;

  explicit Lookup(std::uint64_t values = 1) {
    if (nested_++ == 0) taken_ = 0;
    taken_ += values;
    if (taken_ <= most) return;
    --nested_;
    throw BadValue("the value takes more than " + std::to_string(most) +
                   " values of records that follow from each other");
  }
  ~Lookup() { --nested_; }
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;

  // Whoever goes through many records counts the lookups of each by itself.
  class Apart {
   public:
    Apart() : nested_before_(nested_), taken_before_(taken_) { nested_ = 0; }
    ~Apart() {
      nested_ = nested_before_;
      taken_ = taken_before_;
    }
    Apart(const Apart&) = delete;
    Apart& operator=(const Apart&) = delete;

   private:
    std::uint64_t nested_before_;
    std::uint64_t taken_before_;
  };

 private:
  static inline thread_local std::uint64_t nested_ = 0;
  static inline thread_local std::uint64_t taken_ = 0;
};

}  // namespace korvex::sources
