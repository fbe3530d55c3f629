#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/attributes.h"
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

// The code of an attribute that layouts call by name.
std::optional<Attribute> attribute_by_name(std::string_view name);

// Empty for codes without a name.
std::string_view attribute_name(Attribute attribute);

// All names as an error message lists them.
std::string list_attribute_names();

}  // namespace korvex::host
