#pragma once

#include <string>
#include <string_view>

// Texts from outside (names, values, paths, what another program or a file says) on their way to a
// person. A terminal acts on control characters, and a line end could make a second message of
// one: both show as escapes. Whoever prints such a text sends it through here.
namespace korvex::platform {

// For UTF-8 and for paths. A byte that is no part of a character shows as an escape, too.
std::string printable(std::string_view text);

// The same for a text of several lines, which stay apart.
std::string printable_lines(std::string_view text);

// For code page 932, in a message: question marks stand for what cannot be converted, as the rest
// of the message is still worth reading.
std::string printable_from_code_page(std::string_view text);

// The same for what a command answers with, which is right or not there: throws ConverterFailure.
std::string exact_printable_from_code_page(std::string_view text);

}  // namespace korvex::platform
