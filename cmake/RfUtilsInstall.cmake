# Installs the library, its CMake package and its pkg-config module, all relocatable, and the documents with the examples.
# RfUtilsRoom.cmake installs the public headers; command, module and viewer install themselves. Each file belongs to one
# of the components that docs/installation.md describes.

# A program of an enclosing project needs the shared library installed beside it, and nothing else.
if(NOT RFUTILS_INSTALL)
    install(TARGETS rfUtils LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_SKIP)
    return()
endif()

include(CMakePackageConfigHelpers)

set(rfutils_cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/${rfutils_name}")
set(rfutils_command_file "${CMAKE_INSTALL_BINDIR}/rfutils${rfutils_program_suffix}")

install(TARGETS rfUtils EXPORT ${rfutils_name}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev)
install(EXPORT ${rfutils_name}Targets NAMESPACE rfUtils:: DESTINATION "${rfutils_cmake_dir}" COMPONENT dev)

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/rfUtilsConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/${rfutils_name}Config.cmake" INSTALL_DESTINATION "${rfutils_cmake_dir}"
    PATH_VARS rfutils_qml_dir rfutils_command_file)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/${rfutils_name}ConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/${rfutils_name}Config.cmake"
    "${PROJECT_BINARY_DIR}/${rfutils_name}ConfigVersion.cmake"
    "${PROJECT_SOURCE_DIR}/cmake/rfUtilsCheck.cmake"
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
configure_file("${PROJECT_SOURCE_DIR}/cmake/rfUtils.pc.in" "${PROJECT_BINARY_DIR}/${rfutils_name}.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/${rfutils_name}.pc" DESTINATION "${rfutils_pc_dir}" COMPONENT dev)

# As in the source tree, so that the links between them hold.
file(GLOB rfutils_documents "${PROJECT_SOURCE_DIR}/*.md")
install(FILES ${rfutils_documents} DESTINATION "${rfutils_doc_dir}" COMPONENT doc)
install(DIRECTORY docs DESTINATION "${rfutils_doc_dir}" COMPONENT doc
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg")
install(FILES python/README.md DESTINATION "${rfutils_doc_dir}/python" COMPONENT doc)
install(DIRECTORY examples DESTINATION "${rfutils_doc_dir}" COMPONENT doc
    PATTERN "CMakeLists.txt" EXCLUDE
    PATTERN "build" EXCLUDE
    PATTERN "__pycache__" EXCLUDE)
# The examples find the package that they are installed with.
file(GLOB rfutils_examples RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/examples/*/CMakeLists.txt" "${PROJECT_SOURCE_DIR}/examples/*/*/CMakeLists.txt")
foreach(example IN LISTS rfutils_examples)
    file(READ "${PROJECT_SOURCE_DIR}/${example}" text)
    string(REPLACE "find_package(rfUtils" "find_package(${rfutils_name}" text "${text}")
    string(REPLACE "rfUtils::rfUtils" "rfUtils::${rfutils_name}" text "${text}")
    string(REPLACE "Qt5" "Qt${RFUTILS_QT}" text "${text}")
    file(WRITE "${PROJECT_BINARY_DIR}/installed/${example}" "${text}")
    get_filename_component(folder "${example}" DIRECTORY)
    install(FILES "${PROJECT_BINARY_DIR}/installed/${example}" DESTINATION "${rfutils_doc_dir}/${folder}" COMPONENT doc)
endforeach()

if(rfutils_top_level)
    set(rfutils_own_folders "${CMAKE_INSTALL_INCLUDEDIR}/${rfutils_name}" "${rfutils_cmake_dir}" "${rfutils_qml_dir}/RfUtils"
        "${rfutils_doc_dir}" "${rfutils_data_dir}")
    if(RFUTILS_BUILD_PYTHON)
        list(APPEND rfutils_own_folders "${RFUTILS_PYTHON_DIR}/rfutils")
    endif()
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} "-DOWN_FOLDERS=${rfutils_own_folders}" -P "${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake"
        WORKING_DIRECTORY "${PROJECT_BINARY_DIR}"
        COMMENT "Removing what was installed last"
        VERBATIM)
endif()
