#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/layout/source_place.h"
#include "host/process/exit_status.h"
#include "host/records/prepared_layout.h"
#include "host/ways/refusal.h"

namespace korvex::host {

class FieldMaker;
class PreparedLayout;
enum class Trial;

// An item whose field is being made, and where it names the one that it waits for.
struct MakingStep {
  const FieldMaker* maker = nullptr;
  std::size_t item = 0;
  SourcePlace place;
};

// A layout and all others that its items lead to, to any depth and in circles, while the fields of
// its records are made.
//
// A field keeps the record that it was asked for last. So the fields that the records of the layout
// itself are made of are nobody else's: who asks for other records, be it of the same layout, is
// handed fields of another copy, one for all who ask.
class LayoutFamily {
 public:
  // Messages go to `messages`.
  LayoutFamily(PreparedLayout& root, std::ostream& messages, MisreadTexts misread, Trial trial);
  ~LayoutFamily();

  // Makes the fields of the root, which then has them, and the layouts that they need. False when
  // something is wrong, which was said.
  bool make_fields();

  // What is known of the layout of a file, however it is named; or why it can't be had:
  // ", which ...".
  ways::Result<const PreparedLayout*> find(const std::string& file);

  // The fields of such a layout that others may ask for; null when they can't be had.
  FieldMaker* fields_for_others(const PreparedLayout& layout);

  Trial trial() const { return trial_; }

  // What is being made at this moment, each for the one before it.
  std::vector<MakingStep>& path() { return path_; }

 private:
  // A layout with the fields that are made of it.
  struct Member {
    std::unique_ptr<PreparedLayout> layout;
    std::unique_ptr<FieldMaker> maker;
  };

  // Null when it is of no use, which was said.
  Member make_member(std::unique_ptr<PreparedLayout> layout, ExitStatus status,
                     const PreparedLayout& known_as);

  PreparedLayout& root_;
  std::ostream& messages_;
  MisreadTexts misread_;
  Trial trial_;
  std::string root_path_;
  std::unique_ptr<FieldMaker> root_maker_;
  std::map<std::string, Member> members_;  // by their paths
  std::vector<MakingStep> path_;
};

}  // namespace korvex::host
