#pragma once

#include <optional>
#include <string_view>

#include "host/imports/guessed_texts.h"

namespace korvex::host {

// Texts such as INV-000123 for a column whose name ends like `invoice_no`; nothing for any other.
std::optional<GuessedText> guess_reference_numbers(std::string_view name, const ColumnTask& task);

}  // namespace korvex::host
