# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# Compiler flags shared by every target of the project.

add_library(kutil_options INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(kutil_options INTERFACE -Wall -Wextra
    # identical float results across compilers and platforms
    -ffp-contract=off)
  if(KUTIL_WERROR)
    target_compile_options(kutil_options INTERFACE -Werror)
  endif()
endif()
if(WIN32)
  # the ANSI Win32 API throughout; keep <windows.h> lean
  target_compile_definitions(kutil_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX _CRT_SECURE_NO_WARNINGS)
endif()
if(MINGW)
  # nothing but the DLL/EXE needs copying under Wine
  target_link_options(kutil_options INTERFACE -static-libgcc -static-libstdc++ -static)
endif()
if(KUTIL_BUILD_FUZZ)
  # Everything is instrumented for coverage and checked; only the fuzz
  # executables themselves link libFuzzer's main.
  target_compile_options(kutil_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(kutil_options INTERFACE -fsanitize=address,undefined)
endif()
if(KUTIL_SANITIZE)
  target_compile_options(kutil_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(kutil_options INTERFACE -fsanitize=address,undefined)
endif()
