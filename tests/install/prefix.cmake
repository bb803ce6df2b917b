# Configures one prefix, installs below another, and asks the daemon where it looks for its files.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)

set(work ${BUILD}/tests/install/prefix)
file(REMOVE_RECURSE ${work}/configured ${work}/installed)
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${work}/build -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_INSTALL_PREFIX=${work}/configured
    -DORX_BUILD_TOOLS=OFF -DORX_BUILD_TESTS=OFF)
run(${CMAKE_COMMAND} --build ${work}/build)
run(${CMAKE_COMMAND} --install ${work}/build --prefix ${work}/installed)

execute_process(COMMAND ${work}/installed/bin/orx OUTPUT_VARIABLE console RESULT_VARIABLE status)
set(missing "ERROR: projector definition file ${work}/configured/lib/orx.ccd not found\n")
string(FIND "${console}" "${missing}" place)
expect(place GREATER 0)
expect(status EQUAL 1)
