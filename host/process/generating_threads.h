#pragma once

#include <cstddef>
#include <optional>

// How many threads the commands may make records with.
namespace korvex::host {

inline constexpr std::size_t most_usual_jobs = 8;
inline constexpr std::size_t most_jobs = 64;

// How many there are where nobody says it: one for each processor of this process, up to
// most_usual_jobs, or one where many such commands run at once.
enum class UsualJobs { for_all_processors, one };

// Answers korvex_generating_threads() from here on; before, no thread is allowed. One job means no
// thread beside the one that writes.
void set_jobs(std::optional<std::size_t> asked, UsualJobs usual);

}  // namespace korvex::host
