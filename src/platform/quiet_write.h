#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string_view>

// A library must not end its host: a pipe whose reader has left and a file that has reached the
// process's size limit answer a write with a signal, which ends a process that did not expect it.
namespace korvex::platform {

// write(), whose failure is only an error number (EPIPE, EFBIG). The two signals are blocked in the
// calling thread during the call, and one that the write itself has raised is removed; the host's
// handlers, its mask and a signal that was pending before are unchanged.
ssize_t write_quietly(int descriptor, const void* data, std::size_t size);

// Puts a text on standard error, as far as that takes it.
void print_error(std::string_view text);

}  // namespace korvex::platform
