#include "platform/large_memory.h"

#include <sys/mman.h>

#include <cstdint>

namespace korvex::platform {

void use_large_pages(void* memory, std::size_t size) {
  // Whole pages of this size only: their neighbours belong to somebody else.
  constexpr std::uintptr_t page = 2 * 1024 * 1024;
  const auto begin = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t first = (begin + page - 1) / page * page;
  const std::uintptr_t last = (begin + size) / page * page;
  if (first < last) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

}  // namespace korvex::platform
