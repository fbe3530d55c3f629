#include "run/generate_data_file.h"

#include <algorithm>
#include <new>

#include "lists/enumeration_check.h"
#include "platform/interruption.h"
#include "platform/user_interface.h"
#include "values/error_codes.h"
#include "values/error_texts.h"
#include "values/file_failure.h"
#include "values/record_text.h"

namespace korvex {

namespace {

std::string enumeration_path(const FmtColRec& settings) {
  return std::string(field_text(settings.enumeration_path));
}

}  // namespace

std::int32_t ClGenerateDataFile::run() {
  const std::int32_t result = run_to_end();
  // Whatever failed then may have failed for it.
  return result < 0 && platform::is_interrupted() ? error::cancelled : result;
}

std::int32_t ClGenerateDataFile::run_to_end() {
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
  try {
    std::int32_t result = load();
    if (result == 0) {
      result = prepare([&](const FmtColRec& settings, ClEnumDataList& values) {
        return check_enumeration(main, enumeration_path(settings), settings, bad_line, &values);
      });
    }
    if (result <= 0) return result < 0 ? result : error::no_data_file;
    const std::int64_t records = main.header().records;
    if (const auto known = run_.size(static_cast<Steps>(records))) {
      bytes = *known;
      return 0;
    }
    const auto progress = platform::user_interface().open_progress(parent, true);
    ProgressMeter meter(*progress, records);
    LineBlock lines(0);
    for (std::int64_t done = 0; done < records;) {
      if (progress->cancel_requested()) return error::cancelled;
      meter.update(done);
      result = run_.append(lines, records - done);
      if (result != 0) return result;
      done += std::ssize(run_.line_begins());
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

// Everything before the first record: 1 when records can be assembled, 0 without settings.
std::int32_t ClGenerateDataFile::prepare(const ListLoader& load_list) {
  const std::int32_t result = load_settings(main);
  if (result <= 0) return result;
  const std::int32_t failure = run_.prepare(main, line_form(main), load_list);
  return failure < 0 ? failure : 1;
}

std::int32_t ClGenerateDataFile::generate() {
  const std::int32_t result = prepare([&](const FmtColRec& settings, ClEnumDataList& values) {
    return load_enumeration(main, enumeration_path(settings), settings, values);
  });
  if (result <= 0) return result;
  if (platform::is_interrupted()) return error::cancelled;  // before there is anything to undo
  if (asks_about_repeats() && !user_accepts_fewer_records()) return error::repeat_exceeds_records;
  return write_data_file();
}

bool ClGenerateDataFile::asks_about_repeats() const {
  return output_option == guarded_output && run_.repeats_are_in_use() &&
         repeat_item_count > static_cast<std::uint64_t>(main.header().records);
}

bool ClGenerateDataFile::user_accepts_fewer_records() const {
  std::string question;
  main.append_error_text(error::repeat_exceeds_records, question);
  return platform::user_interface().show_message(
             platform::MessageKind::question,
             platform::MessageText::words(fill_number(question, repeat_item_count))) ==
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
  ProgressMeter meter(*progress,
                      percentage_denominator(records, is_guarded && run_.repeats_are_in_use()));
  RecordWriter writer(file, output_option);
  std::int32_t result = write_all(writer, *progress, meter);
  const bool keeps_lines = result == 0 || result == error::output_limit;
  if (keeps_lines) {
    if (const std::int32_t flushed = writer.flush(); flushed != 0) result = flushed;
  }
  // A write that waits, say for the reader of a pipe, is ended by the wish to cancel.
  const bool has_failed = result != 0 && result != error::output_limit;
  if (has_failed && progress->cancel_requested()) return error::cancelled;
  if (result != 0) return result;
  meter.finish(records);
  log_.records = records;
  log_.level = main.header().level;
  for (const ItemGenerator* item : run_.fields()) {
    if (records > 0) log_.item_numbers.push_back(item->settings().item_number);
  }
  return 0;
}

// Blocks end where the percentage may rise, so that every percent is shown.
std::int32_t ClGenerateDataFile::write_all(RecordWriter& writer, platform::ProgressSink& progress,
                                           ProgressMeter& meter) {
  const std::int32_t records = main.header().records;
  for (std::int64_t done = 0; done < records;) {
    std::int32_t result =
        run_.append(writer.lines(), std::min(records - done, meter.records_to_update(done)));
    if (result == 0) result = writer.accept_lines(run_.line_begins());
    if (result != 0) return result;
    done += std::ssize(run_.line_begins());
    if (progress.cancel_requested()) return error::cancelled;
    meter.update(done);
  }
  return 0;
}

}  // namespace korvex
