# Read by cpack once for each kind of package that it makes.
if(CPACK_GENERATOR STREQUAL "DEB")
    list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build_directory)
    list(APPEND CPACK_INSTALL_CMAKE_PROJECTS ${build_directory} NorvexaEditor debian /)
endif()
