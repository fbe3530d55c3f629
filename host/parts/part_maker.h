#pragma once

#include <iosfwd>
#include <string>

#include "host/parts/manifest.h"
#include "host/parts/output_form.h"
#include "host/process/exit_status.h"

namespace korvex::host {

struct PartRequest {
  std::string whole;  // the file that the parts in a row are
  Part part;
  OutputForm form;
  bool force = false;  // also where the part is complete
  bool quiet = false;
};

// Writes one part of the records and, after it, its manifest, both by renaming: wherever it is
// interrupted, an incomplete part is never taken for a complete one. Nothing else is written and
// nothing is locked, so that any number of parts can be made at once, one of them also by several
// workers. Answers the program's exit status.
ExitStatus make_part(PreparedLayout& prepared, const PartRequest& request, std::ostream& out,
                     std::ostream& messages);

// The manifest that a part of the records has, without its bytes and checksum.
Manifest expected_manifest(const PreparedLayout& prepared, Part part, const OutputForm& form,
                           const std::string& fingerprint);

}  // namespace korvex::host
