# What "cmake --install" puts where a Linux desktop looks for it: all of it under the prefix, but for
# what is read in /etc alone.
include(GNUInstallDirs)

install(TARGETS cobweave)
get_target_property(movies movies COBWEAVE_FILES)
install(FILES ${movies} DESTINATION ${CMAKE_INSTALL_DATADIR}/cobweave)

set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size 16 22 24 32 48 64 128 256)
    install(FILES ui/icons/cobweave-${size}.png
        DESTINATION ${icons}/${size}x${size}/apps RENAME ${COBWEAVE_ID}.png)
endforeach()
install(FILES ui/icons/cobweave.svg DESTINATION ${icons}/scalable/apps RENAME ${COBWEAVE_ID}.svg)

# Fills in a file of packaging/linux and installs it.
function(install_filled source destination name)
    set(filled ${PROJECT_BINARY_DIR}/packaging/${source})
    configure_file(packaging/linux/${source}.in ${filled} @ONLY)
    install(FILES ${filled} DESTINATION ${destination} RENAME ${name})
endfunction()
set(COBWEAVE_COMMAND ${CMAKE_INSTALL_FULL_BINDIR}/cobweave)
install_filled(launcher.desktop ${CMAKE_INSTALL_DATADIR}/applications ${COBWEAVE_ID}.desktop)
install_filled(metainfo.xml ${CMAKE_INSTALL_DATADIR}/metainfo ${COBWEAVE_ID}.metainfo.xml)
install_filled(bus.service ${CMAKE_INSTALL_DATADIR}/dbus-1/services ${COBWEAVE_ID}.service)
install_filled(autostart.desktop ${CMAKE_INSTALL_FULL_SYSCONFDIR}/xdg/autostart
    ${COBWEAVE_ID}.desktop)
install_filled(cobweave.1 ${CMAKE_INSTALL_MANDIR}/man1 cobweave.1)
install_filled(user.service lib/systemd/user cobweave.service)
install(FILES packaging/linux/firewalld.xml
    DESTINATION lib/firewalld/services RENAME cobweave.xml)
install(FILES packaging/linux/ufw
    DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/ufw/applications.d RENAME cobweave)
