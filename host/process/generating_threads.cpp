#include "host/process/generating_threads.h"

#include <algorithm>

#include "platform/worker_threads.h"

namespace korvex::host {

namespace {

std::size_t threads = 0;

}  // namespace

void set_jobs(std::optional<std::size_t> asked, UsualJobs usual) {
  std::size_t jobs = 1;
  if (asked) {
    jobs = *asked;
  } else if (usual == UsualJobs::for_all_processors) {
    jobs = std::min(platform::usable_processors(), most_usual_jobs);
  }
  threads = jobs > 1 ? jobs : 0;
}

}  // namespace korvex::host

// Asked by the library.
extern "C" __attribute__((visibility("default"))) int korvex_generating_threads() {
  return static_cast<int>(korvex::host::threads);
}
