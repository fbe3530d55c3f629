#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/databases.h"
#include "support/environment.h"
#include "support/program.h"

// The tables of a shop, in a database of each kind.
namespace korvex::test {

// Both databases read this.
inline constexpr const char* shop_schema = R"(
CREATE TABLE customers (
  id integer PRIMARY KEY,
  email varchar(40) NOT NULL UNIQUE,
  active boolean NOT NULL,
  since date NOT NULL
);
CREATE TABLE orders (
  id integer PRIMARY KEY,
  customer_id integer NOT NULL REFERENCES customers (id),
  amount numeric(9,2) NOT NULL CHECK (amount > 0),
  placed_at timestamp NOT NULL,
  note varchar(80)
);
CREATE TABLE marks (
  id integer PRIMARY KEY,
  "a ""b\" varchar(20) NOT NULL,
  rest varchar(20)
);
CREATE TABLE pairs (
  customer_id integer NOT NULL REFERENCES customers (id),
  mark_id integer NOT NULL REFERENCES marks (id) DEFERRABLE INITIALLY DEFERRED,
  PRIMARY KEY (customer_id, mark_id)
);
CREATE TABLE parts (
  maker varchar(10) NOT NULL,
  code varchar(10) NOT NULL,
  PRIMARY KEY (maker, code)
);
CREATE TABLE lines (
  id integer PRIMARY KEY,
  maker varchar(10) NOT NULL,
  code varchar(10) NOT NULL,
  FOREIGN KEY (maker, code) REFERENCES parts
);
CREATE TABLE tree (
  id integer PRIMARY KEY,
  parent_id integer NOT NULL REFERENCES tree (id),
  twice integer GENERATED ALWAYS AS (id * 2) STORED,
  shape blob_or_path
);
)";

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
  }
  return text;
}

class Shop : public testing::TestWithParam<const char*> {
 protected:
  Shop() : config_("XDG_CONFIG_HOME", folder_.file("config")), temporary_("TMPDIR", std::nullopt) {
    std::filesystem::current_path(folder_.path());
    if (is_sqlite()) {
      database_ = std::make_unique<SqliteFile>();
    } else {
      database_ = PostgresqlServer::start();
    }
    if (!database_) return;
    // What a program leaves in its temporary folder is found there.
    std::filesystem::create_directory("tmp");
    ::setenv("TMPDIR", folder_.file("tmp").c_str(), 1);
    // A type that no item suits.
    database_->query(replaced(shop_schema, "blob_or_path", is_sqlite() ? "geometry" : "path"));
  }
  ~Shop() override { std::filesystem::current_path("/"); }

  static bool is_sqlite() { return std::string(GetParam()) == "SQLite"; }

  int import(const std::string& table, const std::string& count = "1000") {
    return program_.run({"import", database_->target(), table, "-o", table + ".toml", "--records",
                         count, "--force"});
  }
  int load(const std::string& table, const std::vector<std::string>& options = {}) {
    std::vector<std::string> words = {"load", table + ".toml", database_->target(), table};
    words.insert(words.end(), options.begin(), options.end());
    return program_.run(words);
  }
  std::string query(const std::string& sql) const { return database_->query(sql); }

  static void edit(const std::string& file, const std::string& from, const std::string& to) {
    const std::string text = read_file(file);
    const std::size_t place = text.find(from);
    ASSERT_NE(place, std::string::npos) << from << " in\n" << text;
    write_file(file, text.substr(0, place) + to + text.substr(place + from.size()));
  }

  void load_customers() {
    ASSERT_EQ(import("customers"), 0) << program_.err();
    ASSERT_EQ(load("customers"), 0) << program_.err();
  }

  TempFolder folder_;
  ScopedVariable config_;
  ScopedVariable temporary_;
  const Program program_{KORVEX_PROGRAM, folder_.path()};
  std::unique_ptr<TestDatabase> database_;
};

#define SKIP_WITHOUT_DATABASE() \
  if (!database_) GTEST_SKIP() << "the programs of a PostgreSQL server are not installed"

}  // namespace korvex::test
