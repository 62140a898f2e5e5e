# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# Installs KUtil into a scratch prefix, moves the prefix elsewhere, runs the
# installed kutil tool from there and builds a tiny outside project against
# the moved package with find_package(KUtil CONFIG REQUIRED).
if(NOT CMAKE_CROSSCOMPILING)
  # A sanitizer-built library needs its runtime in the program that loads it.
  set(consumer_flags "")
  if(KUTIL_SANITIZE)
    set(consumer_flags "-fsanitize=address,undefined")
  endif()
  add_test(NAME consumer.find_package
    COMMAND ${CMAKE_COMMAND}
      -DBUILD_DIR=${PROJECT_BINARY_DIR}
      -DPROJECT_DIR=${CMAKE_CURRENT_LIST_DIR}/project
      -DWORK_DIR=${PROJECT_BINARY_DIR}/consumer-test
      "-DCONSUMER_FLAGS=${consumer_flags}"
      -DTOOL_INSTALLED=$<TARGET_EXISTS:kutil>
      -DSAMPLE=${PROJECT_SOURCE_DIR}/examples/door.kvc
      -P ${CMAKE_CURRENT_LIST_DIR}/run_consumer.cmake)
  set_tests_properties(consumer.find_package PROPERTIES TIMEOUT 300 LABELS consumer)
endif()
