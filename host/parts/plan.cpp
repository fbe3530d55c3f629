#include "host/parts/plan.h"

#include <cmath>
#include <cstdio>
#include <string_view>

#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::string_view program = "\"${KORVEX:-korvex}\"";

// In each script a name between @ stands for what differs from plan to plan.
constexpr std::string_view slurm_script = R"(#!/bin/bash
@HEAD@
# Submit it with "sbatch --wait"; it ends with an error if a part has failed. Submitted again, it
# makes what lacks. Then verify:
#   @VERIFY@
#SBATCH --job-name=korvex
#SBATCH --array=1-@TASKS@
#SBATCH --requeue
#SBATCH --open-mode=append
set -eu
failed=0
for ((part = SLURM_ARRAY_TASK_ID; part <= @PARTS@; part += @TASKS@)); do
  @MAKE@ --part "$part"/@PARTS@ --quiet || failed=1
done
# A node may have been at fault: another one tries again.
if ((failed && ${SLURM_RESTART_COUNT:-0} < @RETRIES@)); then
  scontrol requeue "${SLURM_ARRAY_JOB_ID}_$SLURM_ARRAY_TASK_ID" && sleep @REQUEUE_SECONDS@
fi
exit "$failed"
)";

constexpr std::string_view parallel_script = R"(#!/bin/sh
@HEAD@
# GNU parallel makes as many parts at once as there are cores; options in the variable PARALLEL, as
# --sshloginfile, say otherwise. Run again, it goes on where it was interrupted.
set -u
log=@LOG@
make_parts() {
  seq @PARTS@ | parallel --quote --joblog "$log" --resume-failed --retries @RETRIES@ \
    @MAKE@ --part {}/@PARTS@ --quiet
}
verify_parts() {
  @VERIFY@
}
make_parts && verify_parts && exit
# The log may tell of parts that are gone. Without it every part is looked at again.
rm -f "$log"
make_parts && verify_parts
)";

constexpr std::string_view kubernetes_script = R"(@HEAD@
# Put an image that has korvex in it in place of "korvex". The folders are taken from the nodes,
# where a shared file system has them under these paths. The job fails if a part has failed too
# often; applied again, it makes what lacks. Then verify:
#   @VERIFY@
apiVersion: batch/v1
kind: Job
metadata:
  name: korvex
spec:
  completionMode: Indexed
  completions: @PARTS@
  parallelism: @TASKS@
  backoffLimit: @PARTS@
  template:
    spec:
      restartPolicy: Never
      containers:
        - name: korvex
          image: korvex
          command:
            - sh
            - -c
            - @COMMAND@
          volumeMounts:
@MOUNTS@      volumes:
@VOLUMES@)";

constexpr std::string_view make_script = R"(@HEAD@
# Run it with "make -j -k -f"; it ends with an error if a part has failed. Run again, it makes what
# lacks.
parts := $(addprefix part-,$(shell seq @PARTS@))
.PHONY: all $(parts)
all: $(parts)
	@VERIFY@
$(parts): part-%:
	@MAKE@ --part $*/@PARTS@ --quiet
)";

// Slurm allows a thousand tasks in an array unless it is told otherwise.
constexpr std::uint64_t most_slurm_tasks = 1000;
constexpr std::uint64_t most_pods_at_once = 100;
constexpr std::uint64_t retries = 3;
constexpr std::uint64_t requeue_seconds = 60;

void replace_all(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

// A word that a shell takes as it is.
std::string shell_word(const std::string& text) {
  constexpr std::string_view plain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./,:@%";
  if (!text.empty() && text.find_first_not_of(plain) == std::string::npos) return text;
  std::string word = text;
  replace_all(word, "'", "'\\''");
  return "'" + word + "'";
}

std::string shell_command(const std::vector<std::string>& arguments) {
  std::string command(program);
  for (const std::string& argument : arguments) command += " " + shell_word(argument);
  return command;
}

// A string of YAML, as JSON writes it.
std::string yaml_text(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

std::string size_text(ByteCount bytes) {
  constexpr const char* units[] = {"bytes", "kB", "MB", "GB", "TB", "PB", "EB", "ZB", "YB"};
  constexpr double factor = 1000;
  auto value = static_cast<double>(bytes);
  std::size_t unit = 0;
  for (; value >= factor && unit + 1 < std::size(units); ++unit) value /= factor;
  char text[32];
  std::snprintf(text, sizeof text, unit == 0 ? "%.0f %s" : "%.1f %s", value, units[unit]);
  return text;
}

std::string time_text(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*g s", 2, seconds);
  return seconds >= 10 ? std::to_string(std::lround(seconds)) + " s" : text;
}

std::string head_of(const Plan& plan, const PartEstimate& estimate) {
  const std::string about = estimate.is_exact() ? "" : "about ";
  const std::uint64_t parts = plan.parts;
  return "# Makes " + platform::printable(plan.whole) + " in " + std::to_string(parts) +
         " parts: " + std::to_string(estimate.records().number()) + " records, " + about +
         size_text(estimate.bytes()) + ".\n# A part has up to " +
         std::to_string((estimate.records().number() + parts - 1) / parts) + " records and " +
         about + size_text(estimate.largest_part(parts)) + "; one core makes it in about " +
         time_text(estimate.seconds(parts)) + ", without what writing takes.";
}

std::string kubernetes_command(const Plan& plan) {
  std::string command = shell_command(plan.making);
  // $(NAME) would be a variable of the job.
  replace_all(command, "$(", "$$(");
  return "part=`expr $JOB_COMPLETION_INDEX + 1`; exec " + command + " --part \"$part\"/" +
         std::to_string(plan.parts) + " --quiet";
}

// The folders from the nodes, in the pods and as volumes.
std::pair<std::string, std::string> kubernetes_folders(const Plan& plan) {
  std::string mounts;
  std::string volumes;
  for (std::size_t i = 0; i < plan.folders.size(); ++i) {
    const std::string name = "folder-" + std::to_string(i + 1);
    const std::string path = yaml_text(plan.folders[i]);
    mounts += "            - { name: " + name + ", mountPath: " + path + " }\n";
    volumes +=
        "        - { name: " + name + ", hostPath: { path: " + path + ", type: Directory } }\n";
  }
  return {mounts, volumes};
}

std::string_view script_for(PlanEngine engine) {
  switch (engine) {
    case PlanEngine::slurm:
      return slurm_script;
    case PlanEngine::parallel:
      return parallel_script;
    case PlanEngine::kubernetes:
      return kubernetes_script;
    case PlanEngine::make:
      break;
  }
  return make_script;
}

}  // namespace

std::string script_of(const Plan& plan, PlanEngine engine, const PartEstimate& estimate) {
  std::string making = shell_command(plan.making);
  std::string verifying = shell_command(plan.verifying);
  if (engine == PlanEngine::make) {
    replace_all(making, "$", "$$");
    replace_all(verifying, "$", "$$");
  }
  const std::uint64_t most_tasks =
      engine == PlanEngine::slurm ? most_slurm_tasks : most_pods_at_once;
  const auto [mounts, volumes] = kubernetes_folders(plan);
  const std::pair<std::string_view, std::string> values[] = {
      {"HEAD", head_of(plan, estimate)},
      {"PARTS", std::to_string(plan.parts)},
      {"TASKS", std::to_string(std::min(plan.parts, most_tasks))},
      {"RETRIES", std::to_string(retries)},
      {"REQUEUE_SECONDS", std::to_string(requeue_seconds)},
      {"LOG", shell_word(plan.whole + ".parts-" + std::to_string(plan.parts) + ".log")},
      {"MAKE", making},
      {"VERIFY", verifying},
      {"COMMAND", yaml_text(kubernetes_command(plan))},
      {"MOUNTS", mounts},
      {"VOLUMES", volumes},
  };
  // What is put in is not looked at again: it may hold anything.
  std::string script;
  std::string_view rest = script_for(engine);
  for (std::size_t at = rest.find('@'); at != std::string_view::npos; at = rest.find('@')) {
    const std::size_t end = rest.find('@', at + 1);
    const std::string_view name = rest.substr(at + 1, end - at - 1);
    script += rest.substr(0, at);
    for (const auto& [known, value] : values) {
      if (known == name) script += value;
    }
    rest.remove_prefix(end + 1);
  }
  return script.append(rest);
}

}  // namespace korvex::host
