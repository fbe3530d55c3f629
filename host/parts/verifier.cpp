#include "host/parts/verifier.h"

#include <algorithm>
#include <ostream>

#include "host/parts/fault_lines.h"
#include "host/parts/fingerprint.h"
#include "host/parts/part_maker.h"
#include "host/parts/part_state.h"
#include "host/process/signals.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// So many records are compared at a place: some ten milliseconds of work.
constexpr RecordCount records_at_a_place(1000);

std::string size_fault(std::uint64_t size, ByteCount expected) {
  return std::to_string(size) + " bytes long, expected " + decimal_text(expected);
}

OutputForm usual_form(const PreparedLayout& prepared) {
  OutputForm form;
  form.is_data_file = prepared.is_plain();
  return form;
}

}  // namespace

Verifier::Verifier(PreparedLayout& prepared, const VerifyChoices& choices, std::ostream& out,
                   std::ostream& messages)
    : prepared_(prepared),
      choices_(choices),
      out_(out),
      messages_(messages),
      random_(std::random_device()()) {}

bool Verifier::verify(const std::string& name) {
  if (const auto part = parse_part_path(name)) {
    const Piece piece = {name, part->part};
    choose_form(part->whole, {part->part.parts, {part->part.number}});
    return verify_part(piece);
  }
  std::vector<PartSet> sets = find_part_sets(name);
  if (choices_.parts > 0) {
    std::erase_if(sets, [&](const PartSet& set) { return set.parts != choices_.parts; });
    if (sets.empty()) sets.push_back({choices_.parts, {}});
  }
  const bool is_there = choices_.parts == 0 && platform::exists(name);
  if (!is_there && sets.empty()) {
    messages_ << platform::printable(name) << ": missing, and so are parts of it" << std::endl;
    return false;
  }
  bool is_good = true;
  std::optional<std::uint64_t> size;
  choose_form(name, {});
  for (const PartSet& set : sets) {
    choose_form(name, set);
    if (verify_set(name, set)) {
      size = bytes_;
    } else {
      is_good = false;
    }
  }
  return (!is_there || verify_whole(name, size)) && is_good;
}

// What was asked for, or else the form of the manifests: of one that belongs to the layout, or of
// any, so that the others are held against it.
void Verifier::choose_form(const std::string& whole, const PartSet& set) {
  if (choices_.form) return use_form(*choices_.form);
  for (const bool also_of_other_layout : {false, true}) {
    for (const std::uint64_t number : set.present) {
      const Part part = {number, set.parts};
      if (takes_form_of({part_path(whole, part), part}, also_of_other_layout)) return;
    }
  }
  use_form(usual_form(prepared_));
}

bool Verifier::takes_form_of(const Piece& piece, bool also_of_other_layout) {
  const auto manifest = read_manifest(manifest_path(piece.path));
  if (!manifest) return false;
  const auto form = parse_output_form(manifest->form);
  if (!form || (form->is_data_file && !prepared_.is_plain())) return false;
  if (!also_of_other_layout && manifest->fingerprint != fingerprint_of(*form)) return false;
  use_form(*form);
  return true;
}

void Verifier::use_form(const OutputForm& form) {
  if (stream_ != nullptr && text_of(form) == text_of(form_)) return;
  form_ = form;
  stream_ = stream_of(prepared_, form);
}

const std::string& Verifier::fingerprint_of(const OutputForm& form) {
  std::string& print = fingerprints_[text_of(form)];
  if (print.empty()) print = fingerprint(prepared_, form);
  return print;
}

RecordNumber Verifier::any_of(RecordRange range) {
  return range.first + RecordCount(random_() % range.size().number());
}

RecordRange Verifier::records_of_piece(const Piece& piece) const {
  return records_of(piece.part, prepared_.layout().records);
}

bool Verifier::verify_part(const Piece& piece) {
  std::string fault = fault_of(piece);
  if (fault.empty() && choices_.places > 0) fault = fault_at_ends(piece);
  for (std::uint64_t i = 0; i < choices_.places && fault.empty(); ++i) {
    const RecordRange range = records_of_piece(piece);
    if (range.size() > RecordCount()) fault = fault_at(piece, any_of(range));
  }
  if (!fault.empty()) {
    messages_ << platform::printable(piece.path) << ": " << fault << std::endl;
    return false;
  }
  out_ << platform::printable(piece.path) << ": complete, "
       << records_of_piece(piece).size().number() << " records, " << bytes_ << " bytes"
       << how("manifest and size", choices_.places) << std::endl;
  return true;
}

bool Verifier::verify_set(const std::string& whole, const PartSet& set) {
  FaultLines faults(whole, set.parts, messages_);
  std::uint64_t next = 1;
  std::uint64_t bytes = 0;
  for (const std::uint64_t number : set.present) {
    check_interruption();
    if (number > next) faults.add(next, number - 1, "missing");
    next = number + 1;
    const Part part = {number, set.parts};
    const std::string fault = fault_of({part_path(whole, part), part});
    if (!fault.empty()) faults.add(number, number, fault);
    bytes += bytes_;
  }
  if (next <= set.parts) faults.add(next, set.parts, "missing");
  faults.flush();
  compare_places(whole, set, faults);
  faults.flush();
  bytes_ = bytes;
  out_ << platform::printable(whole) << ": ";
  if (faults.count() > 0) {
    out_ << set.parts - faults.count() << " of " << set.parts << " parts are complete" << std::endl;
    return false;
  }
  out_ << "all " << set.parts << " parts are complete, " << prepared_.layout().records.number()
       << " records, " << bytes_ << " bytes" << how("manifests and sizes", choices_.places)
       << std::endl;
  return true;
}

// Spreads the places over the records of all parts.
void Verifier::compare_places(const std::string& whole, const PartSet& set, FaultLines& faults) {
  const RecordCount records = prepared_.layout().records;
  for (std::uint64_t i = 0; i < choices_.places && records > RecordCount() && !choices_.content;
       ++i) {
    RecordRange stretch = records_of({i + 1, choices_.places}, records);
    // With more places than records, some of these stretches are empty.
    stretch.end =
        std::min(stretch.first + RecordCount(stretch.size().number() + 1), all_of(records).end);
    const RecordNumber record = any_of(stretch);
    const Part part = part_with(record, set.parts, records);
    faults.flush();
    if (faults.is_faulty(part.number)) continue;
    const std::string fault = fault_at({part_path(whole, part), part}, record);
    if (!fault.empty()) faults.add(part.number, part.number, fault);
  }
}

bool Verifier::verify_whole(const std::string& path, std::optional<std::uint64_t> parts_size) {
  const Piece piece = {path, {}};
  const RecordRange range = records_of_piece(piece);
  const auto size = platform::size_of_file(path);
  std::string fault = size ? "" : "not a file";
  if (fault.empty() && choices_.content) {
    fault = fault_of_content(piece);
  } else if (fault.empty()) {
    bytes_ = *size;
    fault = fault_of_size(piece, *size);
    if (fault.empty() && parts_size && *parts_size != *size) fault = size_fault(*size, *parts_size);
    if (fault.empty()) fault = fault_at_ends(piece);
    const bool has_known_size = stream_->size(range).has_value();
    for (std::uint64_t i = 0; i < choices_.places && has_known_size && fault.empty(); ++i) {
      if (range.size() > RecordCount()) fault = fault_at(piece, any_of(range));
    }
  }
  if (!fault.empty()) {
    messages_ << platform::printable(path) << ": " << fault << std::endl;
    return false;
  }
  const bool has_known_size = stream_->size(range).has_value();
  const bool has_size = has_known_size || parts_size.has_value();
  out_ << platform::printable(path) << ": complete, " << range.size().number() << " records, "
       << bytes_ << " bytes"
       << how(has_size ? "size, first and last records" : "first and last records",
              has_known_size ? choices_.places : 0)
       << std::endl;
  return true;
}

std::string Verifier::fault_of(const Piece& piece) {
  bytes_ = 0;
  if (choices_.content) {
    if (platform::size_of_file(piece.path)) return fault_of_content(piece);
    return platform::exists(piece.path) ? "not a file" : "missing";
  }
  const Manifest expected = expected_manifest(prepared_, piece.part, form_, fingerprint_of(form_));
  const PartState state = state_of_part(piece.path, expected);
  if (!state.fault.empty()) return state.fault;
  bytes_ = state.manifest->bytes;
  return fault_of_size(piece, bytes_);
}

std::string Verifier::fault_of_size(const Piece& piece, std::uint64_t size) const {
  const auto known = stream_->size(records_of_piece(piece));
  return known && *known != size ? size_fault(size, *known) : "";
}

std::string Verifier::fault_of_content(const Piece& piece) {
  FileComparison file(piece.path);
  const std::string fault =
      file.compare(*stream_, {records_of_piece(piece), piece.part.is_first()}, 0);
  bytes_ = file.end();
  return fault.empty() ? file.check_end(bytes_) : fault;
}

// Where the offset of a record is not predicted, the nearer end of the part stands for it.
std::string Verifier::fault_at(const Piece& piece, RecordNumber record) {
  const RecordRange range = records_of_piece(piece);
  const auto offset = stream_->size({range.first, record});
  if (!offset) {
    const bool is_near_begin = record - range.first < range.end - record;
    return is_near_begin ? fault_at_begin(piece) : fault_at_end(piece);
  }
  const RecordNumber end = std::min(range.end, record + records_at_a_place);
  // The file is as long as it should be: its offsets are those of a file.
  return FileComparison(piece.path)
      .compare(*stream_, {{record, end}, false}, static_cast<std::uint64_t>(*offset));
}

std::string Verifier::fault_at_ends(const Piece& piece) {
  const std::string fault = fault_at_begin(piece);
  return fault.empty() ? fault_at_end(piece) : fault;
}

std::string Verifier::fault_at_begin(const Piece& piece) {
  const RecordRange range = records_of_piece(piece);
  const RecordNumber end = std::min(range.end, range.first + records_at_a_place);
  FileComparison file(piece.path);
  const std::string fault = file.compare(*stream_, {{range.first, end}, piece.part.is_first()}, 0);
  return fault.empty() && end == range.end ? file.check_end(file.end()) : fault;
}

std::string Verifier::fault_at_end(const Piece& piece) {
  const RecordRange range = records_of_piece(piece);
  // What fits in the begin was compared there.
  if (range.size() <= records_at_a_place) return {};
  const Stretch last = {{range.end - records_at_a_place, range.end}, false};
  FileComparison file(piece.path);
  const std::uint64_t bytes = size_of(*stream_, last);
  if (file.size() < bytes) return size_fault(file.size(), bytes) + " at least";
  return file.compare(*stream_, last, file.size() - bytes);
}

// How it is known.
std::string Verifier::how(const std::string& by_proof, std::uint64_t places) const {
  if (choices_.content) return ", every byte compared";
  std::string text = " by " + by_proof;
  if (places > 0) text += ", " + std::to_string(places) + " places compared";
  return text;
}

}  // namespace korvex::host
