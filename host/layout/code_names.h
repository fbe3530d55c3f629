#pragma once

#include <cstdint>
#include <string>

#include "values/records.h"

// Codes of the files with their meaning, for people: `1 (record file)`.
namespace korvex::host {

std::string named_layout_kind(LayoutKind kind);
std::string named_quotation(Quotation mark);
std::string named_attribute(Attribute attribute);
std::string named_generation_type(GenerationType type);
std::string named_format_kind(FormatKind kind);
std::string named_exceeded_action(ExceededAction action);

// `attribute 4 (decimal), signed, length 10, digits 8, decimals 2`
std::string describe_attributes(const ItemAttributes& item);

}  // namespace korvex::host
