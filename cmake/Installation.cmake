# The files that `cmake --install` installs, in GNU's directories.
include(GNUInstallDirs)

function(sealkeeper_install_programs)
    install(TARGETS sealkeeper DESTINATION "${CMAKE_INSTALL_BINDIR}")
    if(SEALKEEPER_BUILD_INSPECT)
        install(TARGETS sealkeeper-inspect DESTINATION "${CMAKE_INSTALL_BINDIR}")
    endif()
endfunction()

function(sealkeeper_install_documents)
    set(root "${PROJECT_SOURCE_DIR}")
    install(FILES "${root}/README.md" "${root}/SECURITY.md" "${root}/CHANGELOG.md" "${root}/LICENSE"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    # The file name that Debian expects.
    install(FILES "${root}/NOTICES" DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
    # Without the sources of the manual, and without the test vectors and their keys. Other files of
    # the source tree that the pages mention are not installed either.
    install(DIRECTORY "${root}/docs/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs"
        PATTERN man EXCLUDE
        PATTERN vectors EXCLUDE)
    install(DIRECTORY "${root}/examples/" DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")
endfunction()
