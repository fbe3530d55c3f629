#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "control/col_main.h"
#include "run/block_assembler.h"
#include "run/field_facts.h"
#include "run/record_assembler.h"
#include "run/repeat_table.h"

namespace korvex {

// How the records of a run become lines.
struct LineForm {
  LayoutKind layout_kind{};
  bool quotation = false;  // values of quoted attributes are between quotation marks
};

// Reads the values of an item's list.
using ListLoader = std::function<ErrorCode(const FmtColRec&, ClEnumDataList&)>;

// The records of a control file and its settings: prepared once, then taken in blocks of lines or
// record by record, from any record on. Owns everything that the records are made of but `main`,
// which must outlive it.
//
// Records are counted from 0 and have no end: the caller decides how many to take. Memory does not
// grow with them. One thread at a time.
class Run {
 public:
  // Reads the control file at `main.control_path` and the settings of its items, and prepares them.
  // False when there is no settings file. -1, -2, -3 loading; -4 a negative number of records; -5,
  // -57 another settings file; and the codes of prepare().
  Result<bool> load(ClColMain& main, const ListLoader& load_list);

  // Prepares the items of `main`, whose settings are loaded. -6 no item has settings;
  // -78, -104, -108, -109 repeats; and what `load_list` answers.
  ErrorCode prepare(ClColMain& main, LineForm form, const ListLoader& load_list);

  // Prepares the same records again, from the first one on. The lists are the same ones. `other`
  // must not be in use meanwhile; afterwards each may have a thread of its own.
  ErrorCode prepare_like(const Run& other);

  bool repeats_are_in_use() const { return !repeats_.is_empty(); }

  // The items of a record's fields, in their order.
  const std::vector<ItemGenerator*>& fields() const { return records_.fields(); }

  // Appends whole lines for the next records, at least one and up to `most`. Unknown
  // settings give a code (-7, -40), and nothing is appended.
  ErrorCode append(LineBlock& lines, std::int64_t most);

  // Where the lines begin that the last call has appended.
  std::span<const std::size_t> line_begins() const { return begins_; }

  // The values of the next record, without quotation marks; they are valid until the next call. -7,
  // -40.
  ErrorCode next(std::vector<std::string_view>& values);

  // Goes to a record, as RecordAssembler says. append() and next() answer -79 when that was
  // interrupted.
  void seek(Steps record);
  bool seeks_directly() const { return records_.seeks_directly(); }

  // What is known of each field; valid as long as the run.
  std::vector<FieldFacts> field_facts() const;

  // The bytes of the first `records` lines; nothing where they can't be computed.
  std::optional<ByteCount> size(RecordCount records) const;

  // The same; lines whose size can't be computed are made, which shows progress and can be
  // cancelled. The next record is then unknown. -1, -79; -7, -40.
  Result<ByteCount> measure(RecordCount count);

 private:
  using SharedList = Result<std::shared_ptr<const ClEnumDataList>>;
  using ListGiver = std::function<SharedList(const ClFmtColInf&)>;

  ErrorCode prepare_with(ClColMain& main, LineForm form, const ListGiver& give_list);
  ErrorCode prepare_repeats();
  ErrorCode prepare_items(const ListGiver& give_list);
  ErrorCode prepare_item(const ClFmtColInf& column, const ListGiver& give_list);
  ItemGenerator& item_generator(const ClFmtColInf& column);
  FieldFacts facts_of(const ItemGenerator& item) const;

  ClColMain* main_ = nullptr;
  LineForm form_;
  RepeatTable repeats_;
  std::unordered_map<const ClFmtColInf*, std::unique_ptr<ItemGenerator>> generators_;
  RecordAssembler records_;
  std::optional<BlockAssembler> blocks_;
  std::span<const std::size_t> begins_;
  std::size_t single_begin_ = 0;
  LineBlock line_{0};
  std::vector<std::size_t> ends_;
};

}  // namespace korvex
