# Warnings are errors, in our own code.
add_library(own_code INTERFACE)
target_compile_options(own_code INTERFACE -Wall -Wextra -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # gcc 12 mistakes the concatenation of a literal and a temporary string for an overlapping copy
    target_compile_options(own_code INTERFACE -Wno-restrict)
endif()
target_include_directories(own_code INTERFACE ${PROJECT_SOURCE_DIR}/src)
