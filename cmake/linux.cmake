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
    platform/linux/WineRegistry.cpp)
set(COBWEAVE_PLATFORM_QT
    platform/linux/LinuxDisplay.cpp
    platform/linux/LinuxPlatform.cpp
    platform/linux/MprisBus.cpp
    platform/linux/MprisPlayer.cpp
    platform/linux/MprisPlayers.cpp
    platform/linux/MprisTitle.cpp)
set(COBWEAVE_PLATFORM_LIBRARIES PkgConfig::XCB Qt6::DBus)
