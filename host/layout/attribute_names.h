#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::host {

// The code of an attribute that layouts call by name.
std::optional<std::int32_t> attribute_by_name(std::string_view name);

// Empty for codes without a name.
std::string_view attribute_name(std::int32_t code);

// All names as an error message lists them.
std::string list_attribute_names();

}  // namespace korvex::host
