#include "platform/piece_team.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace korvex::test {
namespace {

using Team = platform::PieceTeam<std::string>;

// The chunks of a team as text, up to what a worker throws.
std::string take_all(Team& team) {
  std::string text;
  try {
    while (const std::string* piece = team.next()) text += *piece + " ";
  } catch (const std::runtime_error& failure) {
    text += failure.what();
  }
  return text;
}

// Chunk 5 is "5a 5b 5c"; chunks from `first_bad` on fail after their first piece.
Team::Make letters(std::uint64_t first_bad) {
  return [=](std::size_t, std::uint64_t chunk, Team::Outlet& outlet) {
    for (const char letter : {'a', 'b', 'c'}) {
      if (letter == 'b' && chunk >= first_bad) throw std::runtime_error(std::to_string(chunk));
      std::string* const piece = outlet.room();
      if (piece == nullptr) return;
      *piece = std::to_string(chunk) + letter;
      outlet.hand_over(letter == 'c');
    }
  };
}

TEST(PieceTeamTest, GivesInOrderWhatThreadsMake) {
  constexpr std::uint64_t none_bad = 1000;
  for (const std::size_t workers : {1, 2, 3, 8}) {
    Team all(workers, 4, letters(none_bad));
    EXPECT_EQ(take_all(all), "0a 0b 0c 1a 1b 1c 2a 2b 2c 3a 3b 3c ") << workers;
    Team none(workers, 0, letters(none_bad));
    EXPECT_EQ(take_all(none), "") << workers;
    // The first failure in order, though others may have come before it.
    Team failing(workers, 1000, letters(2));
    EXPECT_EQ(take_all(failing), "0a 0b 0c 1a 1b 1c 2a 2") << workers;
    // Nobody waits for ever when no more is taken.
    Team left(workers, 1000, letters(none_bad));
    EXPECT_EQ(*left.next(), "0a") << workers;
  }
}

}  // namespace
}  // namespace korvex::test
