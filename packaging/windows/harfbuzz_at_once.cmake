# Included by Qt's project: Harfbuzz, mostly templates in headers, compiles in a fifth of the time as one source.
cmake_language(DEFER CALL set_target_properties BundledHarfbuzz PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
