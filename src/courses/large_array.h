#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

#include "platform/large_memory.h"

namespace korvex {

// Room for many plain values, which is given none before they are stored there. Room that is not
// used costs nothing but addresses.
template <typename Value>
class LargeArray {
  static_assert(std::is_trivially_copyable_v<Value>);

 public:
  Value* data() { return values_.get(); }
  const Value* data() const { return values_.get(); }
  std::size_t capacity() const { return capacity_; }

  // Takes the first `used` values along.
  void grow(std::size_t capacity, std::size_t used) {
    auto larger = std::make_unique_for_overwrite<Value[]>(capacity);
    platform::use_large_pages(larger.get(), capacity * sizeof(Value));
    std::copy_n(values_.get(), used, larger.get());
    values_ = std::move(larger);
    capacity_ = capacity;
  }

  // The same for values whose number shows only as they come.
  void require(std::size_t capacity, std::size_t used) {
    if (capacity > capacity_) grow(2 * capacity, used);
  }

 private:
  std::unique_ptr<Value[]> values_;
  std::size_t capacity_ = 0;
};

}  // namespace korvex
