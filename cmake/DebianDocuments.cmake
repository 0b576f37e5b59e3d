# Prepares the documents in a package as Debian requires (Debian Policy 12): compressed manual pages
# and a changelog, and no second copy of a licence that every system has. CPack runs it.
set(shared "${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
set(documents "${shared}/doc")
file(REMOVE "${documents}/sealkeeper/LICENSE")
if(NOT CPACK_PACKAGE_NAME STREQUAL "sealkeeper")
    file(RENAME "${documents}/sealkeeper" "${documents}/${CPACK_PACKAGE_NAME}")
endif()

# The same bytes for the same sources, whenever they are packaged.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(date_of "@$ENV{SOURCE_DATE_EPOCH}")
else()
    set(date_of now)
endif()
execute_process(COMMAND date --utc --rfc-email "--date=${date_of}"
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(WRITE "${documents}/${CPACK_PACKAGE_NAME}/changelog"
    "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * Release ${CPACK_PACKAGE_VERSION}; CHANGELOG.md says what is new.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")

# The directory in which Debian's zsh looks for completions from packages.
file(RENAME "${shared}/zsh/site-functions" "${shared}/zsh/vendor-completions")

file(GLOB pages "${shared}/man/man*/*.[0-9]")
foreach(file IN LISTS pages ITEMS "${documents}/${CPACK_PACKAGE_NAME}/changelog")
    execute_process(COMMAND gzip --best --no-name "${file}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
