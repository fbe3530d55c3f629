#pragma once

#include <cstdint>
#include <optional>

#include "control/col_main.h"
#include "platform/file.h"
#include "platform/runtime_class.h"
#include "run/line_team.h"
#include "run/log_file.h"
#include "run/progress.h"
#include "run/record_writer.h"
#include "run/run.h"

namespace korvex {

// Writes one data file and its log from a control file in the short form. Owns everything of the
// run; run() is called once.
class ClGenerateDataFile : public platform::Object {
 public:
  // Set main.control_path, and for DGCreateData the options below, before the call. A
  // failure has not been reported yet:
  //   -1, -2, -3 loading; -4 a negative number of records; -5, -57 another settings file;
  //   -6 no item has settings; -28 no settings file; -78, -104, -108, -109 repeats; -110 declined;
  //   -7, -40 settings that no generator knows; -26, -27 writing; -76 the output limit;
  //   -79 cancelled; and the codes of the enumeration check.
  // A failed run leaves no data file, except that after -76 the lines before the limit stay.
  ErrorCode run();

  ClColMain main;
  OutputOption output_option = OutputOption::plain;
  void* parent = nullptr;
  std::uint64_t repeat_item_count = 0;

 private:
  ErrorCode run_to_end();
  ErrorCode generate();
  bool asks_about_repeats() const;
  bool user_accepts_fewer_records() const;
  ErrorCode write_data_file();
  ErrorCode write_records(platform::File& file);
  ErrorCode write_all(RecordWriter& writer, platform::ProgressSink& progress, ProgressMeter& meter);
  std::optional<ErrorCode> write_by_threads(std::int64_t done, RecordWriter& writer,
                                            platform::ProgressSink& progress, ProgressMeter& meter);

  Run run_;
  GenerationLog log_;
  bool data_file_begun_ = false;
};

inline const platform::RuntimeClass<ClGenerateDataFile> generate_data_file_class(
    "ClGenerateDataFile");

}  // namespace korvex
