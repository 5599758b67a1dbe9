# Builds for 64-bit Windows with Debian's cross compiler and the libraries that scripts/windows/toolchain.sh makes.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(tools /usr/bin/x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${tools}-gcc-posix)
set(CMAKE_CXX_COMPILER ${tools}-g++-posix)
set(CMAKE_RC_COMPILER ${tools}-windres)

# Windows 10, and one file a program. A function that several files hold may be taken from another than the caller's, and
# use registers that the caller's leaves alone: this compiler counts on the latter for this system unless it is told.
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-D_WIN32_WINNT=0x0A00 -DWINVER=0x0A00 -fno-ipa-ra")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_LINK_SEARCH_START_STATIC ON)
set(CMAKE_LINK_SEARCH_END_STATIC ON)

set(cache $ENV{XDG_CACHE_HOME})
if(NOT cache)
  set(cache $ENV{HOME}/.cache)
endif()
set(libraries ${cache}/douisho/windows/libraries)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${libraries})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(APPEND CMAKE_PREFIX_PATH ${libraries})
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/lib/pkgconfig)

# The toolkit's generators run here.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
