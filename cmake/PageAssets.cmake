# Embeds the files of a page into the program.

set(SEALKEEPER_WRITE_PAGE_ASSETS "${CMAKE_CURRENT_LIST_DIR}/WritePageAssets.cmake")

# Adds a build step that makes the C++ source `output` from `name`.html, `name`.css and the scripts
# listed after `output`, all in `directory`.
function(sealkeeper_add_page_assets directory name template output)
    list(TRANSFORM ARGN PREPEND "${directory}/" OUTPUT_VARIABLE scripts)
    add_custom_command(OUTPUT "${output}"
        COMMAND "${CMAKE_COMMAND}"
            "-DMARKUP=${directory}/${name}.html"
            "-DSTYLE=${directory}/${name}.css"
            "-DSCRIPTS=${scripts}"
            "-DTEMPLATE=${template}"
            "-DOUTPUT=${output}"
            -P "${SEALKEEPER_WRITE_PAGE_ASSETS}"
        DEPENDS "${directory}/${name}.html" "${directory}/${name}.css" ${scripts} "${template}"
            "${SEALKEEPER_WRITE_PAGE_ASSETS}"
        COMMENT "Embedding the page ${name}.html"
        VERBATIM)
endfunction()
