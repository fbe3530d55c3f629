#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "host/layout/attribute_names.h"
#include "host/layout/layout_reader.h"
#include "support/databases.h"
#include "support/environment.h"
#include "support/program.h"

// The tables of docs/databases.md, row by row: each type is imported, generated and loaded back.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;

constexpr int records = 600;

// A row of a table of types.
struct TypeRow {
  std::string type;
  std::string attribute;
  std::string digits;
  std::string decimals;
  std::string values;
  std::string unique_values;  // empty for a type without unique columns
  std::string first_value;    // as the database prints it
};

std::string without_marks(std::string cell) {
  cell.erase(0, cell.find_first_not_of(' '));
  cell.erase(cell.find_last_not_of(' ') + 1);
  std::erase(cell, '`');
  return cell;
}

// The rows of the table below a heading.
std::vector<TypeRow> documented_types(const std::string& heading) {
  std::istringstream page(test::read_file(KORVEX_DATABASES_PAGE));
  std::vector<TypeRow> rows;
  std::string line;
  while (std::getline(page, line) && line != "## " + heading) {
  }
  while (std::getline(page, line) && !line.starts_with("## ")) {
    if (!line.starts_with("| `")) continue;
    std::istringstream text(line.substr(1));
    std::vector<std::string> cells;
    for (std::string cell; std::getline(text, cell, '|');) cells.push_back(without_marks(cell));
    rows.push_back({cells.at(0), cells.at(1), cells.at(2), cells.at(3), cells.at(4), cells.at(5),
                    cells.at(6)});
  }
  return rows;
}

std::string described(const LayoutItem& item) {
  const ItemValues& values = *item.values;
  if (values.source == ValueSource::range) {
    return values.texts.format + " " + values.texts.start + " to " + values.texts.end;
  }
  std::istringstream list(test::read_file(values.file));
  std::string text = "list:";
  for (std::string line; std::getline(list, line);)
    text += (text.back() == ':' ? " " : ", ") + line;
  return text;
}

class DatabaseTypes : public testing::TestWithParam<const char*> {
 protected:
  DatabaseTypes() : config_("XDG_CONFIG_HOME", folder_.file("config")) {
    fs::current_path(folder_.path());
    if (std::string(GetParam()) == "SQLite") {
      database_ = std::make_unique<test::SqliteFile>();
    } else {
      database_ = test::PostgresqlServer::start();
    }
  }
  ~DatabaseTypes() override { fs::current_path("/"); }

  test::TempFolder folder_;
  test::ScopedVariable config_;
  const test::Program program_{KORVEX_PROGRAM, folder_.path()};
  std::unique_ptr<test::TestDatabase> database_;
};

TEST_P(DatabaseTypes, AreMappedAsDocumentedAndLoadBack) {
  if (!database_) GTEST_SKIP() << "the programs of a PostgreSQL server are not installed";
  const auto types = documented_types(std::string(GetParam()) + " types");
  ASSERT_GT(types.size(), 10u);
  std::string columns = "k integer PRIMARY KEY";
  for (std::size_t i = 0; i < types.size(); ++i) {
    const std::string number = std::to_string(i);
    columns += ", c" + number + " " + types[i].type + " NOT NULL";
    if (types[i].unique_values.empty()) continue;
    columns += ", u" + number + " " + types[i].type + " UNIQUE";
  }
  if (std::string(GetParam()) == "PostgreSQL") {
    database_->query(
        "CREATE TYPE mood AS ENUM ('low', 'high'); CREATE DOMAIN short_code AS varchar(6)");
  }
  database_->query("CREATE TABLE t (" + columns + ")");
  const std::string target = database_->target();
  ASSERT_EQ(
      program_.run({"import", target, "t", "-o", "t.toml", "--records", std::to_string(records)}),
      0)
      << program_.err();
  const LayoutReading reading = read_layout("t.toml", std::nullopt);
  ASSERT_TRUE(reading.errors.empty()) << reading.errors.front().text;
  ASSERT_EQ(program_.run({"load", "t.toml", target, "t"}), 0) << program_.err();
  const std::string loaded = std::to_string(reading.layout.records);

  auto item = reading.layout.items.begin();
  EXPECT_EQ((item++)->name, "k");
  for (std::size_t i = 0; i < types.size(); ++i) {
    const TypeRow& row = types[i];
    const std::string number = std::to_string(i);
    ASSERT_EQ(item->name, "c" + number);
    EXPECT_EQ(attribute_name(item->attributes.attribute), row.attribute) << row.type;
    EXPECT_EQ(std::to_string(item->attributes.digits), row.digits) << row.type;
    EXPECT_EQ(std::to_string(item->attributes.decimals), row.decimals) << row.type;
    EXPECT_FALSE(item->nullable) << row.type;
    EXPECT_EQ(described(*item++), row.values) << row.type;
    EXPECT_EQ(database_->query("SELECT c" + number + " FROM t WHERE k = 1"), row.first_value);
    if (row.unique_values.empty()) continue;
    EXPECT_EQ(described(*item++), row.unique_values) << row.type;
    EXPECT_EQ(database_->query("SELECT count(DISTINCT u" + number + ") FROM t"), loaded)
        << row.type;
  }
}

INSTANTIATE_TEST_SUITE_P(Databases, DatabaseTypes, testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace korvex::host
