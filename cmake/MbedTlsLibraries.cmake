# Finds mbed TLS 2.28 or 3.x and defines the target Sealkeeper::MbedTls.
# Newer packages have a CMake configuration. Debian 12's 2.28 has neither that nor a pkg-config
# file, so its headers and libraries are searched for directly.

set(SEALKEEPER_MBEDTLS_CURE
    "Install mbed TLS 2.28 or 3.6: 'apt-get install libmbedtls-dev' on Debian 12 or 13, "
    "'brew install mbedtls@3' on macOS (then add -DCMAKE_PREFIX_PATH=\"$(brew --prefix mbedtls@3)\").")
string(CONCAT SEALKEEPER_MBEDTLS_CURE ${SEALKEEPER_MBEDTLS_CURE})

function(sealkeeper_read_mbedtls_version include_dir result)
    foreach(header IN ITEMS build_info.h version.h)
        set(path "${include_dir}/mbedtls/${header}")
        if(EXISTS "${path}")
            file(STRINGS "${path}" line REGEX "#define[ \t]+MBEDTLS_VERSION_STRING[ \t]+\"" LIMIT_COUNT 1)
            if(line MATCHES "\"([0-9.]+)\"")
                set(${result} "${CMAKE_MATCH_1}" PARENT_SCOPE)
                return()
            endif()
        endif()
    endforeach()
    set(${result} "unknown" PARENT_SCOPE)
endfunction()

function(sealkeeper_require_supported_mbedtls version)
    if(version VERSION_LESS 2.28 OR version VERSION_GREATER_EQUAL 4)
        message(FATAL_ERROR "mbed TLS ${version} is not supported. ${SEALKEEPER_MBEDTLS_CURE}")
    endif()
    message(STATUS "Found mbed TLS ${version}")
endfunction()

add_library(Sealkeeper::MbedTls INTERFACE IMPORTED)
find_package(MbedTLS CONFIG QUIET)
if(MbedTLS_FOUND)
    sealkeeper_require_supported_mbedtls("${MbedTLS_VERSION}")
    target_link_libraries(Sealkeeper::MbedTls INTERFACE MbedTLS::mbedx509 MbedTLS::mbedcrypto)
else()
    find_path(SEALKEEPER_MBEDTLS_INCLUDE_DIR mbedtls/x509_crt.h)
    find_library(SEALKEEPER_MBEDX509_LIBRARY mbedx509)
    find_library(SEALKEEPER_MBEDCRYPTO_LIBRARY mbedcrypto)
    mark_as_advanced(SEALKEEPER_MBEDTLS_INCLUDE_DIR SEALKEEPER_MBEDX509_LIBRARY
        SEALKEEPER_MBEDCRYPTO_LIBRARY)
    if(NOT SEALKEEPER_MBEDTLS_INCLUDE_DIR)
        message(FATAL_ERROR "mbed TLS was not found. ${SEALKEEPER_MBEDTLS_CURE}")
    endif()
    sealkeeper_read_mbedtls_version("${SEALKEEPER_MBEDTLS_INCLUDE_DIR}" SEALKEEPER_MBEDTLS_VERSION)
    sealkeeper_require_supported_mbedtls("${SEALKEEPER_MBEDTLS_VERSION}")
    if(NOT SEALKEEPER_MBEDX509_LIBRARY OR NOT SEALKEEPER_MBEDCRYPTO_LIBRARY)
        message(FATAL_ERROR
            "The headers of mbed TLS were found, but not its libraries. ${SEALKEEPER_MBEDTLS_CURE}")
    endif()
    target_include_directories(Sealkeeper::MbedTls SYSTEM INTERFACE
        "${SEALKEEPER_MBEDTLS_INCLUDE_DIR}")
    target_link_libraries(Sealkeeper::MbedTls INTERFACE
        "${SEALKEEPER_MBEDX509_LIBRARY}" "${SEALKEEPER_MBEDCRYPTO_LIBRARY}")
endif()
