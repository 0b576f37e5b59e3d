# The files that `cmake --install` installs, in GNU's directories.
include(GNUInstallDirs)

# The sources, also for a project that only installs.
get_filename_component(SEALKEEPER_SOURCES "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)

function(sealkeeper_install_programs)
    install(TARGETS sealkeeper DESTINATION "${CMAKE_INSTALL_BINDIR}")
    if(SEALKEEPER_BUILD_INSPECT)
        install(TARGETS sealkeeper-inspect DESTINATION "${CMAKE_INSTALL_BINDIR}")
    endif()
endfunction()

# What issues credentials. The development authority comes only with a program that trusts it.
function(sealkeeper_install_tools)
    set(destination "${CMAKE_INSTALL_DATADIR}/sealkeeper")
    install(PROGRAMS "${SEALKEEPER_SOURCES}/tools/issue-credentials.sh" DESTINATION "${destination}/tools")
    sealkeeper_has_development_trust(is_development)
    if(is_development)
        # Where the script looks for it.
        install(FILES "${SEALKEEPER_DEVELOPMENT_TRUST_DIR}/ca.der" "${SEALKEEPER_DEVELOPMENT_TRUST_DIR}/ca_private.key"
            DESTINATION "${destination}/trust/development")
    endif()
endfunction()

function(sealkeeper_install_documents)
    foreach(page IN ITEMS README.md SECURITY.md CHANGELOG.md LICENSE NOTICES)
        install(FILES "${SEALKEEPER_SOURCES}/${page}" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    endforeach()
    install(FILES "${SEALKEEPER_SOURCES}/trust/README.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}/trust")
    # Without the sources of the manual, and without the test vectors and their keys.
    install(DIRECTORY "${SEALKEEPER_SOURCES}/docs/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs"
        PATTERN man EXCLUDE
        PATTERN vectors EXCLUDE)
    install(DIRECTORY "${SEALKEEPER_SOURCES}/examples/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")
    file(GLOB_RECURSE pages RELATIVE "${SEALKEEPER_SOURCES}" CONFIGURE_DEPENDS "${SEALKEEPER_SOURCES}/docs/*.md")
    list(FILTER pages EXCLUDE REGEX "^docs/(man|vectors)/")
    list(APPEND pages README.md SECURITY.md CHANGELOG.md trust/README.md)
    install(CODE "set(documents \"${CMAKE_INSTALL_DOCDIR}\")\nset(pages \"${pages}\")")
    install(SCRIPT "${SEALKEEPER_SOURCES}/cmake/InstalledLinks.cmake")
endfunction()
