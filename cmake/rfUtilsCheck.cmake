# rfutils_check_files(TARGET FILE... [OPTIONS OPTION...])
# The target TARGET, a part of ALL, checks files and folders by `rfutils check`, named from the current source folder. An
# error fails the build with the file, line and column, which IDEs lead to. OPTIONS are options of the command, such as
# --max-warnings 0.
#
# The check runs in every build: a map is read together with the files that belong to it, which need not be named.
function(rfutils_check_files target)
    cmake_parse_arguments(PARSE_ARGV 1 CHECK "" "" "OPTIONS")
    if(NOT CHECK_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "rfutils_check_files: ${target} has no files")
    endif()
    if(NOT TARGET rfUtils::command)
        message(FATAL_ERROR "rfutils_check_files: this installation of rfUtils has no command rfutils (component tools)")
    endif()
    add_custom_target(${target} ALL
        COMMAND rfUtils::command check ${CHECK_OPTIONS} ${CHECK_UNPARSED_ARGUMENTS}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
        COMMENT "Checking files of ${target}"
        VERBATIM)
endfunction()
