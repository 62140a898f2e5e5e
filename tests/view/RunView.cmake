# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# Runs kutil-view once in a scratch home (settings, log and XDG folders of its own), under xvfb-run when
# XVFB_RUN is given, then checks its exit status and hands over to the CHECK script.
#   cmake -DVIEW=... -DWORK=... -DDATA=... [-DXVFB_RUN=...] [-DEXPECT_CODE=n] [-DCHECK=...] -DARGS=... -P RunView.cmake
cmake_minimum_required(VERSION 3.25)
if(NOT DEFINED EXPECT_CODE)
  set(EXPECT_CODE 0)
endif()
file(REMOVE_RECURSE ${WORK})
foreach(sub home config state cache data registry)
  file(MAKE_DIRECTORY ${WORK}/${sub})
endforeach()
set(ENV{HOME} ${WORK}/home)
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
set(ENV{XDG_STATE_HOME} ${WORK}/state)
set(ENV{XDG_CACHE_HOME} ${WORK}/cache)
set(ENV{XDG_DATA_HOME} ${WORK}/data)
set(ENV{KUTIL_REGISTRY_DIR} ${WORK}/registry)
set(ENV{LIBGL_ALWAYS_SOFTWARE} 1)
# Under the sanitizers a run with a window is checked for memory errors and undefined behaviour but not
# for leaks: Mesa's driver, SDL, D-Bus and fontconfig keep allocations for the life of the process, and
# the driver is unloaded before the leak report, so its frames cannot even be named in a suppression.
# The viewer's core is leak-checked by its unit tests.
if(XVFB_RUN AND "$ENV{ASAN_OPTIONS}" MATCHES "detect_leaks=1")
  string(REPLACE "detect_leaks=1" "detect_leaks=0" options "$ENV{ASAN_OPTIONS}")
  set(ENV{ASAN_OPTIONS} "${options}")
endif()

# Arguments name the test data and the scratch folder as @DATA@ and @WORK@.
function(resolve_args var)
  set(list "")
  foreach(a IN LISTS ARGN)
    string(REPLACE "@DATA@" "${DATA}" a "${a}")
    string(REPLACE "@WORK@" "${WORK}" a "${a}")
    list(APPEND list "${a}")
  endforeach()
  set(${var} "${list}" PARENT_SCOPE)
endfunction()
resolve_args(args ${ARGS})
resolve_args(first_args ${FIRST_ARGS})
set(display "")
if(XVFB_RUN)
  set(display ${XVFB_RUN} -a -s "-screen 0 1600x1000x24")
endif()
# A first run in the same home, for what one run leaves to the next (settings, viewpoints).
if(first_args)
  execute_process(COMMAND ${display} ${VIEW} ${first_args} WORKING_DIRECTORY ${WORK} RESULT_VARIABLE code
    OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 240)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the first run, kutil-view ${first_args}, exited with ${code}:\n${err}")
  endif()
endif()
execute_process(COMMAND ${display} ${VIEW} ${args} WORKING_DIRECTORY ${WORK} RESULT_VARIABLE code OUTPUT_VARIABLE out
  ERROR_VARIABLE err TIMEOUT 240)
if(NOT "${code}" STREQUAL "${EXPECT_CODE}")
  message(FATAL_ERROR "kutil-view ${args} exited with ${code}, expected ${EXPECT_CODE}.\nstdout:\n${out}\nstderr:\n${err}")
endif()

# Helpers for the checks: a value of the report, and a failure with the run's output.
function(view_fail text)
  message(FATAL_ERROR "${text}\nstdout:\n${out}\nstderr:\n${err}")
endfunction()
# view_json(var [LENGTH] key...): the value at the keys of the report, or with LENGTH its length.
function(view_json var)
  set(mode GET)
  set(keys ${ARGN})
  if(ARGV1 STREQUAL "LENGTH")
    set(mode LENGTH)
    list(REMOVE_AT keys 0)
  endif()
  file(READ ${WORK}/report.json report)
  string(JSON value ERROR_VARIABLE problem ${mode} "${report}" ${keys})
  if(problem)
    view_fail("report.json: ${problem}")
  endif()
  set(${var} "${value}" PARENT_SCOPE)
endfunction()
function(view_between name value low high)
  if(value LESS low OR value GREATER high)
    view_fail("${name} is ${value}, expected between ${low} and ${high}")
  endif()
endfunction()

if(CHECK)
  include(${CHECK})
endif()
