// Exists for its precompiled header.
