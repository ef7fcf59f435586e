# Read by ctest: no test opens a display that it did not make itself.
foreach(name DISPLAY WAYLAND_DISPLAY WAYLAND_SOCKET XAUTHORITY)
    unset(ENV{${name}})
endforeach()
