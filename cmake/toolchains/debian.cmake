# What the cross builds have in common. The libraries are Debian's packages of the other
# architecture, installed beside this machine's own: their architecture is part of each path.
set(CMAKE_CXX_COMPILER ${CMAKE_LIBRARY_ARCHITECTURE}-g++)
set(CMAKE_AR ${CMAKE_LIBRARY_ARCHITECTURE}-ar CACHE STRING "Archiver for the board")
set(CMAKE_RANLIB ${CMAKE_LIBRARY_ARCHITECTURE}-ranlib CACHE STRING "Indexer of archives for the board")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# Packages of this machine's architecture that lie beside would be taken first, or instead.
set(CMAKE_IGNORE_PREFIX_PATH /usr/local)
