# run(COMMAND...): ends the test where the command fails.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

# expect(CONDITION...): ends the test where the condition does not hold.
macro(expect)
    if(${ARGV})
    else()
        message(FATAL_ERROR "Does not hold: ${ARGV}")
    endif()
endmacro()
