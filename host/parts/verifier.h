#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "host/parts/file_comparison.h"
#include "host/parts/manifest.h"
#include "host/parts/output_form.h"
#include "host/parts/part_state.h"

namespace korvex::host {

class FaultLines;

struct VerifyChoices {
  std::optional<OutputForm> form = {};  // else what the manifests say
  bool content = false;                 // compares every byte
  std::uint64_t places = 0;             // compares the records at so many places
  std::uint64_t parts = 0;              // only the parts out of so many, also where none is there
};

// Says whether files hold the records of a layout: whole files, parts, or all parts of a name.
class Verifier {
 public:
  // What is complete is said on `out`, what is not on `messages`.
  Verifier(PreparedLayout& prepared, const VerifyChoices& choices, std::ostream& out,
           std::ostream& messages);

  // Verifies everything that goes by the name: the part, or the whole file and its parts. Whether
  // it is complete. Throws Interrupted.
  bool verify(const std::string& name);

 private:
  // A part, or the whole as the only one.
  struct Piece {
    std::string path;
    Part part;
  };

  bool verify_part(const Piece& piece);
  bool verify_set(const std::string& whole, const PartSet& set);
  bool verify_whole(const std::string& path, std::optional<std::uint64_t> expected_size);
  void compare_places(const std::string& whole, const PartSet& set, FaultLines& faults);

  void choose_form(const std::string& whole, const PartSet& set);
  bool takes_form_of(const Piece& piece, bool also_of_other_layout);
  void use_form(const OutputForm& form);
  const std::string& fingerprint_of(const OutputForm& form);

  std::string fault_of(const Piece& piece);
  std::string fault_of_size(const Piece& piece, std::uint64_t size) const;
  std::string fault_of_content(const Piece& piece);
  std::string fault_at(const Piece& piece, RecordNumber record);
  std::string fault_at_ends(const Piece& piece);
  std::string fault_at_begin(const Piece& piece);
  std::string fault_at_end(const Piece& piece);

  RecordNumber any_of(RecordRange range);
  RecordRange records_of_piece(const Piece& piece) const;
  std::string how(const std::string& by_proof, std::uint64_t places) const;

  PreparedLayout& prepared_;
  VerifyChoices choices_;
  std::ostream& out_;
  std::ostream& messages_;
  OutputForm form_;
  std::unique_ptr<RecordStream> stream_;
  std::map<std::string, std::string> fingerprints_;  // by forms
  std::uint64_t bytes_ = 0;                          // of what was looked at last
  std::mt19937_64 random_;
};

}  // namespace korvex::host
