find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)

set(COBWEAVE_PLATFORM_CORE
    platform/linux/EndSignals.cpp
    platform/linux/EpollNetwork.cpp
    platform/linux/EpollSocket.cpp
    platform/linux/LinuxBrowser.cpp
    platform/linux/LinuxClock.cpp
    platform/linux/LinuxAtomicFile.cpp
    platform/linux/LinuxFolders.cpp
    platform/linux/LinuxMachineFacts.cpp
    platform/linux/Reactor.cpp
    platform/linux/WineClient.cpp
    platform/linux/WineRegistry.cpp
    platform/linux/startProgram.cpp)
set(COBWEAVE_PLATFORM_QT
    platform/linux/LinuxDisplay.cpp
    platform/linux/LinuxPlatform.cpp
    platform/linux/LinuxTrayHost.cpp
    platform/linux/MessengerWindow.cpp
    platform/linux/MessengerWindows.cpp
    platform/linux/MprisBus.cpp
    platform/linux/MprisPlayer.cpp
    platform/linux/MprisPlayers.cpp
    platform/linux/MprisTitle.cpp
    platform/linux/StatusNotifierSearch.cpp
    platform/linux/X11Atoms.cpp
    platform/linux/X11Connection.cpp
    platform/linux/X11ForeignWindows.cpp
    platform/linux/X11OwnWindows.cpp
    platform/linux/X11Title.cpp
    platform/linux/X11TopMost.cpp
    platform/linux/X11WindowList.cpp
    platform/linux/sessionBus.cpp
    platform/linux/x11OwnWindow.cpp
    platform/linux/x11Properties.cpp)
set(COBWEAVE_PLATFORM_LIBRARIES PkgConfig::XCB Qt6::DBus)
