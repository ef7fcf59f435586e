# Copies the settings file and the catalogue beside the programs; never overwrites an existing one.
file(MAKE_DIRECTORY ${program_directory})
foreach(name marlo_rs232.ini timing_pattern.ini)
    if(NOT EXISTS ${program_directory}/${name})
        file(COPY ${PROJECT_SOURCE_DIR}/assets/${name} DESTINATION ${program_directory})
    endif()
endforeach()
