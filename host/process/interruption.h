#pragma once

#include <string>

// Ctrl-C, the two other signals that end a program politely, and the one for a reader that has had
// enough: whatever the program is doing, it is over at once, and what it had begun is gone.
//
// The handler does the removing itself, so it needs no loop that asks for it, and a write that
// blocks, or a question that waits for an answer, ends as well.
namespace korvex::host {

// Lets the signals end the program with 128 and their number as its exit status. A signal that is
// ignored, as by nohup, stays so.
void watch_interruptions();

// From here on they are ignored, those that wait among them: what is done is done.
void ignore_interruptions();

// While it lives, an interruption removes a path.
class RemovedOnInterruption {
 public:
  enum class What {
    file,
    folder,             // with the files in it
    begun_file,         // while this process writes it, not before or after
    begun_temporaries,  // in the folder: the module's temporary files, the same
  };

  RemovedOnInterruption(const std::string& path, What what);
  ~RemovedOnInterruption();
  RemovedOnInterruption(const RemovedOnInterruption&) = delete;
  RemovedOnInterruption& operator=(const RemovedOnInterruption&) = delete;

 private:
  int slot_ = -1;
};

// While it lives, an interruption prints a line on standard error, unless a file that was to be
// removed if only begun is whole by then.
class SaidOnInterruption {
 public:
  explicit SaidOnInterruption(const std::string& text);
  ~SaidOnInterruption();
  SaidOnInterruption(const SaidOnInterruption&) = delete;
  SaidOnInterruption& operator=(const SaidOnInterruption&) = delete;
};

// While it lives, interruptions wait: for a few steps that must happen together.
class InterruptionsHeld {
 public:
  InterruptionsHeld();
  ~InterruptionsHeld();
  InterruptionsHeld(const InterruptionsHeld&) = delete;
  InterruptionsHeld& operator=(const InterruptionsHeld&) = delete;
};

}  // namespace korvex::host
