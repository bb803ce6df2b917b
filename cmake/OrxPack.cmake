# Read by CPack before it packs.
if(NOT CPACK_INSTALL_PREFIX STREQUAL "/opt/orx")
    message(FATAL_ERROR "The package is for the prefix /opt/orx, which its units and scripts name, "
                        "and this build is for ${CPACK_INSTALL_PREFIX}.")
endif()
# Folders of the package get the modes that new ones have here.
execute_process(COMMAND sh -c umask OUTPUT_VARIABLE mask OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT mask STREQUAL "0022")
    message(FATAL_ERROR "The folders of the package must be open to all: umask 022 && cpack")
endif()
# The package carries the date of its version instead of that of the build, so that the same sources
# make the same package.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    set(ENV{SOURCE_DATE_EPOCH} ${CPACK_ORX_DATE})
endif()
