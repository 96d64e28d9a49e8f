# rfutils_reproducible(target): in optimised builds the folders of the sources and of the build leave no trace, so
# that the same sources give the same bytes. Other builds keep them, for debuggers and coverage.
function(rfutils_reproducible target)
    set(optimised "$<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>,$<CONFIG:MinSizeRel>>")
    # The last that fits counts: a build folder within the sources is none of their folders.
    target_compile_options(${target} PRIVATE
        "$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>"
        "$<${optimised}:-ffile-prefix-map=${CMAKE_BINARY_DIR}=.>")
    set_target_properties(${target} PROPERTIES
        AUTOMOC_PATH_PREFIX ON
        BUILD_RPATH_USE_ORIGIN ON)
endfunction()
