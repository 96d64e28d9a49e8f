# Installs the library, its CMake package and its pkg-config module, all relocatable. RfUtilsRoom.cmake installs the
# public headers.

# A program of an enclosing project needs the shared library installed beside it, and nothing else.
if(NOT RFUTILS_INSTALL)
    install(TARGETS rfUtils LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_SKIP)
    return()
endif()

include(CMakePackageConfigHelpers)

set(rfutils_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/rfUtils")
set(rfutils_qml_dir "${CMAKE_INSTALL_LIBDIR}/qt5/qml")

install(TARGETS rfUtils EXPORT rfUtilsTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev)
install(EXPORT rfUtilsTargets NAMESPACE rfUtils:: DESTINATION "${rfutils_cmake_dir}" COMPONENT dev)

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/rfUtilsConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/rfUtilsConfig.cmake" INSTALL_DESTINATION "${rfutils_cmake_dir}"
    PATH_VARS rfutils_qml_dir)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/rfUtilsConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/rfUtilsConfig.cmake"
    "${PROJECT_BINARY_DIR}/rfUtilsConfigVersion.cmake"
    DESTINATION "${rfutils_cmake_dir}" COMPONENT dev)

# Paths in the .pc file are relative to it, so that the installation can be moved.
set(rfutils_pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH rfutils_pc_prefix
    "/prefix/${rfutils_pc_dir}" "/prefix")
string(REGEX REPLACE "/$" "" rfutils_pc_prefix "${rfutils_pc_prefix}")
set(rfutils_pc_definitions "")
if(RFUTILS_PLATFORM_TARGET)
    set(rfutils_pc_definitions " -DRFUTILS_EXTERNAL_PLATFORM")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/rfUtils.pc.in" "${PROJECT_BINARY_DIR}/rfUtils.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/rfUtils.pc" DESTINATION "${rfutils_pc_dir}" COMPONENT dev)
