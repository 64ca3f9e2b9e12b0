# What the executable shows the dynamic loader: the libraries that modules may count on, and nothing to bind to.

execute_process(COMMAND ${READELF} -d ${LAUNCHER} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${NM} -D --defined-only ${LAUNCHER} OUTPUT_VARIABLE exports COMMAND_ERROR_IS_FATAL ANY)

foreach(library libm libstdc\\+\\+ libc)
  if(NOT dynamic MATCHES "NEEDED[^\n]*\\[${library}\\.so")
    message(SEND_ERROR "${library} is not among the needed libraries:\n${dynamic}")
  endif()
endforeach()
if(dynamic MATCHES "R(UN)?PATH")
  message(SEND_ERROR "The executable has a library search path of its own:\n${dynamic}")
endif()
if(NOT dynamic MATCHES "BIND_NOW")
  message(SEND_ERROR "Functions are looked up when first called, which may be in the signal handler:\n${dynamic}")
endif()
if(NOT exports STREQUAL "")
  message(SEND_ERROR "The executable exports symbols:\n${exports}")
endif()
