# Turns the DER files of the trust material into a C++ source file, with nothing but CMake.

set(SEALKEEPER_DEVELOPMENT_TRUST_DIR "${CMAKE_CURRENT_SOURCE_DIR}/trust/development")

function(sealkeeper_read_der variable path result)
    if(NOT EXISTS "${path}" OR IS_DIRECTORY "${path}")
        message(FATAL_ERROR
            "${variable} names a file that is not there: '${path}'. "
            "Set it to a DER file with -D${variable}=PATH, or leave it out for the development pair.")
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
    file(READ "${path}" hex HEX)
    # A certificate and a revocation list are a SEQUENCE (0x30) whose length takes two bytes (0x82), and
    # nothing follows it (X.690).
    set(is_der FALSE)
    if(hex MATCHES "^3082([0-9a-f][0-9a-f][0-9a-f][0-9a-f])")
        math(EXPR told "0x${CMAKE_MATCH_1} + 4")
        file(SIZE "${path}" size)
        if(told EQUAL size)
            set(is_der TRUE)
        endif()
    endif()
    if(NOT is_der)
        message(FATAL_ERROR
            "${variable} names a file that is not DER: '${path}'. "
            "Convert PEM with 'openssl x509 -outform DER' or 'openssl crl -outform DER'.")
    endif()
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1, " bytes "${hex}")
    set(${result} "${bytes}" PARENT_SCOPE)
endfunction()

function(sealkeeper_warn_of_development_trust)
    foreach(path IN ITEMS "${SEALKEEPER_TRUST_CA}" "${SEALKEEPER_TRUST_CRL}")
        file(REAL_PATH "${path}" real)
        file(REAL_PATH "${SEALKEEPER_DEVELOPMENT_TRUST_DIR}" development)
        cmake_path(IS_PREFIX development "${real}" is_development)
        if(is_development)
            message(WARNING
                "Building with the DEVELOPMENT trust material, whose private key is public: the program "
                "will trust certificates that anybody can issue. For a release, set SEALKEEPER_TRUST_CA "
                "and SEALKEEPER_TRUST_CRL to your own DER files.")
            return()
        endif()
    endforeach()
endfunction()

# Writes the source file to `output`.
function(sealkeeper_generate_trust_material template output)
    sealkeeper_read_der(SEALKEEPER_TRUST_CA "${SEALKEEPER_TRUST_CA}" SEALKEEPER_TRUST_CA_BYTES)
    sealkeeper_read_der(SEALKEEPER_TRUST_CRL "${SEALKEEPER_TRUST_CRL}" SEALKEEPER_TRUST_CRL_BYTES)
    sealkeeper_warn_of_development_trust()
    configure_file("${template}" "${output}" @ONLY)
endfunction()
