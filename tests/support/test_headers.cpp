// A library has a source, if only for its precompiled headers.
