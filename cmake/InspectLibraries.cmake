# Finds the libraries of sealkeeper-inspect (CLI11, nlohmann-json and pugixml) and defines the
# target Sealkeeper::InspectLibraries.

find_package(CLI11 CONFIG QUIET)
find_package(nlohmann_json CONFIG QUIET)
find_package(pugixml CONFIG QUIET)
if(NOT CLI11_FOUND OR NOT nlohmann_json_FOUND OR NOT pugixml_FOUND)
    message(FATAL_ERROR
        "sealkeeper-inspect needs CLI11, nlohmann-json and pugixml: 'apt-get install libcli11-dev "
        "nlohmann-json3-dev libpugixml-dev' on Debian, 'brew install cli11 nlohmann-json pugixml' "
        "on macOS. To build sealkeeper alone: -DSEALKEEPER_BUILD_INSPECT=OFF.")
endif()

add_library(Sealkeeper::InspectLibraries INTERFACE IMPORTED)
target_link_libraries(Sealkeeper::InspectLibraries INTERFACE
    CLI11::CLI11 nlohmann_json::nlohmann_json pugixml::pugixml)
