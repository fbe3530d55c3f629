#pragma once

#include "platform/interruption.h"

// Ctrl-C, the two other signals that end a program politely, and the one for a reader that has had
// enough ask the program to end: a command looks for them at every step that it can be ended at,
// and what it has begun goes with the objects that hold it.
namespace korvex::host {

// Thrown where a command notices that it is to end.
struct Interrupted {
  int signal;
};

// Throws Interrupted once the end was asked for.
inline void check_interruption() {
  const int signal = platform::received_signal();
  if (signal != 0) throw Interrupted{signal};
}

// Lets the signals ask for the end, until the process ends. One that is ignored, as by nohup, stays
// so.
void watch_interruptions();

// From here on they are ignored: what is done is done.
void ignore_interruptions();

}  // namespace korvex::host
