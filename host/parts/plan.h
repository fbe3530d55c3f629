#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/parts/part_estimate.h"

namespace korvex::host {

// What makes the parts of a plan.
enum class PlanEngine { slurm, parallel, kubernetes, make };

inline const std::vector<std::pair<std::string, PlanEngine>> plan_engines = {
    {"slurm", PlanEngine::slurm},
    {"parallel", PlanEngine::parallel},
    {"kubernetes", PlanEngine::kubernetes},
    {"make", PlanEngine::make},
};

// More parts than this an engine does not manage in one job.
inline constexpr std::uint64_t most_planned_parts = 100'000;

struct Plan {
  std::vector<std::string> making;     // the program's arguments for a part, without --part
  std::vector<std::string> verifying;  // those that verify all parts
  std::string whole;                   // the file that the parts are of
  std::vector<std::string> folders;    // that the layout, its lists and the parts are in
  std::uint64_t parts = 1;
};

// The script with which an engine makes all parts: those that are complete stay, and what lacks is
// made. It is as long for many parts as for few. It ends with an error when a part has failed.
std::string script_of(const Plan& plan, PlanEngine engine, const PartEstimate& estimate);

}  // namespace korvex::host
