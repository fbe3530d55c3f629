#pragma once

#include <string>
#include <vector>

#include "host/commands/column_summary.h"

namespace korvex::host {

// A column of a report. Texts are as they came, in UTF-8.
struct ReportedColumn {
  std::string name;
  std::string source;
  std::string course;
  ColumnSummary summary;
};

struct ReportedTable {
  std::string name;
  std::uint64_t records = 0;
  std::vector<ReportedColumn> columns;
  std::vector<std::vector<std::string>> samples;  // rows, as wide as the columns
  std::vector<std::size_t> parents;               // tables that its keys lead to
  std::string note;                               // why not all is known of it
};

// A page of its own, which needs no other file and no network. Every text in it is escaped.
std::string report_page(const std::string& title, const std::vector<ReportedTable>& tables);

}  // namespace korvex::host
