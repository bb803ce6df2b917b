# Lays out bin/, etc/, lib/ and var/ below the prefix.
install(TARGETS orx RUNTIME DESTINATION bin)
install(DIRECTORY DESTINATION var)
install(DIRECTORY DESTINATION var/run)

# A configuration that someone has edited is never overwritten.
install(CODE "
    set(destination \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/etc\")
    if(EXISTS \"\${destination}/orx.cfg\")
        message(STATUS \"Kept as it is: \${destination}/orx.cfg\")
    else()
        file(INSTALL \"${PROJECT_SOURCE_DIR}/packaging/orx.cfg\" DESTINATION \"\${CMAKE_INSTALL_PREFIX}/etc\")
    endif()")

if(TARGET orxdef)
    install(TARGETS orxdef RUNTIME DESTINATION bin)
    install(FILES ${ORX_DEFINITION_FILE} DESTINATION lib)
    install(FILES ${PROJECT_SOURCE_DIR}/definitions/orx-definition.schema.json
            DESTINATION share/orx)
endif()
if(TARGET orxsim)
    install(TARGETS orxsim RUNTIME DESTINATION bin)
endif()
if(TARGET orxctl)
    install(TARGETS orxctl RUNTIME DESTINATION bin)
    install(FILES ${ORX_COMPLETIONS}/orxctl DESTINATION share/bash-completion/completions)
    install(FILES ${ORX_COMPLETIONS}/_orxctl DESTINATION share/zsh/site-functions)
    install(FILES ${ORX_COMPLETIONS}/orxctl.fish DESTINATION share/fish/vendor_completions.d)
endif()

# The manual pages say which version they are for.
file(GLOB manuals CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.[1-8])
set(ORX_MANUALS)
foreach(manual IN LISTS manuals)
    get_filename_component(name ${manual} NAME)
    string(REGEX MATCH "[1-8]$" section ${name})
    configure_file(${manual} ${PROJECT_BINARY_DIR}/man/${name} @ONLY)
    list(APPEND ORX_MANUALS ${PROJECT_BINARY_DIR}/man/${name})
    install(FILES ${PROJECT_BINARY_DIR}/man/${name} DESTINATION share/man/man${section})
endforeach()

# What another program needs to talk to daemons: find_package(orx-client).
include(CMakePackageConfigHelpers)
install(TARGETS orx_client EXPORT orx-client-targets ARCHIVE DESTINATION lib)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/client/include/ DESTINATION include)
install(EXPORT orx-client-targets NAMESPACE orx:: DESTINATION lib/cmake/orx-client)
write_basic_package_version_file(orx-client-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_SOURCE_DIR}/client/orx-client-config.cmake
              ${PROJECT_BINARY_DIR}/orx-client-config-version.cmake
        DESTINATION lib/cmake/orx-client)
