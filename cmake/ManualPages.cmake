# Manual pages, made with scdoc, and completions for bash, zsh and fish.

include(GNUInstallDirs)

find_program(SEALKEEPER_SCDOC scdoc)
# zsh's search path depends on the system.
set(SEALKEEPER_ZSH_COMPLETIONS_DIR "${CMAKE_INSTALL_DATADIR}/zsh/site-functions"
    CACHE STRING "Where completions for zsh are installed")

# Adds `page` to the build and installs it.
function(sealkeeper_install_manual_page page)
    set(script "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/WriteManualPage.cmake")
    set(source "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../docs/man/${page}.scd")
    set(output "${CMAKE_CURRENT_BINARY_DIR}/man/${page}")
    add_custom_command(OUTPUT "${output}"
        COMMAND "${CMAKE_COMMAND}"
            "-DSCDOC=${SEALKEEPER_SCDOC}"
            "-DSOURCE=${source}"
            "-DPROJECT_VERSION=${PROJECT_VERSION}"
            "-DOUTPUT=${output}"
            -P "${script}"
        DEPENDS "${source}" "${script}"
        COMMENT "Making the manual page ${page}"
        VERBATIM)
    add_custom_target(manual-${page} ALL DEPENDS "${output}")
    string(REGEX REPLACE ".*\\." "" section "${page}")
    install(FILES "${output}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man${section}")
endfunction()

function(sealkeeper_install_completions program)
    set(directory "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../completions")
    # bash loads a completion by the name of the command. One file serves both programs.
    install(FILES "${directory}/sealkeeper.bash" RENAME "${program}"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    install(FILES "${directory}/_${program}" DESTINATION "${SEALKEEPER_ZSH_COMPLETIONS_DIR}")
    install(FILES "${directory}/${program}.fish"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endfunction()

# Adds the manual pages of the built programs to the default build if scdoc is found, and installs
# them with the completions.
function(sealkeeper_install_manual)
    set(programs sealkeeper)
    set(pages sealkeeper.1 sealkeeper.cfg.5)
    if(SEALKEEPER_BUILD_INSPECT)
        list(APPEND programs sealkeeper-inspect)
        list(APPEND pages sealkeeper-inspect.1)
    endif()
    foreach(program IN LISTS programs)
        sealkeeper_install_completions(${program})
    endforeach()
    if(NOT SEALKEEPER_SCDOC)
        message(STATUS "scdoc was not found: the manual pages are left out")
        return()
    endif()
    foreach(page IN LISTS pages)
        sealkeeper_install_manual_page(${page})
    endforeach()
endfunction()
