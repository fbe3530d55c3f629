#pragma once

#include <span>
#include <string_view>

#include "host/guesses/meaning.h"

namespace korvex::host {

// Words that a column's name can end with, with blanks in between, and what they say.
struct Phrase {
  std::string_view words;
  Meaning meaning;
  NameLanguage language;
};

std::span<const Phrase> known_phrases();

}  // namespace korvex::host
