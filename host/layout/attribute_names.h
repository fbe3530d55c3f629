#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/attributes.h"

namespace korvex::host {

// The code of an attribute that layouts call by name.
std::optional<Attribute> attribute_by_name(std::string_view name);

// Empty for codes without a name.
std::string_view attribute_name(Attribute attribute);

// All names as an error message lists them.
std::string list_attribute_names();

}  // namespace korvex::host
