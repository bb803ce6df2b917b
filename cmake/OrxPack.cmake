# Read by CPack before it packs.
if(NOT CPACK_INSTALL_PREFIX STREQUAL "/opt/orx")
    message(FATAL_ERROR "The package is for the prefix /opt/orx, which its units and scripts name, "
                        "and this build is for ${CPACK_INSTALL_PREFIX}.")
endif()
# The package carries the date of its version instead of that of the build, so that the same sources
# make the same package.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    set(ENV{SOURCE_DATE_EPOCH} ${CPACK_ORX_DATE})
endif()
