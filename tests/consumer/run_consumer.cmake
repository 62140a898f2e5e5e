# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
file(REMOVE_RECURSE ${WORK_DIR})
set(installed ${WORK_DIR}/installed)
set(prefix ${WORK_DIR}/moved)
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${installed})
# A prefix moved after installing shows that nothing depends on where it was put.
file(RENAME ${installed} ${prefix})

if(TOOL_INSTALLED)
  # Without LD_LIBRARY_PATH the tool finds libKUtil only through its own run path.
  set(ENV{LD_LIBRARY_PATH} "")
  run(${prefix}/bin/kutil --help)
  if(NOT last_output MATCHES "check")
    message(FATAL_ERROR "unexpected kutil --help output: ${last_output}")
  endif()
  run(${prefix}/bin/kutil check ${SAMPLE})
  if(NOT last_output MATCHES "behaviour")
    message(FATAL_ERROR "unexpected kutil check output: ${last_output}")
  endif()
endif()

run(${CMAKE_COMMAND} -S ${PROJECT_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release
  "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)
if(NOT last_output MATCHES "KUtil 1.0.4.401")
  message(FATAL_ERROR "unexpected consumer output: ${last_output}")
endif()
message(STATUS "consumer printed: ${last_output}")
