# What "cmake --install" puts where: the libraries, the header, the program with its man pages, its
# documents and the completion of its command line, and what other projects find the library by
# (pkg-config, CMake package). Each component is a package of its own where they are packed: "runtime" needs no GUI
# library, "dialogs" adds the windows to it.
include(CMakePackageConfigHelpers)

install(TARGETS korvex korvex_headers EXPORT korvex-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
if(TARGET korvex_dialogs)
  # The library looks for its dialogs beside itself.
  install(TARGETS korvex_dialogs
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dialogs)
endif()
install(TARGETS korvex_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
foreach(database korvex_sqlite korvex_postgresql)
  if(TARGET ${database})
    install(TARGETS ${database}
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/korvex COMPONENT program)
  endif()
endforeach()

# Packages hold man pages and the list of changes compressed. Without a time in them, every build
# gives the same files.
find_program(KORVEX_GZIP gzip REQUIRED)
set(compressed_files)
function(compress source target)
  get_filename_component(folder ${target} DIRECTORY)
  add_custom_command(OUTPUT ${target}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${KORVEX_GZIP} -9nc ${source} > ${target}
    DEPENDS ${source} VERBATIM)
  set(compressed_files ${compressed_files} ${target} PARENT_SCOPE)
endfunction()
# The pages on files are made of the documents.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
function(make_man document page summary)
  string(REGEX MATCH "^(.*)\\.(.)$" name_and_section ${page})
  set(script ${CMAKE_SOURCE_DIR}/scripts/make-man)
  set(source ${CMAKE_SOURCE_DIR}/docs/${document})
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/man/${page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
    COMMAND ${Python3_EXECUTABLE} ${script} ${source} ${CMAKE_MATCH_1} ${CMAKE_MATCH_2} ${summary}
      > ${CMAKE_BINARY_DIR}/man/${page}
    DEPENDS ${script} ${source} VERBATIM)
endfunction()
make_man(layout-file.md korvex-layout.5 "what a data file of korvex holds")
make_man(format-language.md korvex-format.5 "how values of a korvex layout are written and counted")
foreach(page man/korvex.1 ${CMAKE_BINARY_DIR}/man/korvex-layout.5 ${CMAKE_BINARY_DIR}/man/korvex-format.5)
  cmake_path(ABSOLUTE_PATH page)
  cmake_path(GET page FILENAME page_name)
  set(compressed_page ${CMAKE_BINARY_DIR}/man/${page_name}.gz)
  compress(${page} ${compressed_page})
  string(REGEX REPLACE ".*\\." man section ${page_name})
  install(FILES ${compressed_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/${section} COMPONENT program)
endforeach()
set(changes ${CMAKE_BINARY_DIR}/packages/changelog.gz)
compress(${CMAKE_SOURCE_DIR}/CHANGELOG.md ${changes})
set(package_changes ${CMAKE_BINARY_DIR}/packages/changelog.Debian.gz)
compress(${CMAKE_SOURCE_DIR}/cmake/debian/changelog ${package_changes})
add_custom_target(korvex_compressed_files ALL DEPENDS ${compressed_files})

# The documents keep their places beside each other, so that the links between them lead somewhere.
set(document_folder ${CMAKE_INSTALL_DATAROOTDIR}/doc)
install(FILES README.md CONTRIBUTING.md CHANGELOG.md DESTINATION ${document_folder}/korvex COMPONENT program)
install(DIRECTORY docs examples DESTINATION ${document_folder}/korvex COMPONENT program
  PATTERN out EXCLUDE)
# The windows look for their help where it is installed.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/doc/korvex)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/docs ${CMAKE_BINARY_DIR}/share/doc/korvex/docs SYMBOLIC)
install(FILES bench/README.md DESTINATION ${document_folder}/korvex/bench COMPONENT program)
install(DIRECTORY include DESTINATION ${document_folder}/korvex COMPONENT program)
install(FILES completion/korvex.bash RENAME korvex
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)

install(DIRECTORY include/korvex DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/korvex)
install(EXPORT korvex-targets NAMESPACE korvex:: FILE korvex-config.cmake
  DESTINATION ${package_folder} COMPONENT development)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/korvex-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/korvex-config-version.cmake
  DESTINATION ${package_folder} COMPONENT development)

file(RELATIVE_PATH pkgconfig_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/korvex.pc.in ${CMAKE_BINARY_DIR}/korvex.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/korvex.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

include(cmake/packages.cmake)
