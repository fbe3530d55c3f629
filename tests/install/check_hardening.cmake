# Checks that what is installed is hardened, as far as its files tell: run with
# -DREADELF=<readelf> -DFILES=<comma-separated paths>, -DFORTIFIED=<those of them that hand fixed
# buffers to the C library>, and where the compiler protects jumps -DOBJECTS=<archive>: a finished
# file has the note on them only if all its objects have it, and those of the compiler may lack it.

cmake_minimum_required(VERSION 3.25)

function(expect file text pattern what)
  if(NOT text MATCHES "${pattern}")
    message(SEND_ERROR "${file}: ${what}")
  endif()
endfunction()

string(REPLACE "," ";" FILES "${FILES}")
string(REPLACE "," ";" FORTIFIED "${FORTIFIED}")
foreach(file ${FILES})
  execute_process(COMMAND ${READELF} --wide --file-header --program-headers --dynamic --dyn-syms ${file}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  expect(${file} "${text}" "Type: +DYN" "has a fixed address")
  expect(${file} "${text}" "GNU_RELRO" "its relocations stay writable")
  expect(${file} "${text}" "BIND_NOW|FLAGS_1[^\n]* NOW" "its functions are bound while it runs")
  expect(${file} "${text}" "GNU_STACK [^\n]* RW " "its stack is executable")
  expect(${file} "${text}" "__stack_chk_fail" "its stack is not protected")
  if(file IN_LIST FORTIFIED)
    expect(${file} "${text}" "__[a-z]+_chk@" "its calls of the C library are not fortified")
  endif()
endforeach()

if(OBJECTS)
  execute_process(COMMAND ${READELF} --wide --notes ${OBJECTS}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "File: " objects "${text}")
  string(REGEX MATCHALL "IBT, SHSTK" protected "${text}")
  list(LENGTH objects object_count)
  list(LENGTH protected protected_count)
  if(object_count EQUAL 0 OR NOT object_count EQUAL protected_count)
    message(SEND_ERROR "${OBJECTS}: ${protected_count} of ${object_count} objects have protected jumps")
  endif()
endif()
