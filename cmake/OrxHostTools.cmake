# ORX_RUN_ORXDEF and ORX_RUN_ORXCTL: what a build calls to make the definition file and the
# completions. A cross build cannot call what it builds and takes the same programs from a build for
# this machine.
set(ORX_RUN_ORXDEF orxdef)
set(ORX_RUN_ORXCTL orxctl)
if(NOT CMAKE_CROSSCOMPILING)
    return()
endif()
set(ORX_HOST_TOOLS "" CACHE PATH "Folder of a build for this machine, of the same version")
foreach(tool IN ITEMS orxdef orxctl)
    string(TOUPPER ${tool} name)
    set(ORX_RUN_${name} ${ORX_HOST_TOOLS}/${tool})
    if(NOT EXISTS ${ORX_RUN_${name}})
        message(FATAL_ERROR "A cross build calls ${tool} of a build for this machine: "
                            "cmake --preset release && "
                            "cmake --build --preset release --target orxdef orxctl")
    endif()
endforeach()
