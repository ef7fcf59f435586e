# What a Linux package contains. A program counts as installed if ../share/velotrace-desk is beside its folder.
include(GNUInstallDirs)

install(TARGETS velotrace velotrace_cli velotrace_sim desk_robot edid_report)
install(FILES assets/marlo_rs232.ini assets/timing_pattern.ini DESTINATION ${CMAKE_INSTALL_DATADIR}/velotrace-desk)

install(FILES python/velotrace.py DESTINATION ${CMAKE_INSTALL_DATADIR}/velotrace-desk/python)

install(FILES docs/man/velotrace.1 docs/man/velotrace_cli.1 docs/man/velotrace_sim.1 docs/man/desk_robot.1
        docs/man/edid_report.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES packaging/linux/completion/velotrace_cli DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

install(FILES packaging/linux/velotrace.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/linux/velotrace.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 32 48 64 128)
    install(FILES assets/icon/velotrace_${size}.png DESTINATION ${icons}/${size}x${size}/apps RENAME velotrace.png)
endforeach()
install(FILES assets/velotrace.png DESTINATION ${icons}/256x256/apps)
install(FILES assets/velotrace.svg DESTINATION ${icons}/scalable/apps)

set(documents ${CMAKE_INSTALL_DATADIR}/doc/velotrace-desk)
install(FILES packaging/linux/README.installed.md DESTINATION ${documents} RENAME README.md)
install(FILES CHANGELOG.md DESTINATION ${documents})
if(TARGET manual)
    install(FILES ${manual_page} DESTINATION ${documents})
endif()
install(FILES docs/edid_report.schema.json DESTINATION ${documents})
