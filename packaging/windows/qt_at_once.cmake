# Included by Qt's project: several sources compile as one, since the compiler spends most of its time on headers.
# at_once TARGET COUNT: so many sources at a time; 0: all.
function(at_once target count)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${count})
endfunction()
cmake_language(DEFER CALL at_once BundledHarfbuzz 0)
cmake_language(DEFER CALL at_once Widgets 8)
cmake_language(DEFER CALL at_once QWindowsIntegrationPlugin 8)
