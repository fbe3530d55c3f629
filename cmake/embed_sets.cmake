# cmake -DFILES=FILE;... -DOUTPUT=FILE -P embed_sets.cmake: makes a C++ source of the tables of data/sets,
# so that the program has them wherever it stands.
set(tables "")
list(SORT FILES COMPARE NATURAL)  # the tenth version after the ninth
foreach(file IN LISTS FILES)
  cmake_path(GET file FILENAME name)
  if(NOT name MATCHES "^([a-z]+)(\\.[a-z]+)?(\\.[a-z][a-z])?\\.([0-9]+)\\.tsv$")
    message(FATAL_ERROR "${name}: expected a name SET[.PART][.LANGUAGE].VERSION.tsv")
  endif()
  set(set ${CMAKE_MATCH_1})
  string(REPLACE "." "" part "${CMAKE_MATCH_2}")
  string(REPLACE "." "" language "${CMAKE_MATCH_3}")
  set(version ${CMAKE_MATCH_4})
  # Of the two that may be left out, a single one is the language when it has two letters.
  if(language STREQUAL "" AND part MATCHES "^..$")
    set(language ${part})
    set(part "")
  endif()
  file(READ ${file} text)
  # The suffix takes the length from the compiler: clang refuses to count so much at compile time.
  string(APPEND tables
    "    {\"${set}\", \"${part}\", \"${language}\", ${version}, R\"tsv(${text})tsv\"sv},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"host/sets/tables.h\"

namespace korvex::sets {

namespace {
using namespace std::string_view_literals;

constexpr Table tables[] = {
${tables}};
}  // namespace

std::span<const Table> built_in_tables() { return tables; }

}  // namespace korvex::sets
")
