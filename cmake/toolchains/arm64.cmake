# Builds on amd64 for boards with 64-bit ARM processors, with Debian's cross compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(ORX_DEBIAN_ARCHITECTURE arm64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
