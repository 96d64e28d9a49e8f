# rfutils_reproducible(target): keeps the folders of sources and build out of optimised files, so that the same sources
# give the same bytes. Other builds name them, for debuggers and coverage.
function(rfutils_reproducible target)
    set(optimised "$<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>,$<CONFIG:MinSizeRel>>")
    # The last matching prefix counts, and the build folder may lie within the sources.
    target_compile_options(${target} PRIVATE
        "$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>"
        "$<${optimised}:-ffile-prefix-map=${CMAKE_BINARY_DIR}=.>")
    set_target_properties(${target} PROPERTIES
        AUTOMOC_PATH_PREFIX ON
        BUILD_RPATH_USE_ORIGIN ON)
endfunction()
