# Options that make bugs in the program harder to exploit, as far as the compiler, the linker and
# the C++ library support them. Only for the program and its library: tests interpose functions of
# the C library, which _FORTIFY_SOURCE would bypass.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

set(SEALKEEPER_HARDENING_COMPILE_OPTIONS "")
set(SEALKEEPER_HARDENING_LINK_OPTIONS "")

function(sealkeeper_find_hardening_option option)
    # clang++ only warns about options that it ignores for the processor.
    set(CMAKE_REQUIRED_FLAGS -Werror)
    string(MAKE_C_IDENTIFIER "SEALKEEPER_HAS${option}" is_there)
    check_cxx_compiler_flag(${option} ${is_there})
    if(${is_there})
        list(APPEND SEALKEEPER_HARDENING_COMPILE_OPTIONS ${option})
        set(SEALKEEPER_HARDENING_COMPILE_OPTIONS ${SEALKEEPER_HARDENING_COMPILE_OPTIONS} PARENT_SCOPE)
    endif()
endfunction()

# _FORTIFY_SOURCE gives a warning or an error without optimisation, and a warning if the C library
# does not know level 3.
function(sealkeeper_find_fortify_level)
    set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
    check_cxx_source_compiles("#include <cstdio>\nint main() {}" SEALKEEPER_HAS_FORTIFY_SOURCE_3)
    set(level 2)
    if(SEALKEEPER_HAS_FORTIFY_SOURCE_3)
        set(level 3)
    endif()
    set(is_optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
    list(APPEND SEALKEEPER_HARDENING_COMPILE_OPTIONS
        "$<${is_optimised}:-U_FORTIFY_SOURCE>" "$<${is_optimised}:-D_FORTIFY_SOURCE=${level}>")
    set(SEALKEEPER_HARDENING_COMPILE_OPTIONS ${SEALKEEPER_HARDENING_COMPILE_OPTIONS} PARENT_SCOPE)
endfunction()

if(SEALKEEPER_HARDENING)
    check_pie_supported(LANGUAGES CXX)
    sealkeeper_find_hardening_option(-fPIE)
    sealkeeper_find_hardening_option(-fstack-protector-strong)
    sealkeeper_find_hardening_option(-fstack-clash-protection)
    # For x86-64 and for ARMv8.
    sealkeeper_find_hardening_option(-fcf-protection=full)
    sealkeeper_find_hardening_option(-mbranch-protection=standard)
    sealkeeper_find_fortify_level()
    check_linker_flag(CXX "LINKER:-z,relro,-z,now" SEALKEEPER_HAS_FULL_RELRO)
    if(SEALKEEPER_HAS_FULL_RELRO)
        list(APPEND SEALKEEPER_HARDENING_LINK_OPTIONS "LINKER:-z,relro,-z,now")
    endif()
endif()

function(sealkeeper_harden_target target)
    if(NOT SEALKEEPER_HARDENING)
        return()
    endif()
    target_compile_options(${target} PRIVATE ${SEALKEEPER_HARDENING_COMPILE_OPTIONS})
    # Assertions in libstdc++ and libc++ that take hardly any time.
    target_compile_definitions(${target} PRIVATE
        _GLIBCXX_ASSERTIONS _LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_FAST)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
        target_link_options(${target} PRIVATE ${SEALKEEPER_HARDENING_LINK_OPTIONS})
    endif()
endfunction()
