# The list of manufacturers' ids is compiled in from Debian's hwdata.
find_file(PNP_IDS pnp.ids PATHS /usr/share/hwdata NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
          DOC "The list of PNP ids (Debian: hwdata)" REQUIRED)
set(pnp_ids_source ${CMAKE_BINARY_DIR}/pnp_ids/pnp_ids.cpp)
add_custom_command(
    OUTPUT ${pnp_ids_source}
    COMMAND ${CMAKE_COMMAND} -DLIST=${PNP_IDS} -DTEMPLATE=${PROJECT_SOURCE_DIR}/src/edid/facts/pnp_ids.cpp.in
            -DOUTPUT=${pnp_ids_source} -P ${PROJECT_SOURCE_DIR}/cmake/write_pnp_ids.cmake
    DEPENDS ${PROJECT_SOURCE_DIR}/cmake/write_pnp_ids.cmake ${PROJECT_SOURCE_DIR}/src/edid/facts/pnp_ids.cpp.in
            ${PNP_IDS}
    COMMENT "Writing the list of manufacturers"
    VERBATIM)
add_library(desk_pnp_ids STATIC ${pnp_ids_source})
target_link_libraries(desk_pnp_ids PUBLIC own_code)
