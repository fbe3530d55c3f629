#include <libpq-fe.h>

#include <memory>
#include <stdexcept>
#include <string_view>

#include "host/databases/postgresql_database.h"

namespace korvex::host {

namespace {

constexpr std::string_view address_begin = "://";
// What ends the user and password of an address, even when it was meant to be a part of them.
constexpr std::string_view separators = "/?@";
constexpr std::string_view port_characters = "0123456789,";

// Library and server quote a value that they don't like. Where a blank was left out, or a whole
// string is in one value, it has the password in it.
void check_value(std::string_view keyword, std::string_view value) {
  if (keyword == "port" && value.find_first_not_of(port_characters) != std::string_view::npos) {
    throw std::invalid_argument("the port of the database is no number");
  }
  const bool is_hidden = keyword.ends_with("password");
  if (!is_hidden && (value.find("password=") != std::string_view::npos ||
                     value.find(address_begin) != std::string_view::npos)) {
    throw std::invalid_argument("the " + std::string(keyword) +
                                " of the database has another connection string in it, expected a "
                                "blank between a value and the next keyword");
  }
}

struct OptionsDeleter {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

}  // namespace

void check_connection_string(const std::string& connection) {
  const std::size_t scheme = connection.find(address_begin);
  const bool is_address = connection.starts_with("postgres") && scheme != std::string::npos;
  const std::size_t last_at = connection.rfind('@');
  if (is_address && last_at != std::string::npos) {
    const std::size_t begin = scheme + address_begin.size();
    const std::string_view user = std::string_view(connection).substr(begin, last_at - begin);
    if (user.find_first_of(separators) != std::string_view::npos) {
      throw std::invalid_argument(
          "the address of the database cannot be split into its parts: write / as %2F, ? as "
          "%3F and @ as %40 in its user, password and parameters");
    }
  }
  const std::unique_ptr<PQconninfoOption, OptionsDeleter> options(
      PQconninfoParse(connection.c_str(), nullptr));
  if (!options) {
    throw std::invalid_argument(
        is_address ? "the address of the database is none, expected "
                     "postgresql://USER@HOST:PORT/DATABASE?KEYWORD=VALUE"
                   : "the connection string of the database is none, expected KEYWORD=VALUE "
                     "KEYWORD=VALUE with the keywords of PostgreSQL's own programs; a value with "
                     "spaces stands between apostrophes");
  }
  for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
    if (option->val != nullptr) check_value(option->keyword, option->val);
  }
}

}  // namespace korvex::host
