# What "cmake --install" puts where: the libraries, the header, the program, and what other projects
# find them by (pkg-config, CMake package). Each component is a package of its own where they are
# packed: "runtime" needs no GUI library, "dialogs" adds the windows to it.
include(CMakePackageConfigHelpers)

install(TARGETS korvex EXPORT korvex-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development)
if(TARGET korvex_dialogs)
  # The library looks for its dialogs beside itself.
  install(TARGETS korvex_dialogs
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dialogs)
endif()
install(TARGETS korvex_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
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
