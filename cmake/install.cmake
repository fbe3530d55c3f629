# What "cmake --install" puts where: the libraries, the header, the program with its man pages and the
# completion of its command line, and what other projects find the library by (pkg-config, CMake
# package). Each component is a package of its own where they are packed: "runtime" needs no GUI
# library, "dialogs" adds the windows to it.
include(CMakePackageConfigHelpers)

install(TARGETS korvex EXPORT korvex-targets
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

# Packages hold man pages compressed. Without a time in them, every build gives the same files.
find_program(KORVEX_GZIP gzip REQUIRED)
set(compressed_pages)
foreach(page korvex.1 korvex-layout.5)
  set(compressed_page ${CMAKE_BINARY_DIR}/man/${page}.gz)
  add_custom_command(OUTPUT ${compressed_page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
    COMMAND ${KORVEX_GZIP} -9nc ${CMAKE_SOURCE_DIR}/man/${page} > ${compressed_page}
    DEPENDS man/${page} VERBATIM)
  list(APPEND compressed_pages ${compressed_page})
  string(REGEX REPLACE ".*\\." man section ${page})
  install(FILES ${compressed_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/${section} COMPONENT program)
endforeach()
add_custom_target(korvex_man_pages ALL DEPENDS ${compressed_pages})
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
