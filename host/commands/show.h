#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace korvex::host {

// Prints a control file, a settings file or a log file in readable form; which of them it
// is, its bytes tell. Answers what is wrong with the file, or an empty text; what could be read
// before a fault has then been printed.
std::string show_file(const std::string& path, std::ostream& out);

// The readable form of each kind of file. Every number in the bytes is checked before it is used.

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
