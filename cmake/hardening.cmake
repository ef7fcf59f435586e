# The hardening of Debian's own packages: a memory fault ends the program instead of helping an attacker. The flags
# come after those of the user and of packagers. Sanitizer builds find more, and exclude FORTIFY.
set(VELOTRACE_HARDENED OFF)
if(UNIX AND NOT VELOTRACE_SANITIZE)
    set(VELOTRACE_HARDENED ON)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection -D_GLIBCXX_ASSERTIONS)
    # shared libraries have their own kind of position-independent code
    set(is_shared "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>")
    add_compile_options("$<$<NOT:${is_shared}>:-fPIE>")
    add_link_options("$<$<NOT:${is_shared}>:-pie>")
    # needs an optimised build
    add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    add_link_options(-Wl,-z,relro,-z,now)
endif()
