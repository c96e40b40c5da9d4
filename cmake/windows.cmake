# Everything is linked into the program, which then needs nothing but Windows itself.
set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB REQUIRED)

# SQLite's one source. Its warnings are not ours to mend.
enable_language(C)
add_library(sqlite3 STATIC ${COBWEAVE_SQLITE}/sqlite3.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${COBWEAVE_SQLITE})
# A file that another program has opened for itself alone is tried again for a twentieth of a second,
# not for more than one, in which nobody would be served.
target_compile_definitions(sqlite3 PRIVATE SQLITE_WIN32_IOERR_RETRY_DELAY=1)

add_library(SQLite::SQLite3 ALIAS sqlite3)

# What Windows 10 has; without the parts of its headers that nothing here uses; text as UTF-16.
target_compile_definitions(cobweave_warnings INTERFACE
    _WIN32_WINNT=0x0A00 WINVER=0x0A00 NTDDI_VERSION=0x0A000006 WIN32_LEAN_AND_MEAN UNICODE)

set(COBWEAVE_PLATFORM_CORE
    platform/windows/Browser.cpp
    platform/windows/Client.cpp
    platform/windows/Clock.cpp
    platform/windows/Console.cpp
    platform/windows/EndSignals.cpp
    platform/windows/FileWatch.cpp
    platform/windows/Folders.cpp
    platform/windows/ForeignWindows.cpp
    platform/windows/HiddenWindow.cpp
    platform/windows/Launcher.cpp
    platform/windows/MachineFacts.cpp
    platform/windows/MediaPlayer.cpp
    platform/windows/MediaSession.cpp
    platform/windows/OwnWindows.cpp
    platform/windows/Reactor.cpp
    platform/windows/Registry.cpp
    platform/windows/WindowOfClass.cpp
    platform/windows/startProgram.cpp
    platform/windows/systemFiles.cpp
    platform/windows/systemSockets.cpp
    platform/windows/wideText.cpp)
set(COBWEAVE_PLATFORM_CORE_LIBRARIES ole32 runtimeobject shell32 user32 ws2_32)
set(COBWEAVE_PLATFORM_QT
    platform/windows/Display.cpp
    platform/windows/Platform.cpp
    platform/windows/TrayHost.cpp)
set(COBWEAVE_PLATFORM_LIBRARIES)
# The platform of a run without a desktop, which a static Qt does not link by itself.
cmake_language(DEFER CALL qt_import_plugins cobweave INCLUDE Qt6::QOffscreenIntegrationPlugin)

# The icon, whose pictures are those of the window, what the system shows as the program's version,
# and what it is told of the program.
set(icon ${PROJECT_BINARY_DIR}/cobweave.ico)
set(pictures)
foreach(size 16 24 32 48 64 128 256)
    list(APPEND pictures ${PROJECT_SOURCE_DIR}/ui/icons/cobweave-${size}.png)
endforeach()
list(POP_BACK pictures largest)
add_custom_command(
    OUTPUT ${icon}
    COMMAND icotool --create --output=${icon} ${pictures} --raw=${largest}
    DEPENDS ${pictures} ${largest}
    VERBATIM)
configure_file(packaging/windows/cobweave.rc.in ${PROJECT_BINARY_DIR}/cobweave.rc @ONLY)
configure_file(packaging/windows/cobweave.manifest.in ${PROJECT_BINARY_DIR}/cobweave.manifest @ONLY)
set_source_files_properties(${PROJECT_BINARY_DIR}/cobweave.rc PROPERTIES
    OBJECT_DEPENDS "${icon};${PROJECT_BINARY_DIR}/cobweave.manifest")
enable_language(RC)
set(COBWEAVE_PLATFORM_PROGRAM ${PROJECT_BINARY_DIR}/cobweave.rc)

# Nobody reads the names of its functions, which are a third of it, nor the time of its making, which
# would make each build another one.
set(CMAKE_EXE_LINKER_FLAGS_RELEASE "-s -Wl,--no-insert-timestamp")

# What users download.
set(COBWEAVE_SETUP ${PROJECT_BINARY_DIR}/cobweave-${PROJECT_VERSION}-setup.exe)
add_custom_command(
    OUTPUT ${COBWEAVE_SETUP}
    BYPRODUCTS ${PROJECT_BINARY_DIR}/cobweave-${PROJECT_VERSION}-windows.zip
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/windows/package ${PROJECT_BINARY_DIR}
    DEPENDS cobweave movies LICENSE README.md packaging/windows/package packaging/windows/setup.nsi
    VERBATIM)
add_custom_target(downloads DEPENDS ${COBWEAVE_SETUP})
