# `cmake --install`: the library, its public headers, and what find_package(KyImgLib) and pkg-config read.

install(TARGETS KyImgLib EXPORT KyImgLibConfig
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The library needs no other package, so the list of its targets is the whole package file.
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KyImgLib)
install(EXPORT KyImgLibConfig NAMESPACE KyImgLib:: DESTINATION ${package_dir} COMPONENT development)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(KyImgLibConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KyImgLibConfigVersion.cmake DESTINATION ${package_dir}
        COMPONENT development)

# Paths relative to the .pc file: an installed tree can be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
           OUTPUT_VARIABLE pc_to_prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/KyImgLib.pc.in KyImgLib.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KyImgLib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)
