# One interface target carries the language level, the warnings and the instrumentation.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(CMAKE_CXX_FLAGS_RELEASE STREQUAL "-O3 -DNDEBUG")
    # The default; the third level makes the daemon larger, and no faster.
    set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
endif()

find_package(Threads REQUIRED)

add_library(orx_options INTERFACE)
target_compile_options(orx_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
target_link_libraries(orx_options INTERFACE Threads::Threads)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Its optimiser sees an overlap in every "text" + std::string (GCC bug 105651).
    target_compile_options(orx_options INTERFACE -Wno-restrict)
endif()

# A board that is bought today is still at work in 2038, when seconds no longer fit 32 bits.
set(ORX_SYSTEM_CALLS "")
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(ORX_SYSTEM_CALLS _TIME_BITS=64 _FILE_OFFSET_BITS=64)
endif()
target_compile_definitions(orx_options INTERFACE ${ORX_SYSTEM_CALLS})

if(ORX_SANITIZE)
    # A report needs lines and no more; full debug information takes minutes to compile and link.
    target_compile_options(orx_options INTERFACE
        -fsanitize=${ORX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
    target_link_options(orx_options INTERFACE -fsanitize=${ORX_SANITIZE})
endif()
if(ORX_COVERAGE)
    target_compile_options(orx_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(orx_options INTERFACE --coverage)
endif()
