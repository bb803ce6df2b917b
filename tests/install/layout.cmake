# Installs twice below a folder of its own, with an edited configuration the second time.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)

set(prefix ${BUILD}/tests/install/layout)
file(REMOVE_RECURSE ${prefix})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

set(files bin/orx etc/orx.cfg lib/liborx_client.a share/man/man8/orx.8
    share/man/man5/orx.cfg.5 share/man/man5/orx.ccd.5)
foreach(header IN ITEMS Address Client DaemonStatus Request)
    list(APPEND files include/orx/client/${header}.h)
endforeach()
foreach(part IN ITEMS config config-version targets)
    list(APPEND files lib/cmake/orx-client/orx-client-${part}.cmake)
endforeach()
if(WITH_TOOLS)
    list(APPEND files bin/orxdef bin/orxsim lib/orx.ccd share/orx/orx-definition.schema.json
         share/man/man1/orxdef.1 share/man/man1/orxsim.1)
endif()
if(WITH_CLIENT)
    list(APPEND files bin/orxctl share/man/man1/orxctl.1
         share/bash-completion/completions/orxctl share/zsh/site-functions/_orxctl
         share/fish/vendor_completions.d/orxctl.fish)
endif()
foreach(file IN LISTS files)
    expect(EXISTS ${prefix}/${file} AND NOT IS_DIRECTORY ${prefix}/${file})
endforeach()
expect(IS_DIRECTORY ${prefix}/var/run)

file(WRITE ${prefix}/etc/orx.cfg "projector = EDITED\n")
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
file(READ ${prefix}/etc/orx.cfg kept)
expect(kept STREQUAL "projector = EDITED\n")

set(ENV{DESTDIR} ${prefix}/staged)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix /opt/orx)
expect(EXISTS ${prefix}/staged/opt/orx/etc/orx.cfg)
