# Prepares the documents in a package as Debian requires (Debian Policy 12): compressed manual pages
# and a changelog, a copyright file, and no second copy of a licence that every system has. CPack
# runs it.
set(shared "${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
set(documents "${shared}/doc/${CPACK_PACKAGE_NAME}")
if(NOT CPACK_PACKAGE_NAME STREQUAL "sealkeeper")
    file(RENAME "${shared}/doc/sealkeeper" "${documents}")
endif()

# A second name where the documents link to it.
file(REMOVE "${documents}/LICENSE")
file(CREATE_LINK ../../common-licenses/Apache-2.0 "${documents}/LICENSE" SYMBOLIC)
file(READ "${documents}/NOTICES" notices)
file(WRITE "${documents}/copyright"
    "This package was made by CPack from the sources of Sealkeeper.\n\n"
    "On Debian, the Apache License 2.0 is in /usr/share/common-licenses/Apache-2.0.\n\n\n"
    "${notices}")
file(REMOVE "${documents}/NOTICES")
file(CREATE_LINK copyright "${documents}/NOTICES" SYMBOLIC)

# The same bytes for the same sources, whenever they are packaged.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(date_of "@$ENV{SOURCE_DATE_EPOCH}")
else()
    set(date_of now)
endif()
execute_process(COMMAND date --utc --rfc-email "--date=${date_of}"
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(WRITE "${documents}/changelog"
    "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * Release ${CPACK_PACKAGE_VERSION}; CHANGELOG.md says what is new.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")

# The directory in which Debian's zsh looks for completions from packages.
file(RENAME "${shared}/zsh/site-functions" "${shared}/zsh/vendor-completions")

file(GLOB pages "${shared}/man/man*/*.[0-9]")
foreach(file IN LISTS pages ITEMS "${documents}/changelog")
    execute_process(COMMAND gzip --best --no-name "${file}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
