# Checks what the library shows and needs: run with -DLIBRARY=<path> -DNM=<nm> -DLDD=<ldd>.

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^ \n]+\n" names "${symbols}")
list(TRANSFORM names STRIP)
list(SORT names)
set(expected DGCheckRepeatCnt DGCreateData DGCreateFile DGCreateFormat DGReplaceData)
if(NOT "${names}" STREQUAL "${expected}")
  message(FATAL_ERROR "the library exports ${names}")
endif()

execute_process(COMMAND ${LDD} ${LIBRARY} OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
if(needed MATCHES "lib(Qt|X|xcb|wayland|gtk|gdk|GL|EGL)[^ \n]*")
  message(FATAL_ERROR "the library needs ${CMAKE_MATCH_0}")
endif()
