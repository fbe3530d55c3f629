#include "memory/counted_memory.h"

#include <cstdlib>
#include <new>

namespace korvex::test {

namespace {

// Tests run one thread.
std::int64_t live = 0;
std::int64_t left = 0;  // blocks up to the one that is refused; 0: none is
bool refuses_for_good = false;
bool has_refused = false;

bool is_refused() {
  if (has_refused && refuses_for_good) return true;
  if (left == 0 || --left > 0) return false;
  has_refused = true;
  return true;
}

void* allocate(std::size_t size) noexcept {
  if (is_refused()) return nullptr;
  void* block = std::malloc(size > 0 ? size : 1);
  if (block != nullptr) ++live;
  return block;
}

void release(void* block) noexcept {
  if (block == nullptr) return;
  --live;
  std::free(block);
}

}  // namespace

std::int64_t live_blocks() { return live; }

FailingMemory::FailingMemory(std::int64_t n, bool for_good) {
  left = n;
  refuses_for_good = for_good;
  has_refused = false;
}

FailingMemory::~FailingMemory() {
  left = 0;
  has_refused = false;
}

bool FailingMemory::ran_out() const { return has_refused; }

}  // namespace korvex::test

void* operator new(std::size_t size) {
  void* block = korvex::test::allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new[](std::size_t size) { return ::operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return korvex::test::allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return korvex::test::allocate(size);
}
void operator delete(void* block) noexcept { korvex::test::release(block); }
void operator delete[](void* block) noexcept { korvex::test::release(block); }
void operator delete(void* block, std::size_t) noexcept { korvex::test::release(block); }
void operator delete[](void* block, std::size_t) noexcept { korvex::test::release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { korvex::test::release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  korvex::test::release(block);
}
