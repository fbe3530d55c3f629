#pragma once

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/records/misread_texts.h"
#include "host/ways/result.h"

namespace korvex::host {

class PreparedLayout;

// The layouts that keys lead to, to any depth, each prepared once.
class LayoutFamily {
 public:
  // Messages about them go to `messages`. `file` is the layout that they are prepared for.
  LayoutFamily(const std::string& file, std::ostream& messages, MisreadTexts misread);

  // The layout of a file with all of its fields, or why it can't be had: ", which ...". Who keeps
  // it keeps the fields.
  ways::Result<std::shared_ptr<PreparedLayout>> find(const std::string& file);

  // All that were found and can be had.
  std::vector<std::shared_ptr<PreparedLayout>> members() const;

 private:
  std::ostream& messages_;
  MisreadTexts misread_;
  std::map<std::string, std::shared_ptr<PreparedLayout>> known_;  // null: has errors
  std::vector<std::string> path_;  // being prepared, one for the other
};

}  // namespace korvex::host
