# Included by Qt's project: several sources compile as one, since the compiler spends most of its time on headers.

# at_once TARGET COUNT [SOURCE...]: so many sources at a time, 0 for all, without those whose names clash with others.
function(at_once target count)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${count})
    foreach(source ${ARGN})
        set_source_files_properties(${CMAKE_SOURCE_DIR}/src/${source} TARGET_DIRECTORY ${target}
            PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endforeach()
endfunction()

cmake_language(DEFER CALL at_once BundledHarfbuzz 0)
cmake_language(DEFER CALL at_once Widgets 8 widgets/dialogs/qsidebar.cpp widgets/accessible/qaccessiblewidgets.cpp)
cmake_language(DEFER CALL at_once QWindowsIntegrationPlugin 8 plugins/platforms/windows/qwindowspointerhandler.cpp)
