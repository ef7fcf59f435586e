# What makes a fault of memory end the program and not serve an attacker: as Debian builds its packages. The flags stand
# after those of the user and of the packagers. The sanitizers find more, and bear no FORTIFY.
set(VELOTRACE_HARDENED OFF)
if(UNIX AND NOT VELOTRACE_SANITIZE AND NOT VELOTRACE_FUZZ)
    set(VELOTRACE_HARDENED ON)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection -fPIE -D_GLIBCXX_ASSERTIONS)
    # it needs an optimised build
    add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    add_link_options(-pie -Wl,-z,relro,-z,now)
endif()
