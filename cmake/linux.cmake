find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
find_package(SQLite3 REQUIRED)
find_package(ZLIB REQUIRED)

set(COBWEAVE_PLATFORM_CORE
    platform/linux/Browser.cpp
    platform/linux/Clock.cpp
    platform/linux/Console.cpp
    platform/linux/EndSignals.cpp
    platform/linux/FileWatch.cpp
    platform/linux/Folders.cpp
    platform/linux/MachineFacts.cpp
    platform/linux/Reactor.cpp
    platform/linux/startProgram.cpp
    platform/linux/systemFiles.cpp
    platform/linux/systemSockets.cpp
    platform/linux/wine/Client.cpp
    platform/linux/wine/Registry.cpp)
set(COBWEAVE_PLATFORM_QT
    platform/linux/Platform.cpp
    platform/linux/TrayHost.cpp
    platform/linux/bus/ApplicationObject.cpp
    platform/linux/bus/BusConnection.cpp
    platform/linux/bus/Launcher.cpp
    platform/linux/bus/MediaPlayer.cpp
    platform/linux/bus/MprisBus.cpp
    platform/linux/bus/StatusNotifierSearch.cpp
    platform/linux/bus/sessionBus.cpp
    platform/linux/x11/Display.cpp
    platform/linux/x11/ForeignWindows.cpp
    platform/linux/x11/MessengerWindows.cpp
    platform/linux/x11/OwnWindows.cpp
    platform/linux/x11/X11Client.cpp
    platform/linux/x11/X11Titles.cpp
    platform/linux/x11/X11WindowList.cpp)
set(COBWEAVE_PLATFORM_LIBRARIES PkgConfig::XCB Qt6::DBus)
