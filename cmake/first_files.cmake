# First copies of the settings file and the catalogue stand beside the programs; one that exists is never overwritten.
file(MAKE_DIRECTORY ${program_directory})
foreach(name marlo_rs232.ini timing_pattern.ini)
    if(NOT EXISTS ${program_directory}/${name})
        file(COPY ${PROJECT_SOURCE_DIR}/assets/${name} DESTINATION ${program_directory})
    endif()
endforeach()
