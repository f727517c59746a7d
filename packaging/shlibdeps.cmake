# Run by cpack between staging the files and making the package: the shared
# libraries the programs need, from dpkg-shlibdeps, go in front of the Depends
# field. (CPack's own SHLIBDEPS option loses file names that are not ASCII.)
file(GLOB programs LIST_DIRECTORIES false "${CPACK_TEMPORARY_DIRECTORY}/usr/lib/${CPACK_PACKAGE_NAME}/*")
if(NOT programs)
  message(FATAL_ERROR "no programs staged in ${CPACK_TEMPORARY_DIRECTORY}/usr/lib/${CPACK_PACKAGE_NAME}")
endif()
# dpkg-shlibdeps looks for the package's debian/control.
file(MAKE_DIRECTORY "${CPACK_TEMPORARY_DIRECTORY}/debian")
file(WRITE "${CPACK_TEMPORARY_DIRECTORY}/debian/control" "")
execute_process(COMMAND dpkg-shlibdeps -O ${programs}
  WORKING_DIRECTORY "${CPACK_TEMPORARY_DIRECTORY}"
  OUTPUT_VARIABLE shlibdeps RESULT_VARIABLE result ERROR_VARIABLE problem OUTPUT_STRIP_TRAILING_WHITESPACE)
file(REMOVE_RECURSE "${CPACK_TEMPORARY_DIRECTORY}/debian")
if(NOT result EQUAL 0 OR NOT shlibdeps MATCHES "shlibs:Depends=")
  message(FATAL_ERROR "dpkg-shlibdeps failed (${result}): ${problem}")
endif()
string(REGEX REPLACE "^.*shlibs:Depends=([^\n]*).*$" "\\1" libraries "${shlibdeps}")
message(STATUS "libraries of the programs: ${libraries}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${libraries}, ${CPACK_DEBIAN_PACKAGE_DEPENDS}")
