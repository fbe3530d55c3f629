#include "platform/piece_team.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>

#include "platform/piece_relay.h"

namespace korvex::test {
namespace {

using Team = platform::PieceTeam<std::string>;
using Relay = platform::PieceRelay<std::string>;

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
  return [=](std::size_t, std::uint64_t chunk, platform::PieceOutlet<std::string>& outlet) {
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

// What a relay delivers, to what a worker throws, or up to the piece or the text that ends it.
std::string delivered(std::size_t workers, std::uint64_t chunks, std::uint64_t first_bad,
                      const std::string& last_piece = "", const std::string& last_seen = "-") {
  std::string text;
  std::string seen;
  const auto caller = std::this_thread::get_id();
  const auto deliver = [&](const std::string& piece) {
    text += piece + " ";
    return piece != last_piece;
  };
  const auto watch = [&] {
    EXPECT_EQ(std::this_thread::get_id(), caller);
    seen = text;
    return seen != last_seen;
  };
  try {
    Relay(chunks, letters(first_bad), deliver, watch).run(workers);
    EXPECT_TRUE(seen == text || !last_piece.empty());
  } catch (const std::runtime_error& failure) {
    text += failure.what();
  }
  return text;
}

TEST(PieceRelayTest, DeliversInOrderWhatThreadsMake) {
  constexpr std::uint64_t none_bad = 1000;
  for (const std::size_t workers : {1, 2, 3, 8}) {
    EXPECT_EQ(delivered(workers, 0, none_bad), "") << workers;
    EXPECT_EQ(delivered(workers, 4, none_bad), "0a 0b 0c 1a 1b 1c 2a 2b 2c 3a 3b 3c ") << workers;
    EXPECT_EQ(delivered(workers, 1000, 2), "0a 0b 0c 1a 1b 1c 2a 2") << workers;
    EXPECT_EQ(delivered(workers, 1000, none_bad, "1b"), "0a 0b 0c 1a 1b ") << workers;
    EXPECT_EQ(delivered(workers, 1000, none_bad, "", "0a 0b "), "0a 0b ") << workers;
  }
}

}  // namespace
}  // namespace korvex::test
