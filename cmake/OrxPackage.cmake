# The Debian package: what `cmake --install` lays out below the prefix, and what makes it at home in
# the system: units, user, manual pages, completions and names in the path.
if(NOT ORX_DEBIAN_ARCHITECTURE)
    execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE ORX_DEBIAN_ARCHITECTURE
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        return()  # no Debian, no package
    endif()
endif()

set(ORX_PACKAGE_REVISION "" CACHE STRING "Follows the version in that of the package, such as +1")
set(ORX_PACKAGE_CONTACT "orx maintainers <orx@localhost>" CACHE STRING "Maintainer of the package")

# --- what goes outside of the prefix --------------------------------------------------------------

# Its own component, which only the package takes: `cmake --install` stays below the prefix.
set(ORX_SYSTEM COMPONENT system EXCLUDE_FROM_ALL)
set(documents /usr/share/doc/orx)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(made ${PROJECT_BINARY_DIR}/packaging)

# orx_install_system(DESTINATION FILE...): those of the files that there are.
function(orx_install_system destination)
    foreach(file IN LISTS ARGN)
        if(EXISTS ${file})
            install(FILES ${file} DESTINATION ${destination} ${ORX_SYSTEM})
        endif()
    endforeach()
endfunction()

file(GLOB units CONFIGURE_DEPENDS ${packaging}/systemd/*.service)
orx_install_system(/usr/lib/systemd/system ${units})
orx_install_system(/usr/lib/sysusers.d ${packaging}/sysusers/orx.conf)
orx_install_system(/usr/lib/tmpfiles.d ${packaging}/tmpfiles/orx.conf)
orx_install_system(${documents}/examples ${packaging}/udev/60-orx.rules.example
                   ${packaging}/systemd/network.conf)
orx_install_system(${documents} ${packaging}/debian/copyright)

# orx_install_compressed(FILE DESTINATION): a compressed copy, the same in every build.
set(compressed_files)
macro(orx_install_compressed file destination)
    get_filename_component(name ${file} NAME)
    add_custom_command(OUTPUT ${made}/${name}.gz
                       COMMAND ${CMAKE_COMMAND} -E make_directory ${made}
                       COMMAND gzip --best --no-name --stdout ${file} >${made}/${name}.gz
                       DEPENDS ${file})
    list(APPEND compressed_files ${made}/${name}.gz)
    install(FILES ${made}/${name}.gz DESTINATION ${destination} ${ORX_SYSTEM})
endmacro()

foreach(manual IN LISTS ORX_MANUALS)
    string(REGEX MATCH "[1-8]$" section ${manual})
    orx_install_compressed(${manual} /usr/share/man/man${section})
endforeach()
set(ORX_PACKAGE_VERSION ${PROJECT_VERSION}${ORX_PACKAGE_REVISION})
configure_file(${packaging}/debian/changelog.in ${made}/changelog @ONLY)
orx_install_compressed(${made}/changelog ${documents})
# Side by side as here, so that their links lead somewhere.
file(GLOB guides CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
orx_install_system(${documents} ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
orx_install_system(${documents}/docs ${guides})

if(TARGET orxctl)
    install(FILES ${ORX_COMPLETIONS}/orxctl DESTINATION /usr/share/bash-completion/completions
            ${ORX_SYSTEM})
    install(FILES ${ORX_COMPLETIONS}/_orxctl DESTINATION /usr/share/zsh/vendor-completions
            ${ORX_SYSTEM})
    install(FILES ${ORX_COMPLETIONS}/orxctl.fish DESTINATION /usr/share/fish/vendor_completions.d
            ${ORX_SYSTEM})
endif()

# The programs are found by their names, those of the administrator where his are.
foreach(link IN ITEMS bin/orxctl bin/orxdef bin/orxsim sbin/orx)
    get_filename_component(name ${link} NAME)
    get_filename_component(folder ${link} DIRECTORY)
    if(TARGET ${name})
        file(MAKE_DIRECTORY ${made}/${folder})
        file(CREATE_LINK ${CMAKE_INSTALL_PREFIX}/bin/${name} ${made}/${link} SYMBOLIC)
        install(FILES ${made}/${link} DESTINATION /usr/${folder} ${ORX_SYSTEM})
    endif()
endforeach()
install(FILES ${packaging}/debian/lintian-overrides DESTINATION /usr/share/lintian/overrides
        RENAME orx ${ORX_SYSTEM})

# --- the package ----------------------------------------------------------------------------------

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orx)
set(CPACK_PACKAGE_VERSION ${ORX_PACKAGE_VERSION})
set(CPACK_PACKAGE_CONTACT ${ORX_PACKAGE_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
"It takes short text commands in UDP datagrams and turns them into the bytes
that a projector model expects on its RS-232 line. Lenses that know only one
step up and one step down become axes with absolute positions, calibration
and memory slots.
.
The client orxctl, the compiler of projector definitions orxdef, the
simulated projector orxsim and a client library for C++ come with it.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${ORX_DEBIAN_ARCHITECTURE})
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# For the user and the folders of the service.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "systemd | systemd-standalone-sysusers | systemd-sysusers, \
systemd | systemd-standalone-tmpfiles | systemd-tmpfiles")
set(CPACK_STRIP_FILES ON)
# Staged as `cmake --install` does it, for files both below the prefix and outside of it.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};orx;ALL;/"
                                 "${PROJECT_BINARY_DIR};orx;system;/")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
foreach(script IN ITEMS conffiles postinst prerm postrm)
    list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${packaging}/debian/${script})
endforeach()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(STRINGS ${packaging}/debian/changelog.in date REGEX "^ -- " LIMIT_COUNT 1)
string(REGEX REPLACE ".*  " "" date "${date}")
execute_process(COMMAND date --date=${date} +%s OUTPUT_VARIABLE CPACK_ORX_DATE
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/OrxPack.cmake)
include(CPack)

add_custom_target(packaging ALL DEPENDS ${compressed_files})
