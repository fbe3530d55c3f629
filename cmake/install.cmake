# What "cmake --install" puts where: the library, its header, the program, and what other projects
# find them by (pkg-config, CMake package).
include(CMakePackageConfigHelpers)

install(TARGETS korvex EXPORT korvex-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS korvex_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/korvex DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/korvex)
install(EXPORT korvex-targets NAMESPACE korvex:: FILE korvex-config.cmake
  DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/korvex-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/korvex-config-version.cmake DESTINATION ${package_folder})

file(RELATIVE_PATH pkgconfig_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/korvex.pc.in ${CMAKE_BINARY_DIR}/korvex.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/korvex.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
