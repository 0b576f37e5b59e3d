# Packages by CPack: `cpack` in the build folder makes a .deb for the system that it was built on.

sealkeeper_has_development_trust(is_development)
set(CPACK_PACKAGE_NAME sealkeeper)
if(is_development)
    # Nobody should take it for a release.
    set(CPACK_PACKAGE_NAME sealkeeper-development)
endif()
set(CPACK_PACKAGE_VENDOR "The Sealkeeper developers")
set(CPACK_PACKAGE_CONTACT "The Sealkeeper developers <developers@sealkeeper.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "signs and verifies the hash catalogues of games")
set(CPACK_PACKAGE_DESCRIPTION
    "Sealkeeper selects the files of a game by rules, hashes them, and writes a
signed hash catalogue for its anti-cheat client. It verifies an installed
game against it and lists what it holds. sealkeeper-inspect says what would
be sealed and why not the rest, and whether certificates and keys are good.
Both are for game developers and must not be shipped to players.")
if(is_development)
    string(APPEND CPACK_PACKAGE_DESCRIPTION
        "\nThis package trusts the development authority, for which anybody can issue\ncertificates.")
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What issues credentials runs it.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS openssl)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "")
foreach(relation IN ITEMS CONFLICTS REPLACES)
    if(is_development)
        set(CPACK_DEBIAN_PACKAGE_${relation} sealkeeper)
    else()
        set(CPACK_DEBIAN_PACKAGE_${relation} sealkeeper-development)
    endif()
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianDocuments.cmake")
include(CPack)
