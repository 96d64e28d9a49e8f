# The stand-in as a package that is already installed; enough to configure against.
add_library(standin::platform INTERFACE IMPORTED)
set_target_properties(standin::platform PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${CMAKE_CURRENT_LIST_DIR}/../platform")
