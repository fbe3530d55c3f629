#include "host/parts/part_maker.h"

#include <ostream>

#include "host/parts/checksum.h"
#include "host/parts/fingerprint.h"
#include "host/parts/part_state.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// The disk has a part before its manifest says so.
constexpr bool is_synchronised = true;

// Says which file the part would take the place of although its records come from it. Answers
// whether it would.
bool replaces_read_file(const PreparedLayout& prepared, const std::string& path,
                        std::ostream& messages) {
  DistinctFiles files;
  prepared.add_read_files(files);
  for (const std::string& file : {path, manifest_path(path)}) {
    const auto role = files.replace(file, "the part");
    if (!role) continue;
    messages << platform::printable(file) << ": is " << *role << ", expected a file of its own"
             << std::endl;
    return true;
  }
  return false;
}

// A manifest that is there may be of other records.
bool remove_manifest(const std::string& path, std::ostream& messages) {
  const platform::FileCause cause = platform::remove_file(manifest_path(path));
  if (cause == platform::FileCause::none || platform::is_missing(cause)) return true;
  messages << platform::printable(manifest_path(path))
           << ": can't be removed, expected a file that can be replaced" << std::endl;
  return false;
}

bool write_records(RecordStream& stream, ReplacedOutput& output, Manifest& manifest,
                   std::ostream& messages) {
  Checksum checksum;
  const auto is_wanted = [&] { return output.failure().empty(); };
  take_bytes(stream, manifest.records, manifest.part.is_first(), is_wanted,
             [&](std::string_view bytes) {
               checksum.add(bytes);
               output.write(bytes);
             });
  if (!stream.failure().empty()) messages << stream.failure() << std::endl;
  manifest.bytes = checksum.bytes();
  manifest.checksum = checksum.value();
  return stream.failure().empty();
}

bool write_part(RecordStream& stream, const std::string& path, Manifest& manifest,
                std::ostream& messages) {
  ReplacedOutput output(path, is_synchronised);
  if (!write_records(stream, output, manifest, messages)) return false;
  output.new_file().set_mark(mark_of(manifest));
  const platform::FileIdentity written = output.new_file().identity();
  if (output.failure().empty() && !remove_manifest(path, messages)) return false;
  if (!output.finish(messages)) return false;
  ReplacedOutput proof(manifest_path(path), is_synchronised);
  proof.write(text_of(manifest));
  if (!proof.finish(messages)) return false;
  if (platform::identity_of(path) == written || has_bytes_of(path, manifest)) return true;
  // Another worker has put a part of another layout in its place, and says so itself.
  platform::remove_file(manifest_path(path));
  messages << platform::printable(path) << ": another run has replaced it" << std::endl;
  return false;
}

}  // namespace

Manifest expected_manifest(const PreparedLayout& prepared, Part part, const OutputForm& form,
                           const std::string& fingerprint) {
  Manifest manifest;
  manifest.part = part;
  manifest.records = records_of(part, prepared.layout().records);
  manifest.form = text_of(form);
  manifest.fingerprint = fingerprint;
  return manifest;
}

ExitStatus make_part(PreparedLayout& prepared, const PartRequest& request, std::ostream& out,
                     std::ostream& messages) {
  const std::string path = part_path(request.whole, request.part);
  if (replaces_read_file(prepared, path, messages)) return ExitStatus::wrong_usage;
  Manifest manifest =
      expected_manifest(prepared, request.part, request.form, fingerprint(prepared, request.form));
  const std::string name = "part " + part_text(request.part);
  if (!request.force && is_complete(path, manifest)) {
    if (!request.quiet) {
      out << name << " is complete: " << platform::printable(path) << std::endl;
    }
    return ExitStatus::done;
  }
  const auto stream = stream_of(prepared, request.form);
  if (!write_part(*stream, path, manifest, messages)) return ExitStatus::failed;
  if (!request.quiet) {
    out << name << ", " << manifest.records.size().number() << " records, " << manifest.bytes
        << " bytes: " << platform::printable(path) << std::endl;
  }
  return ExitStatus::done;
}

}  // namespace korvex::host
