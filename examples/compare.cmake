# Runs PROGRAM, which must succeed and print what the file EXPECTED holds.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed RESULT_VARIABLE result)
file(READ ${EXPECTED} expected)
if(NOT result STREQUAL "0" OR NOT printed STREQUAL expected)
  message(FATAL_ERROR "exit status ${result}, printed:\n${printed}expected:\n${expected}")
endif()
