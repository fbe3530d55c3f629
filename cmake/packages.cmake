# Debian packages, one for each component that cmake/install.cmake names, made by "cpack". Windows
# are a package of their own, so that a machine without a desktop gets no GUI library.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_PACKAGE_CONTACT "KORVEX developers <korvex@localhost.invalid>" CACHE STRING
  "Who answers for the packages")
# Each package begins its description with a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/finish_packages.cmake)
# The list of changes says how often this version has been packed.
file(STRINGS cmake/debian/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "\\(([0-9.]+)-([0-9]+)\\)" OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "cmake/debian/changelog does not begin with version ${PROJECT_VERSION}: ${newest}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})

# Dependencies on the system's libraries are found; those between the components are on the very
# same version.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_PROGRAM_DEPENDS runtime)

set(runtime_package libkorvex${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "test data for record files and database tables (library)
Generates files of comma-separated records from saved settings. Its windows
are in korvex-dialogs, which it works without.")
# Which package a program needs that is linked with the library, and from which version on each symbol
# is in it.
configure_file(cmake/debian/symbols.in ${CMAKE_BINARY_DIR}/packages/symbols @ONLY)
file(WRITE ${CMAKE_BINARY_DIR}/packages/shlibs
  "libkorvex ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
# The system's list of libraries is made again when this one comes or goes.
file(WRITE ${CMAKE_BINARY_DIR}/packages/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${CMAKE_BINARY_DIR}/packages/shlibs ${CMAKE_BINARY_DIR}/packages/symbols
  ${CMAKE_BINARY_DIR}/packages/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkorvex-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "test data for record files and database tables (development)
The header of the library, and what pkg-config and CMake find it by.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME korvex)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "test data for record files and database tables
Generates files of comma-separated records, or the rows of a database table,
from a description of their items. Its windows are in korvex-dialogs.")

if(TARGET korvex_dialogs)
  list(APPEND CPACK_COMPONENTS_ALL dialogs)
  set(CPACK_COMPONENT_DIALOGS_DEPENDS runtime)
  set(CPACK_DEBIAN_DIALOGS_PACKAGE_NAME korvex-dialogs)
  set(CPACK_DEBIAN_DIALOGS_PACKAGE_SECTION libs)
  set(CPACK_COMPONENT_DIALOGS_DESCRIPTION "test data for record files and database tables (windows)
The windows in which settings are edited, and in which progress and messages
show on a desktop.")
  install(FILES cmake/debian/korvex-dialogs.overrides RENAME korvex-dialogs
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT dialogs)
  set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS korvex-dialogs)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS korvex-dialogs)
endif()

# Each package says what changed, and who may do what with it, among its documents.
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} name)
  install(FILES ${changes} ${package_changes} ${CMAKE_SOURCE_DIR}/cmake/debian/copyright
    DESTINATION ${document_folder}/${CPACK_DEBIAN_${name}_PACKAGE_NAME} COMPONENT ${component})
endforeach()

include(CPack)
