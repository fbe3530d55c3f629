#include "host/guesses/meaning.h"

#include <gtest/gtest.h>

namespace korvex::host {
namespace {

struct NamedColumn {
  const char* name;
  std::optional<Meaning> meaning;
};

constexpr std::nullopt_t none = std::nullopt;

// Whole words at the end of a name say what it is, in any spelling; a part of a word never does.
TEST(Meaning, ComesFromWholeWordsAtTheEndOfAName) {
  const NamedColumn columns[] = {
      {"first_name", Meaning::given_name},
      {"firstName", Meaning::given_name},
      {"FirstName", Meaning::given_name},
      {"FIRST_NAME", Meaning::given_name},
      {"billing_city", Meaning::city},
      {"ShipPostalCode", Meaning::postcode},
      {"address_2", Meaning::street},
      {"addressLine2", Meaning::street},
      {"Straße", Meaning::street},
      {"Kunden-Nachname", Meaning::family_name},
      {"geändert_am", Meaning::change},
      {"氏名", Meaning::full_name},
      {"メールアドレス", Meaning::email},
      {"createdAt", Meaning::creation},
      {"paid_on", Meaning::payment},
      {"closed_date", Meaning::end},
      {"check_out_time", Meaning::end},
      {"status_date", none},
      {"paid_by", none},
      {"last_login", Meaning::change},
      {"login", Meaning::user_name},
      {"IPAddress", Meaning::network_address},
      {"unitPrice", Meaning::price},
      {"filename", none},
      {"city_id", none},
      {"email_verified", none},
      {"capacity", none},
      {"workplace", none},
      {"landing", none},
      {"username_hash", Meaning::digest},
      {"is_deleted", Meaning::removal},
      {"name_count", none},
      {"ordering", none},
      {"x", none},
      {"", none},
      {"_", none},
      {"\xFF\xFE", none},
  };
  for (const NamedColumn& column : columns) {
    const auto found = find_meaning(column.name);
    EXPECT_EQ(found ? std::optional(found->meaning) : std::nullopt, column.meaning) << column.name;
  }
}

TEST(TableKind, ComesFromTheLastWord) {
  EXPECT_EQ(kind_of_table("customers"), TableKind::people);
  EXPECT_EQ(kind_of_table("customer_orders"), TableKind::orders);
  EXPECT_EQ(kind_of_table("OrderItems"), TableKind::products);
  EXPECT_EQ(kind_of_table("user_settings"), TableKind::other);
  EXPECT_EQ(kind_of_table("Companies"), TableKind::companies);
}

}  // namespace
}  // namespace korvex::host
