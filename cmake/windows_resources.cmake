# Adds icon, version and description to a program file on Windows; does nothing elsewhere.
function(show_on_windows program description)
    if(WIN32)
        configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${program}.rc @ONLY)
        target_sources(${program} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
    endif()
endfunction()
