#pragma once

#include <cstdint>
#include <string>

#include "values/attributes.h"

// Codes of the files with their meaning, for people: `1 (record file)`.
namespace korvex::host {

std::string named_layout_kind(std::int32_t kind);
std::string named_quotation(std::int32_t quotation);
std::string named_attribute(Attribute attribute);
std::string named_generation_type(std::int32_t type);
std::string named_format_kind(std::int32_t kind);
std::string named_exceeded_action(std::int32_t action);

// `attribute 4 (decimal), signed, length 10, digits 8, decimals 2`
std::string describe_attributes(const ItemAttributes& item);

}  // namespace korvex::host
