# Compiler settings that every target of the project shares, and the one way to define a module.

include(${CMAKE_CURRENT_LIST_DIR}/hardening.cmake)

add_library(korvex_options INTERFACE)
target_link_libraries(korvex_options INTERFACE korvex_hardening)
target_compile_options(korvex_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
  # g++ 12 warns of overlapping copies inside its own std::string.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(KORVEX_SANITIZE OR KORVEX_FUZZ)
  target_compile_options(korvex_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(korvex_options INTERFACE -fsanitize=address,undefined)
endif()
if(KORVEX_FUZZ)
  target_compile_options(korvex_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# korvex_expose(<target> <scope> <folder> [<header>...])
#
# Makes the folder src/<folder> (or just the named headers of it) visible to whoever links <target>,
# as "<folder>/name.h". Each target has an include directory of its own that holds nothing but a
# link to that folder, so that a file can include only what its target links: an include in the
# wrong direction does not compile.
function(korvex_expose target scope folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  if(ARGN)
    file(MAKE_DIRECTORY ${root}/${folder})
    foreach(header ${ARGN})
      file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder}/${header} ${root}/${folder}/${header} SYMBOLIC)
    endforeach()
  else()
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  endif()
  target_include_directories(${target} ${scope} ${root})
endfunction()

# korvex_module(<name> FOLDER <folder> SOURCES <file>... [LINKS <target>...])
function(korvex_module name)
  cmake_parse_arguments(PARSE_ARGV 1 module "" "FOLDER" "SOURCES;LINKS")
  list(TRANSFORM module_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/src/${module_FOLDER}/)
  add_library(${name} STATIC ${module_SOURCES})
  target_link_libraries(${name} PRIVATE korvex_options PUBLIC ${module_LINKS})
  korvex_expose(${name} PUBLIC ${module_FOLDER})
endfunction()
