# The archive and the Debian package that cpack makes.
set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_PACKAGE_NAME norvexaeditor)
set(CPACK_PACKAGE_VENDOR "${NORVEXA_PUBLISHER}")
set(CPACK_PACKAGE_CONTACT "${NORVEXA_PUBLISHER} <maintainer@norvexaeditor.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/PackageKind.cmake)

# The newest entry of the Debian changelog names the version and, behind the dash, the revision of the package.
file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/debian/changelog entry LIMIT_COUNT 1)
if(NOT entry MATCHES "^norvexaeditor \\(${PROJECT_VERSION}-([0-9]+)\\)")
    message(FATAL_ERROR "packaging/debian/changelog has no entry for version ${PROJECT_VERSION} at its top.")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The PDF asks for Verdana and the log for Courier New: fontconfig answers with DejaVu Sans and Liberation Mono.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, fonts-liberation | fonts-liberation2")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS hicolor-icon-theme)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for uncertainty budgets of length-measuring machines")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Norvexa Editor keeps the uncertainty budget of a length-measuring machine
and gives the combined standard uncertainty of its measurements at any
length.
.
A budget is made of components with the items that contribute to the
uncertainty: expressions over named variables, each with a sensitivity, a
distribution and an evaluation of type A or B. Reports are exported as CSV
or PDF, with a formula for the uncertainty over a range of lengths.")

include(CPack)
