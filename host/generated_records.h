#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/code_page_decoder.h"
#include "host/control_writer.h"
#include "host/generate_command.h"

namespace korvex::host {

// What the module said when it could not generate.
class GenerationFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The records of a layout, one after the other, without a data file: the module runs in a process
// of its own and writes into a pipe.
//
// A pipe, because the other ways each lack something: a file costs the disk the whole table before
// the first row is loaded, and calling the assembler record by record leaves the second processor
// idle. A process of its own, because it can be ended at any moment, whatever it is doing; the pipe
// holds it back when the database is slower, so memory stays constant.
class GeneratedRecords {
 public:
  // Starts the run. The settings of `layout` must have been written; `work` gets temporary files.
  GeneratedRecords(const Layout& layout, CreateData create_data);
  ~GeneratedRecords();
  GeneratedRecords(const GeneratedRecords&) = delete;
  GeneratedRecords& operator=(const GeneratedRecords&) = delete;

  // The next record in UTF-8 without its line feed, valid until the next call; false after the last
  // one. Throws GenerationFailed, Interrupted, std::system_error.
  bool next(std::string_view& line);

 private:
  void start(const Layout& layout, CreateData create_data);
  bool fill();
  void convert_whole_lines(std::size_t size);
  std::size_t read_some();
  void wait_for_end();
  std::string read_messages() const;

  TemporaryControlFile control_file_;
  pid_t child_ = -1;
  int pipe_ = -1;
  int messages_ = -1;
  CodePageDecoder decoder_;
  std::string raw_;   // in the module's code page: the beginning of a line
  std::string text_;  // whole lines in UTF-8
  std::size_t place_ = 0;
};

}  // namespace korvex::host
