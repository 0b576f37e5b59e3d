# Run by the build: writes the files that a page is made of into a C++ source file.
#   cmake -DMARKUP=a.html -DSTYLE=a.css "-DSCRIPTS=a.js;b.js" -DTEMPLATE=a.cpp.in -DOUTPUT=a.cpp
#       -P WritePageAssets.cmake
cmake_minimum_required(VERSION 3.21)

# The Base64 (RFC 4648) of the SHA-256 of `text`.
function(sha256_base64 text result)
    set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
    string(SHA256 hex "${text}")
    # 32 bytes are ten groups of three bytes, and two bytes that a zero byte completes. Each three
    # hexadecimal digits become two characters. The last character stands for the zero byte and
    # becomes padding.
    string(REGEX MATCHALL "..." groups "${hex}00")
    set(base64 "")
    foreach(group IN LISTS groups)
        math(EXPR high "0x${group} >> 6")
        math(EXPR low "0x${group} & 63")
        string(SUBSTRING "${alphabet}" ${high} 1 high)
        string(SUBSTRING "${alphabet}" ${low} 1 low)
        string(APPEND base64 "${high}${low}")
    endforeach()
    string(REGEX REPLACE ".$" "=" base64 "${base64}")
    set(${result} "${base64}" PARENT_SCOPE)
endfunction()

# `text` as the content of a C++ string literal.
function(string_literal text result)
    string(HEX "${text}" hex)
    string(REGEX REPLACE "(..)" "\\\\x\\1" literal "${hex}")
    set(${result} "${literal}" PARENT_SCOPE)
endfunction()

file(READ "${MARKUP}" markup_text)
file(READ "${STYLE}" style_text)
set(script_text "")
foreach(script IN LISTS SCRIPTS)
    file(READ "${script}" text)
    string(APPEND script_text "${text}")
endforeach()

# Either would end the element or change how the browser parses it.
if("${script_text}${style_text}" MATCHES "</|<!--")
    message(FATAL_ERROR "The page's script and style must not hold '</' or '<!--'.")
endif()

foreach(part IN ITEMS markup style script)
    string_literal("${${part}_text}" ${part})
endforeach()
sha256_base64("${style_text}" style_hash)
sha256_base64("${script_text}" script_hash)
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
