# cmake -DSTYLE_FILE=FILE -DSCRIPT_FILE=FILE -DTEMPLATE=FILE -DOUTPUT=FILE -P write_page_parts.cmake: writes the source
# that holds the style and the script of the pages.
foreach(part STYLE SCRIPT)
    file(READ ${${part}_FILE} ${part})
    if("${${part}}" MATCHES "[<&]")
        message(FATAL_ERROR "${${part}_FILE} has a character that ends the element or counts as markup")
    endif()
    string(SHA256 ${part}_SHA256 "${${part}}")
endforeach()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY)
