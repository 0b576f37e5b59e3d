# Settings shared by all targets of this project, and private to them.

function(sealkeeper_configure_target target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
        $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>
        $<$<BOOL:${SEALKEEPER_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

# Makes a unity build of `target`, one unit per folder: the files of a folder define nothing twice.
# Functions of one name differ in their parameters.
function(sealkeeper_unite_folders target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" OUTPUT_VARIABLE folder)
        cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
        cmake_path(GET folder PARENT_PATH folder)
        string(MAKE_C_IDENTIFIER "${folder}" group)
        set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${group}")
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # g++ warns of types that a header would share, and takes the files of a unit for headers.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endfunction()

# Runs clang-tidy on the sources of `target` while they are compiled, if enabled.
function(sealkeeper_tidy_target target)
    if(SEALKEEPER_CLANG_TIDY)
        find_program(SEALKEEPER_CLANG_TIDY_PROGRAM clang-tidy REQUIRED)
        set_target_properties(${target} PROPERTIES CXX_CLANG_TIDY
            "${SEALKEEPER_CLANG_TIDY_PROGRAM};--quiet;--config-file=${PROJECT_SOURCE_DIR}/.clang-tidy")
    endif()
endfunction()
