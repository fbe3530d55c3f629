#pragma once

#include <string>

namespace korvex::host {

// Throws std::invalid_argument for what is no connection string of the server's client library, or
// would be read in another way than its writer meant. The library's own message about such a string
// quotes the piece that it could not read, which is the password as often as not; these quote none.
void check_connection_string(const std::string& connection);

}  // namespace korvex::host
