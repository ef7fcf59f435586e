# The manual as an HTML page, for the packages. Building the desk needs no pandoc.
find_program(PANDOC pandoc DOC "Converts the manual to HTML (Debian: pandoc)")
if(PANDOC)
    set(manual_page ${CMAKE_BINARY_DIR}/manual.html)
    file(GLOB manual_sources CONFIGURE_DEPENDS docs/pictures/*.png)
    add_custom_command(OUTPUT ${manual_page}
        COMMAND ${PROJECT_SOURCE_DIR}/packaging/make_manual ${manual_page}
        DEPENDS ${manual_sources} docs/manual.md docs/training.md packaging/make_manual packaging/manual.css
        COMMENT "Making the manual" VERBATIM)
    add_custom_target(manual ALL DEPENDS ${manual_page})
endif()
