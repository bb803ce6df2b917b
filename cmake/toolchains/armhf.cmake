# Builds on amd64 for boards with 32-bit ARM processors and hardware floating point, with Debian's
# cross compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(ORX_DEBIAN_ARCHITECTURE armhf)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
