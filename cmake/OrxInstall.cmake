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
