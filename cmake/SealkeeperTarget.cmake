# Settings that every target of this project shares. They are private to it.

function(sealkeeper_configure_target target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
        $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>
        $<$<BOOL:${SEALKEEPER_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
