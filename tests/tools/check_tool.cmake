# Runs one tool with COMMAND (a list): it must exit with STATUS, and what it says (standard
# output for status 0, standard error otherwise) must match MESSAGE, stay short, and carry no
# control byte a terminal would act on.
execute_process(COMMAND ${COMMAND} INPUT_FILE /dev/null RESULT_VARIABLE status
                OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(STATUS EQUAL 0)
  set(said "${out}")
else()
  set(said "${err}")
endif()
string(LENGTH "${err}" length)
if(NOT status STREQUAL STATUS OR NOT said MATCHES "${MESSAGE}" OR length GREATER 1000)
  message(FATAL_ERROR "status ${status} (expected ${STATUS}), ${length} bytes on standard error;"
                      " expected a message matching '${MESSAGE}'\nout: ${out}\nerr: ${err}")
endif()
foreach(code 1 7 8 27 127)
  string(ASCII ${code} byte)
  string(FIND "${out}${err}" "${byte}" at)
  if(at GREATER -1)
    message(FATAL_ERROR "byte ${code} written raw: ${err}")
  endif()
endforeach()
