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

ErrorCode ClGenerateDataFile::run() {
  const ErrorCode result = run_to_end();
  // Whatever failed then may have failed for it.
  return result != error::none && platform::is_interrupted() ? error::cancelled : result;
}

ErrorCode ClGenerateDataFile::run_to_end() {
  try {
    const ErrorCode result = generate();
    if (result != error::none) return result;
    const std::string log_file = log_path(main.work_folder(), main.data_path());
    return data_file_begun_ ? write_log(log_file, log_) : clear_log(log_file);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode ClGenerateDataFile::generate() {
  const Result<bool> loaded =
      run_.load(main, [&](const FmtColRec& settings, ClEnumDataList& values) {
        const std::string path(field_text(settings.enumeration_path));
        return load_enumeration(main, path, settings, values).code();
      });
  if (!loaded || !*loaded) return loaded.code();
  if (platform::is_interrupted()) return error::cancelled;  // before there is anything to undo
  if (asks_about_repeats() && !user_accepts_fewer_records()) return error::repeat_exceeds_records;
  return write_data_file();
}

bool ClGenerateDataFile::asks_about_repeats() const {
  return output_option == OutputOption::guarded && run_.repeats_are_in_use() &&
         repeat_item_count > static_cast<std::uint64_t>(number_of(main.records()));
}

bool ClGenerateDataFile::user_accepts_fewer_records() const {
  std::string question;
  main.append_error_text(error::repeat_exceeds_records, question);
  return platform::user_interface().show_message(
             platform::MessageKind::question,
             platform::MessageText::words(fill_number(question, repeat_item_count))) ==
         platform::Answer::yes;
}

ErrorCode ClGenerateDataFile::write_data_file() {
  const std::string path = main.data_path();
  platform::File file;
  if (file.create(path) != platform::FileCause::none) return error::cannot_open;
  data_file_begun_ = true;

  ErrorCode result = error::out_of_memory;
  try {
    result = write_records(file);
  } catch (const std::bad_alloc&) {
    result = error::out_of_memory;
  }
  const bool keeps_lines = result == error::none || result == error::output_limit;
  if (keeps_lines) {
    if (const platform::FileCause closed = file.close(); closed != platform::FileCause::none) {
      result = write_failure(closed);
    }
  }
  if (result != error::none && result != error::output_limit) file.remove(path);
  return result;
}

ErrorCode ClGenerateDataFile::write_records(platform::File& file) {
  const std::int32_t records = number_of(main.records());
  const bool is_guarded = output_option == OutputOption::guarded;
  const auto progress = platform::user_interface().open_progress(parent, is_guarded);
  ProgressMeter meter(*progress,
                      percentage_denominator(records, is_guarded && run_.repeats_are_in_use()));
  RecordWriter writer(file, output_option);
  ErrorCode result = write_all(writer, *progress, meter);
  const bool keeps_lines = result == error::none || result == error::output_limit;
  if (keeps_lines) {
    if (const ErrorCode flushed = writer.flush(); flushed != error::none) result = flushed;
  }
  // A write that waits, say for the reader of a pipe, is ended by the wish to cancel.
  const bool has_failed = result != error::none && result != error::output_limit;
  if (has_failed && progress->cancel_requested()) return error::cancelled;
  if (result != error::none) return result;
  meter.finish(records);
  log_.records = main.records();
  log_.level = main.level();
  for (const ItemGenerator* item : run_.fields()) {
    if (records > 0) log_.item_numbers.push_back(item->settings().item_number);
  }
  return error::none;
}

// Blocks end where the percentage may rise, so that every percent is shown. Threads make the rest
// as soon as it is seen to be worth it.
ErrorCode ClGenerateDataFile::write_all(RecordWriter& writer, platform::ProgressSink& progress,
                                        ProgressMeter& meter) {
  const std::int64_t records = number_of(main.records());
  bool may_start_threads = generating_threads() > 0;
  for (std::int64_t done = 0; done < records;) {
    ErrorCode result =
        run_.append(writer.lines(), std::min(records - done, meter.records_to_update(done)));
    if (result == error::none) result = writer.accept_lines(run_.line_begins());
    if (result != error::none) return result;
    done += std::ssize(run_.line_begins());
    if (progress.cancel_requested()) return error::cancelled;
    meter.update(done);
    if (!may_start_threads || writer.total_bytes() < team_piece_bytes) continue;
    if (const auto written = write_by_threads(done, writer, progress, meter)) return *written;
    may_start_threads = false;
  }
  return error::none;
}

// Has threads make all from record `done` on, with the same progress, which is told in this thread.
// Nothing where that is not worth it or can't be.
std::optional<ErrorCode> ClGenerateDataFile::write_by_threads(std::int64_t done,
                                                              RecordWriter& writer,
                                                              platform::ProgressSink& progress,
                                                              ProgressMeter& meter) {
  const std::int64_t records = number_of(main.records());
  const Steps chunk = records_of_chunk(static_cast<Steps>(done), writer.total_bytes(),
                                       static_cast<Steps>(records - done));
  if (chunk == 0) return std::nullopt;
  LineTeam team(run_,
                {static_cast<Steps>(done), static_cast<Steps>(records), chunk, writer.is_limited()},
                generating_threads());
  ErrorCode result = error::none;
  int file_error = 0;  // of the thread that has failed
  std::int64_t written = done;
  const auto write = [&](const LinePiece& piece) {
    result = writer.accept_lines({piece.lines.data(), piece.lines.size()}, piece.begins);
    if (result != error::none) file_error = platform::last_file_error();
    if (result == error::none) result = piece.code;
    written += static_cast<std::int64_t>(piece.records);
    return result == error::none;
  };
  const auto show = [&] {
    while (done < written && result == error::none) {
      done = std::min(written, done + meter.records_to_update(done));
      if (progress.cancel_requested()) result = error::cancelled;
      if (result == error::none) meter.update(done);
    }
    return result == error::none;
  };
  if (!team.run(writer.taker(), write, show)) return std::nullopt;
  if (file_error != 0) platform::note_file_error(file_error);
  return result;
}

}  // namespace korvex
