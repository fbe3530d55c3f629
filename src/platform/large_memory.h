#pragma once

#include <cstddef>

namespace korvex::platform {

// Tells the system that the memory will be used from end to end, so that it may come in large
// pages: a value list of a million lines is there in three quarters of the time. Only a hint.
void use_large_pages(void* memory, std::size_t size);

}  // namespace korvex::platform
