# Compiler settings that every target of the project shares, and the one way to define a module.

include(${CMAKE_CURRENT_LIST_DIR}/hardening.cmake)

add_library(korvex_options INTERFACE)
target_link_libraries(korvex_options INTERFACE korvex_hardening)
target_compile_options(korvex_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${KORVEX_WERROR}>:-Werror>
  # Among files compiled as one, a local name may hide a name of another file.
  $<$<NOT:$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wshadow>
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

# korvex_expose(<target> <scope> <room> [<header>...])
#
# Makes the room, a folder beside the list file that calls this (or just the named headers of it),
# visible to whoever links <target>, as "<room>/name.h", after the prefix that the list file sets in
# korvex_include_prefix. Each target has an include directory of its own that holds nothing but a
# link to that folder, so that a file can include only what its target links: an include in the
# wrong direction does not compile.
function(korvex_expose target scope room)
  set(root ${CMAKE_BINARY_DIR}/rooms/${target})
  set(link ${root}/${korvex_include_prefix}${room})
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${room})
  if(ARGN)
    file(MAKE_DIRECTORY ${link})
    foreach(header ${ARGN})
      file(CREATE_LINK ${source}/${header} ${link}/${header} SYMBOLIC)
    endforeach()
  else()
    cmake_path(GET link PARENT_PATH parent)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${source} ${link} SYMBOLIC)
  endif()
  target_include_directories(${target} ${scope} ${root})
endfunction()

# korvex_room(<target> <room> SOURCES <file>... [LINKS <target>...])
#
# A library of the files in a room.
function(korvex_room target room)
  cmake_parse_arguments(PARSE_ARGV 2 room "" "" "SOURCES;LINKS")
  list(TRANSFORM room_SOURCES PREPEND ${room}/)
  add_library(${target} STATIC ${room_SOURCES})
  target_link_libraries(${target} PRIVATE korvex_options PUBLIC ${room_LINKS})
  korvex_expose(${target} PUBLIC ${room})
endfunction()
