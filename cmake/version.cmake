# The library desk_version holds the version texts. Its source is rewritten, and it alone recompiled, only when the
# commit changes.
set(version_source ${CMAKE_BINARY_DIR}/version/version.cpp)
add_custom_command(
    OUTPUT ${version_source}
    COMMAND ${CMAKE_COMMAND} -DSOURCES=${PROJECT_SOURCE_DIR} -DNUMBER=${PROJECT_VERSION} -DOUTPUT=${version_source}
            -P ${PROJECT_SOURCE_DIR}/cmake/write_version.cmake
    DEPENDS ${PROJECT_SOURCE_DIR}/cmake/write_version.cmake ${PROJECT_SOURCE_DIR}/cmake/commit.txt
            ${PROJECT_SOURCE_DIR}/src/runtime/version.cpp.in
    DEPFILE ${version_source}.d
    COMMENT "Asking git for the commit"
    VERBATIM)
add_library(desk_version STATIC ${version_source})
target_link_libraries(desk_version PUBLIC own_code)
