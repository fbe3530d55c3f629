#include "host/commands/commands.h"
#include "host/parts/verifier.h"
#include "host/process/exit_status.h"
#include "host/process/generating_threads.h"

namespace korvex::host {

ExitStatus run_verify(const VerifyOptions& options, bool has_format, std::ostream& out,
                      std::ostream& messages) {
  PreparedLayout prepared;
  const Settings settings = options.keep_settings ? Settings::kept : Settings::of_layout;
  const ExitStatus status =
      prepared.prepare(options.layout, options.records, messages, {.settings = settings});
  if (status != ExitStatus::done) return status;
  VerifyChoices choices;
  if (has_format) choices.form = {.is_data_file = false, .format = options.format};
  choices.content = options.content;
  choices.places = static_cast<std::uint64_t>(options.places);
  choices.parts = static_cast<std::uint64_t>(options.parts);
  set_jobs(options.jobs, options.content ? UsualJobs::for_all_processors : UsualJobs::one);
  Verifier verifier(prepared, choices, out, messages);
  const std::vector<std::string> names =
      options.files.empty() ? std::vector{prepared.layout().data} : options.files;
  bool is_good = true;
  for (const std::string& name : names) is_good = verifier.verify(name) && is_good;
  return is_good ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace korvex::host
