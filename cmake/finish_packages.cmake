# Run by "cpack" after the packages are made: takes the scripts out that it gives each package with a library,
# to bring the list of libraries up to date. A trigger does that, as Debian asks.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  if(NOT package MATCHES "\\.deb$")
    continue()
  endif()
  set(content ${package}.content)
  file(REMOVE_RECURSE ${content})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${content}/DEBIAN/postinst ${content}/DEBIAN/postrm)
  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${content} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${content})
endforeach()
