# Runs widl and fails on any complaint: what it only warns about makes members that cannot be read back.
# usage: cmake -DCOMMAND="widl;…" -P run_widl.cmake
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(status OR said)
    message(FATAL_ERROR "${said}")
endif()
