# Builds the example for the client library against an installation, as somebody else's program, and
# calls it.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)

set(work ${BUILD}/tests/install/client)
file(REMOVE_RECURSE ${work})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${work}/prefix)
run(${CMAKE_COMMAND} -S ${SOURCE}/client/example -B ${work}/build -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_PREFIX_PATH=${work}/prefix)
run(${CMAKE_COMMAND} --build ${work}/build)

# expect_failure(TEXT WORD...): the example, called with the words, fails and says the text.
function(expect_failure text)
    execute_process(COMMAND ${work}/build/zoom-to ${ARGN} OUTPUT_VARIABLE output
                    ERROR_VARIABLE errors RESULT_VARIABLE status)
    expect(status EQUAL 1)
    string(LENGTH "${output}" size)
    expect(size EQUAL 0)
    string(FIND "${errors}" "${text}" place)
    expect(place GREATER_EQUAL 0)
endfunction()

expect_failure("Usage: zoom-to HOST")
expect_failure("ZOOMX takes whole numbers" 127.0.0.1 wide)
expect_failure("127.0.0.1:1 is not there yet" 127.0.0.1:1 5)
