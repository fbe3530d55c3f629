#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/databases/list_file.h"
#include "host/layout/layout_writer.h"

namespace korvex::host {

// A layout for a table, with the lists that it needs, which are not kept yet.
struct TableImport {
  LayoutDraft layout;
  std::vector<std::unique_ptr<ListFile>> lists;
  std::vector<std::string> remarks;  // what the user should know of, by column
  std::vector<std::string> errors;   // columns that must have a value and get none
};

// Works out items whose values the table takes: `records` of them at once, unless a unique column
// cannot hold so many, which lowers the number. Lists go to `folder`. Throws DatabaseError,
// Interrupted, std::system_error.
TableImport import_table(Database& database, const std::string& table, std::int32_t records,
                         const std::string& folder);

}  // namespace korvex::host
