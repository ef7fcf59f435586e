# The style and the script of the pages are compiled in.
set(page_parts_source ${CMAKE_BINARY_DIR}/page_parts/page_parts.cpp)
set(page_parts_folder ${PROJECT_SOURCE_DIR}/src/report/page)
add_custom_command(
    OUTPUT ${page_parts_source}
    COMMAND ${CMAKE_COMMAND} -DSTYLE_FILE=${page_parts_folder}/page.css -DSCRIPT_FILE=${page_parts_folder}/index.js
            -DTEMPLATE=${page_parts_folder}/page_parts.cpp.in -DOUTPUT=${page_parts_source}
            -P ${PROJECT_SOURCE_DIR}/cmake/write_page_parts.cmake
    DEPENDS ${PROJECT_SOURCE_DIR}/cmake/write_page_parts.cmake ${page_parts_folder}/page_parts.cpp.in
            ${page_parts_folder}/page.css ${page_parts_folder}/index.js
    COMMENT "Writing the style and the script of the pages"
    VERBATIM)
add_library(desk_page_parts STATIC ${page_parts_source})
target_link_libraries(desk_page_parts PUBLIC own_code)
target_include_directories(desk_page_parts PUBLIC ${PROJECT_SOURCE_DIR}/src)
