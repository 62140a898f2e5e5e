# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The shared library's export table holds the API and nothing of the internals.
if(WIN32)
  find_program(KUTIL_OBJDUMP NAMES x86_64-w64-mingw32-objdump objdump)
  find_program(KUTIL_CXXFILT NAMES x86_64-w64-mingw32-c++filt c++filt)
  set(mode pe)
else()
  find_program(KUTIL_OBJDUMP NAMES nm)
  find_program(KUTIL_CXXFILT NAMES c++filt)
  set(mode elf)
endif()
if(KUTIL_OBJDUMP AND KUTIL_CXXFILT)
  add_test(NAME exports.api_only
    COMMAND ${CMAKE_COMMAND} -DMODE=${mode} -DTOOL=${KUTIL_OBJDUMP} -DCXXFILT=${KUTIL_CXXFILT}
      -DLIBRARY=$<TARGET_FILE:KUtil> -DREQUIRED_FILE=${CMAKE_CURRENT_LIST_DIR}/required.txt
      -P ${CMAKE_CURRENT_LIST_DIR}/check_exports.cmake)
  set_tests_properties(exports.api_only PROPERTIES LABELS exports)
endif()
