#include "generate/generate_data_file.h"

#include <algorithm>
#include <new>

#include "control/error_texts.h"
#include "format/error_codes.h"
#include "format/file_failure.h"
#include "format/record_text.h"
#include "generate/enumeration_check.h"
#include "platform/user_interface.h"

namespace korvex {

std::int32_t ClGenerateDataFile::run() {
  try {
    std::int32_t result = load();
    if (result < 0) return result;
    const std::string log_file = log_path(main.work_folder(), main.data_path());
    result = generate();
    if (result < 0) return result;
    return data_file_begun_ ? write_log(log_file, log_) : clear_log(log_file);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

std::int32_t ClGenerateDataFile::measure(std::uint64_t& bytes) {
  bytes = 0;
  measures_only_ = true;
  try {
    std::int32_t result = load();
    if (result == 0) result = prepare();
    if (result <= 0) return result < 0 ? result : error::no_data_file;
    const auto progress = platform::user_interface().open_progress(parent, true);
    ProgressMeter meter(*progress, main.header().records);
    BlockAssembler blocks(assembler_, main.layout_kind());
    // A line feed is added to each line, or takes the place of its last comma.
    const bool adds_line_feed = main.layout_kind() != layout_kind::third;
    LineBlock lines(0);
    for (std::int64_t done = 0; done < main.header().records;) {
      if (progress->cancel_requested()) return error::cancelled;
      meter.update(done);
      std::int64_t count = blocks.assemble(lines, main.header().records - done);
      if (count == 0) {
        result = assembler_.assemble(lines);
        if (result != 0) return result;
        count = 1;
        if (adds_line_feed) ++bytes;
      }
      done += count;
      bytes += lines.size();
      lines.clear();
    }
    return 0;
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

std::int32_t ClGenerateDataFile::load() {
  main.set_run_mode(run_mode::generator);
  const std::int32_t result = main.load();
  if (result < 0) return result;
  return main.header().records < 0 ? error::cannot_operate : 0;
}

std::int32_t ClGenerateDataFile::generate() {
  const std::int32_t result = prepare();
  if (result <= 0) return result;
  if (asks_about_repeats() && !user_accepts_fewer_records()) return error::repeat_exceeds_records;
  return write_data_file();
}

// Everything before the first record: 1 when records can be assembled, 0 without settings.
std::int32_t ClGenerateDataFile::prepare() {
  const ControlHeader& header = main.header();
  main.settings.set_paths(main.settings_path(), main.work_folder());
  std::int32_t result = main.settings.load(header.level, header.records, header.layout_kind);
  if (result <= 0) return result;

  main.settings.set_run_mode(run_mode::generator);
  quotation_ = main.settings.quotation() == 1;
  result = prepare_repeats();
  if (result == 0) result = prepare_items();
  return result < 0 ? result : 1;
}

std::int32_t ClGenerateDataFile::prepare_repeats() {
  if (main.settings.current_level()->record.repeat_flag == 0) return 0;
  const std::int32_t result = repeats_.build(main);
  repeat_in_use_ = !repeats_.is_empty();
  if (repeat_in_use_) assembler_.set_repeats(repeats_);
  return result;
}

std::int32_t ClGenerateDataFile::prepare_items() {
  for (const auto& item : main.items) {
    const ClFmtColInf* column = main.settings.find_column(item->item_number);
    if (column == nullptr) {
      item->state = item_state::without_settings;
      continue;
    }
    const std::int32_t result = prepare_item(*column);
    if (result < 0) return result;
    log_.item_numbers.push_back(item->item_number);
  }
  return log_.item_numbers.empty() ? error::no_format_for_item : 0;
}

std::int32_t ClGenerateDataFile::prepare_item(const ClFmtColInf& column) {
  ItemGenerator& generator = item_generator(column);
  assembler_.add_field(generator);
  if (column.record.generation_type == generation_type::enumeration) {
    const std::int32_t result = prepare_enumeration(column, generator);
    if (result < 0) return result;
  }
  if (repeat_in_use_ && column.record.repeat_flag != 0) {
    ClRepeatData* entry = repeats_.find_level(column.record.repeat_level);
    if (entry == nullptr) return error::repeat_entry_missing;
    entry->item = &generator;
    generator.join_repeat(repeats_.next_inner(*entry));
  }
  return 0;
}

std::int32_t ClGenerateDataFile::prepare_enumeration(const ClFmtColInf& column,
                                                     ItemGenerator& generator) {
  // An item that stands in several fields has its values already; it only changes its mode again.
  if (generator.has_enumeration()) {
    generator.raise_mode();
    return 0;
  }
  auto values = std::make_unique<ClEnumDataList>();
  const std::string path(field_text(column.record.enumeration_path));
  const std::int32_t count =
      measures_only_ ? check_enumeration(main, path, column.record, bad_line, values.get())
                     : load_enumeration(main, path, column.record, *values);
  if (count > 0) generator.set_enumeration(std::move(values));
  return count;
}

ItemGenerator& ClGenerateDataFile::item_generator(const ClFmtColInf& column) {
  std::unique_ptr<ItemGenerator>& generator = generators_[&column];
  if (!generator) {
    generator = std::make_unique<ItemGenerator>(column, main.layout_kind(), quotation_);
  }
  return *generator;
}

bool ClGenerateDataFile::asks_about_repeats() const {
  return output_option == guarded_output && repeat_in_use_ &&
         repeat_item_count > static_cast<std::uint64_t>(main.header().records);
}

bool ClGenerateDataFile::user_accepts_fewer_records() const {
  std::string question;
  main.append_error_text(error::repeat_exceeds_records, question);
  return platform::user_interface().show_message(platform::MessageKind::question,
                                                 fill_number(question, repeat_item_count)) ==
         platform::Answer::yes;
}

std::int32_t ClGenerateDataFile::write_data_file() {
  const std::string path = main.data_path();
  platform::File file;
  if (file.create(path) != platform::FileCause::none) return error::cannot_open;
  data_file_begun_ = true;

  std::int32_t result = error::out_of_memory;
  try {
    result = write_records(file);
  } catch (const std::bad_alloc&) {
    result = error::out_of_memory;
  }
  const bool keeps_lines = result == 0 || result == error::output_limit;
  if (keeps_lines) {
    if (const platform::FileCause closed = file.close(); closed != platform::FileCause::none) {
      result = write_failure(closed);
    }
  }
  if (result != 0 && result != error::output_limit) file.remove(path);
  return result;
}

std::int32_t ClGenerateDataFile::write_records(platform::File& file) {
  const std::int32_t records = main.header().records;
  const bool is_guarded = output_option == guarded_output;
  const auto progress = platform::user_interface().open_progress(parent, is_guarded);
  ProgressMeter meter(*progress, percentage_denominator(records, is_guarded && repeat_in_use_));
  RecordWriter writer(file, main.layout_kind(), output_option);
  const std::int32_t result = write_all(writer, *progress, meter);
  if (result != 0 && result != error::output_limit) return result;
  if (const std::int32_t flushed = writer.flush(); flushed != 0) return flushed;
  if (result != 0) return result;
  meter.finish(records);
  log_.records = records;
  log_.level = main.header().level;
  if (records == 0) log_.item_numbers.clear();
  return 0;
}

// Blocks end where the percentage may rise, so that every percent is shown.
std::int32_t ClGenerateDataFile::write_all(RecordWriter& writer, platform::ProgressSink& progress,
                                           ProgressMeter& meter) {
  const std::int32_t records = main.header().records;
  BlockAssembler blocks(assembler_, main.layout_kind());
  for (std::int64_t done = 0; done < records;) {
    const std::int64_t most = std::min(records - done, meter.records_to_update(done));
    std::int64_t count = blocks.assemble(writer.lines(), most);
    std::int32_t result = 0;
    if (count > 0) {
      result = writer.accept_lines(blocks.line_begins());
    } else {
      count = 1;
      result = assembler_.assemble(writer.lines());
      if (result == 0) result = writer.accept();
    }
    if (result != 0) return result;
    done += count;
    if (progress.cancel_requested()) return error::cancelled;
    meter.update(done);
  }
  return 0;
}

}  // namespace korvex
