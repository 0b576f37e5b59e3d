# Run by the build: has scdoc make a manual page.
#   cmake -DSCDOC=scdoc -DSOURCE=a.1.scd -DPROJECT_VERSION=1.2.3 -DOUTPUT=a.1 -P WriteManualPage.cmake
#
# A page has a date, and two builds of one source must give the same. It is that of
# SOURCE_DATE_EPOCH (reproducible-builds.org), else of the last commit that changed the page, else
# of the file.
cmake_minimum_required(VERSION 3.21)

get_filename_component(directory "${SOURCE}" DIRECTORY)
set(epoch "$ENV{SOURCE_DATE_EPOCH}")
if(epoch STREQUAL "")
    execute_process(COMMAND git -C "${directory}" log -1 --format=%ct -- "${SOURCE}"
        OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(epoch STREQUAL "")
    file(TIMESTAMP "${SOURCE}" epoch "%s" UTC)
endif()
set(ENV{SOURCE_DATE_EPOCH} "${epoch}")

configure_file("${SOURCE}" "${OUTPUT}.scd" @ONLY)
execute_process(COMMAND "${SCDOC}"
    INPUT_FILE "${OUTPUT}.scd" OUTPUT_FILE "${OUTPUT}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    file(REMOVE "${OUTPUT}")
    message(FATAL_ERROR "scdoc does not take ${SOURCE}")
endif()
