# Turns the DER files of the trust material into a C++ source file, using only CMake.

set(SEALKEEPER_DEVELOPMENT_TRUST_DIR "${CMAKE_CURRENT_LIST_DIR}/../trust/development")

# Configures again when the file changes. Ninja accepts only one name per file, so the real path is
# used.
function(sealkeeper_configure_depends path)
    file(REAL_PATH "${path}" real)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${real}")
endfunction()

function(sealkeeper_read_der variable path result)
    if(NOT EXISTS "${path}" OR IS_DIRECTORY "${path}")
        message(FATAL_ERROR
            "${variable} names a file that is not there: '${path}'. "
            "Set it to a DER file with -D${variable}=PATH, or leave it out for the development pair.")
    endif()
    sealkeeper_configure_depends("${path}")
    file(READ "${path}" hex HEX)
    # A certificate or revocation list is a SEQUENCE (0x30) with a length of two (0x82) or three
    # (0x83) bytes, and nothing follows it (X.690).
    set(is_der FALSE)
    set(byte "[0-9a-f][0-9a-f]")
    if(hex MATCHES "^30(82${byte}${byte}|83${byte}${byte}${byte})")
        string(LENGTH "30${CMAKE_MATCH_1}" header_digits)
        string(SUBSTRING "${CMAKE_MATCH_1}" 2 -1 length)
        math(EXPR told "0x${length} + ${header_digits} / 2")
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

# Sets `result` to whether any of the trust material is the development authority's, or a copy of
# it.
function(sealkeeper_has_development_trust result)
    file(REAL_PATH "${SEALKEEPER_DEVELOPMENT_TRUST_DIR}" development)
    file(SHA256 "${development}/ca.der" development_ca)
    file(SHA256 "${development}/crl.der" development_crl)
    set(${result} FALSE PARENT_SCOPE)
    foreach(path IN ITEMS "${SEALKEEPER_TRUST_CA}" "${SEALKEEPER_TRUST_CRL}")
        file(REAL_PATH "${path}" real)
        cmake_path(IS_PREFIX development "${real}" is_inside)
        file(SHA256 "${real}" content)
        if(is_inside OR content STREQUAL development_ca OR content STREQUAL development_crl)
            set(${result} TRUE PARENT_SCOPE)
        endif()
    endforeach()
endfunction()

function(sealkeeper_refuse_or_warn_of_development_trust)
    sealkeeper_has_development_trust(is_development)
    if(NOT is_development)
        return()
    endif()
    if(SEALKEEPER_REQUIRE_OWN_TRUST)
        message(FATAL_ERROR
            "A release needs trust material of its own, and this is the DEVELOPMENT trust material, whose "
            "private key is public: set both -DSEALKEEPER_TRUST_CA=/path/ca.der and "
            "-DSEALKEEPER_TRUST_CRL=/path/crl.der (trust/README.md). To try the program out, "
            "use 'cmake --preset demo'.")
    endif()
    message(WARNING
        "Building with the DEVELOPMENT trust material, whose private key is public: the program "
        "will trust certificates that anybody can issue. For a release, set SEALKEEPER_TRUST_CA "
        "and SEALKEEPER_TRUST_CRL to your own DER files.")
endfunction()

# Writes the source file to `output`.
function(sealkeeper_generate_trust_material template output)
    sealkeeper_read_der(SEALKEEPER_TRUST_CA "${SEALKEEPER_TRUST_CA}" SEALKEEPER_TRUST_CA_BYTES)
    sealkeeper_read_der(SEALKEEPER_TRUST_CRL "${SEALKEEPER_TRUST_CRL}" SEALKEEPER_TRUST_CRL_BYTES)
    sealkeeper_refuse_or_warn_of_development_trust()
    configure_file("${template}" "${output}" @ONLY)
endfunction()

# Writes the source file that recognises the development trust material to `output`.
function(sealkeeper_generate_development_trust template output)
    foreach(name IN ITEMS ca crl)
        string(TOUPPER "${name}" upper)
        set(path "${SEALKEEPER_DEVELOPMENT_TRUST_DIR}/${name}.der")
        sealkeeper_configure_depends("${path}")
        file(SHA256 "${path}" digest)
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1, " SEALKEEPER_DEVELOPMENT_${upper}_DIGEST "${digest}")
    endforeach()
    configure_file("${template}" "${output}" @ONLY)
endfunction()
