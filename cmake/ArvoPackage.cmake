# All that is installed.
add_custom_target(installed DEPENDS arvo arvo-cli arvo-jet-reader desktop)
if(TARGET guide)
  add_dependencies(installed guide)
endif()

# The Debian package, made by ./package. Dependencies on libraries are found in the programs.
set(ARVO_MAINTAINER "ARVO maintainers <arvo@palomine.org>" CACHE STRING "Maintainer of the Debian package")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME arvo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${ARVO_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "database manager of eddy-current inspections of tubes")
set(CPACK_PACKAGE_DESCRIPTION "ARVO shows the tubes of a steam generator on a tubesheet map, keeps the
results of its outages in one project database that understands Access SQL,
and marks on the map the tubes selected by a query, a list, a random sample
or a pattern. It uploads the reports of analysts, converts text reports of
other systems, and keeps inspection plans, repairs, and histories of past
outages.
.
The program arvo-cli does the same work without a window.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core | fonts-liberation, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
