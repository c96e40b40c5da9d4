find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)

set(COBWEAVE_PLATFORM_CORE
    platform/linux/EndSignals.cpp
    platform/linux/EpollNetwork.cpp
    platform/linux/EpollSocket.cpp
    platform/linux/LinuxFolders.cpp
    platform/linux/LinuxMachineFacts.cpp
    platform/linux/Reactor.cpp
    platform/linux/WineRegistry.cpp)
set(COBWEAVE_PLATFORM_QT
    platform/linux/LinuxDisplay.cpp
    platform/linux/LinuxPlatform.cpp)
set(COBWEAVE_PLATFORM_LIBRARIES PkgConfig::XCB)
