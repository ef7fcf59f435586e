# Compiles several sources at once: most of the time goes into the headers that all of them include.
# Names in anonymous namespaces must therefore differ within a folder. -DCMAKE_UNITY_BUILD=OFF shows a source that
# forgets an include of its own.
if(NOT DEFINED CMAKE_UNITY_BUILD)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)
endif()

# Windows' headers define macros that other sources must not see: the directory's windows_*.cpp compile alone.
function(compile_windows_sources_alone)
    if(WIN32)
        file(GLOB sources CONFIGURE_DEPENDS windows_*.cpp */windows_*.cpp)
        set_source_files_properties(${sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
endfunction()
