# Checks what the library shows and needs: run with -DLIBRARY=<path> -DNM=<nm> -DLDD=<ldd>.

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
# Programs that are linked with it are bound to the version of each symbol.
string(REGEX MATCHALL "[^ \n]+\n" names "${symbols}")
list(TRANSFORM names STRIP)
list(SORT names)
set(expected DGCheckRepeatCnt DGCreateData DGCreateFile DGCreateFormat DGReplaceData)
list(TRANSFORM expected APPEND @@KORVEX_1)
# Some linkers make the node itself a symbol.
list(FILTER names EXCLUDE REGEX "^KORVEX_1(@|$)")
if(NOT "${names}" STREQUAL "${expected}")
  message(FATAL_ERROR "the library exports ${names}")
endif()

execute_process(COMMAND ${LDD} ${LIBRARY} OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
if(needed MATCHES "lib(Qt|X|xcb|wayland|gtk|gdk|GL|EGL)[^ \n]*")
  message(FATAL_ERROR "the library needs ${CMAKE_MATCH_0}")
endif()
