#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/guesses/meaning.h"
#include "host/imports/guessed_texts.h"
#include "host/imports/key_plan.h"
#include "host/imports/planned_item.h"

namespace korvex::host {

// What the names of a table and its columns suggest about their values.
class TableGuesses {
 public:
  TableGuesses(const ImportedTable& table, const KeyPlan& keys);

  // A column that holds days or moments under another type gets theirs; numbers get bounds.
  void narrow(std::size_t column, const ImportPeriod& period, ColumnSchema& schema,
              ColumnFacts& facts, PlannedItem& item) const;

  // Values for a text column, if its name says what they are.
  std::optional<ColumnValues> text_values(std::size_t column, const ColumnTask& task,
                                          PlannedItem& item);

  // How often a nullable column is empty.
  std::string share_of_nulls(std::size_t column) const;

  // The order in which the moments of a record follow each other.
  std::vector<ColumnOrder> orders() const;

  // Weights, groups, and moments that depend on the state of the record.
  void finish(std::vector<PlannedItem>& items) const;

 private:
  void share_moments(const std::vector<ColumnOrder>& orders);
  std::optional<NameMeaning> meaning_in(std::size_t column) const;
  TextCompany company_of(std::size_t column, const NameMeaning& meaning) const;
  std::optional<std::size_t> find(Meaning meaning, const std::vector<std::string>& others) const;
  void add_conditions(std::vector<PlannedItem>& items) const;
  void add_groups(std::vector<PlannedItem>& items) const;

  const TableSchema& schema_;
  const TableKind kind_;
  std::vector<std::optional<NameMeaning>> meanings_;
  std::vector<std::string> rows_;  // that the texts of columns belong to
  std::string language_;
  std::string number_;  // the primary key, where it counts on
};

}  // namespace korvex::host
