# Compiles several sources at once: most of the time goes into the headers that all of them include.
# Names in anonymous namespaces must therefore differ within a folder. -DCMAKE_UNITY_BUILD=OFF shows a source that
# forgets an include of its own. Windows' headers define macros that other sources must not see.
if(NOT DEFINED CMAKE_UNITY_BUILD AND NOT WIN32)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)
endif()
