# find_package(orx-client) gives the target orx::client.
include(${CMAKE_CURRENT_LIST_DIR}/orx-client-targets.cmake)
