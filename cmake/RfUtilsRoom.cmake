# rfutils_room(HEADERS ... SOURCES ...): adds the folder's sources to the library and installs HEADERS, its public
# headers, under the path by which they are included. Headers not listed (detail/) are private.
function(rfutils_room)
    cmake_parse_arguments(ROOM "" "" "HEADERS;SOURCES" ${ARGN})
    target_sources(rfUtils PRIVATE ${ROOM_SOURCES} ${ROOM_HEADERS})
    file(RELATIVE_PATH room "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    foreach(header IN LISTS ROOM_HEADERS)
        set_property(GLOBAL APPEND PROPERTY RFUTILS_PUBLIC_HEADERS "${room}/${header}")
    endforeach()
    if(RFUTILS_INSTALL)
        install(FILES ${ROOM_HEADERS} DESTINATION "${rfutils_include_dir}/${room}" COMPONENT dev)
    endif()
endfunction()
