# The build with clang's address and undefined-behaviour sanitizers. Its code is also instrumented for the fuzzers, so
# that the tests and the fuzzers link the same objects.
if(VELOTRACE_SANITIZE)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "The fuzzers need clang's libFuzzer: cmake --preset sanitize")
    endif()
    add_compile_options(-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    add_compile_definitions(WITH_SANITIZERS)
endif()
