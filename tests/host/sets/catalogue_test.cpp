#include "host/sets/catalogue.h"

#include <gtest/gtest.h>

namespace korvex::sets {
namespace {

TEST(Catalogue, RefusesVersionsThatItDoesNotKnow) {
  for (const std::int32_t version : {-1, 0, newest_version + 1}) {
    const auto found = find_column("people.given", "en", version);
    const auto* fault = std::get_if<Fault>(&found);
    ASSERT_NE(fault, nullptr) << version;
    EXPECT_EQ(fault->key, Fault::Key::version);
  }
  EXPECT_TRUE(std::holds_alternative<Column>(find_column("people.given", "en", newest_version)));
}

}  // namespace
}  // namespace korvex::sets
