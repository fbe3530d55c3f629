#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

// The readable form of each kind of file. Nothing that the bytes claim is trusted.
namespace korvex::host {

// Whether the bytes have the shape of the kind.
bool is_control_file(std::string_view bytes);
bool is_log_file(std::string_view bytes);
bool is_settings_file(std::string_view bytes);

// The bytes must have the kind's shape.
void print_control_file(std::string_view bytes, std::ostream& out);
void print_log_file(std::string_view bytes, std::ostream& out);

// Answers what is wrong with the file, or an empty text.
std::string print_settings_file(std::string_view bytes, std::ostream& out);

}  // namespace korvex::host
