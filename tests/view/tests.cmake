# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# kutil-view: unit tests of its core, and runs of the program under Xvfb with Mesa's software OpenGL,
# checked through its JSON report, its message log and its screenshot.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()  # the viewer is built on Linux only
endif()

# tools/ is configured after tests/, so whether the viewer is built is known only at the end of the
# top-level directory: the tests are added from there. GoogleTest's imported targets are made global
# so that they can be linked from that directory.
foreach(t GTest::gtest GTest::gtest_main)
  if(TARGET ${t})
    get_target_property(imported ${t} IMPORTED)
    if(imported)
      set_target_properties(${t} PROPERTIES IMPORTED_GLOBAL TRUE)
    endif()
  endif()
endforeach()

function(kutil_view_core_tests dir)
  include(GoogleTest)  # its discovery script is named in a variable of the including scope
  add_executable(test_view ${dir}/ObjectsTest.cpp ${dir}/PickingTest.cpp ${dir}/SceneTest.cpp ${dir}/WalkerTest.cpp
    ${dir}/WorldTest.cpp)
  # The core calls into the library's static bundle, so it comes first.
  target_link_libraries(test_view PRIVATE kutil_view_core kutil_internal kutil_test_support GTest::gtest_main)
  target_compile_definitions(test_view PRIVATE KUTIL_VIEW_TEST_DATA="${dir}/data")
  # The settings tests write to a store of their own.
  gtest_discover_tests(test_view DISCOVERY_TIMEOUT 120 PROPERTIES LABELS view TIMEOUT 300
    ENVIRONMENT KUTIL_REGISTRY_DIR=${PROJECT_BINARY_DIR}/view-test/registry)
endfunction()

# kutil_view_run(name [DISPLAY] [CODE n] [CHECK script] ARGS ...): runs the program in a scratch home.
function(kutil_view_run name)
  cmake_parse_arguments(V "DISPLAY" "CODE;CHECK" "ARGS;FIRST_ARGS" ${ARGN})
  set(dir ${PROJECT_SOURCE_DIR}/tests/view)
  set(defs -DVIEW=$<TARGET_FILE:kutil-view> -DWORK=${PROJECT_BINARY_DIR}/view-test/${name} -DDATA=${dir}/data
    -DPNG_COLOURS=$<TARGET_FILE:kutil_view_png_colours>)
  if(V_DISPLAY)
    list(APPEND defs -DXVFB_RUN=${KUTIL_XVFB_RUN})
  endif()
  if(DEFINED V_CODE)
    list(APPEND defs -DEXPECT_CODE=${V_CODE})
  endif()
  if(V_CHECK)
    list(APPEND defs -DCHECK=${dir}/${V_CHECK})
  endif()
  string(REPLACE ";" "\\;" args "${V_ARGS}")
  string(REPLACE ";" "\\;" first "${V_FIRST_ARGS}")
  add_test(NAME view.${name} COMMAND ${CMAKE_COMMAND} ${defs} "-DARGS=${args}" "-DFIRST_ARGS=${first}"
    -P ${dir}/RunView.cmake)
  # One virtual display at a time: the runs are heavy for the software renderer anyway.
  set_tests_properties(view.${name} PROPERTIES LABELS view TIMEOUT 300 SKIP_RETURN_CODE 77
    RESOURCE_LOCK kutil_view_display)
endfunction()

function(kutil_view_tests)
  set(dir ${PROJECT_SOURCE_DIR}/tests/view)
  if(TARGET kutil_view_core)
    kutil_view_core_tests(${dir})
  endif()
  if(NOT TARGET kutil-view)
    return()
  endif()
  add_executable(kutil_view_png_colours ${dir}/PngColours.cpp)
  target_link_libraries(kutil_view_png_colours PRIVATE PkgConfig::CAIRO kutil_options)

  kutil_view_run(help ARGS --help CHECK CheckHelp.cmake)
  kutil_view_run(usage_no_path CODE 2 CHECK CheckUsage.cmake)
  kutil_view_run(usage_bad_frames CODE 2 ARGS @DATA@/wall --frames many CHECK CheckUsage.cmake)
  kutil_view_run(usage_record_and_play CODE 2 ARGS @DATA@/wall --record a.rec --play b.rec CHECK CheckUsage.cmake)

  find_program(KUTIL_XVFB_RUN xvfb-run)
  if(NOT KUTIL_XVFB_RUN)
    message(STATUS "kutil-view: xvfb-run not found, the runs of the program are not tested")
    return()
  endif()
  kutil_view_run(wall_slide DISPLAY CHECK CheckWall.cmake
    ARGS @DATA@/wall --play @DATA@/wall.rec --frames 170 --report @WORK@/report.json)
  kutil_view_run(select_by_name DISPLAY CHECK CheckSelect.cmake
    ARGS @DATA@/select --play @DATA@/select.rec --frames 20 --report @WORK@/report.json)
  kutil_view_run(broken_files DISPLAY CHECK CheckBroken.cmake
    ARGS @DATA@/broken --frames 3 --report @WORK@/report.json --log @WORK@/view.log)
  kutil_view_run(missing_path DISPLAY CHECK CheckMissing.cmake
    ARGS @DATA@/no-such-folder --frames 2 --report @WORK@/report.json --log @WORK@/view.log)
  kutil_view_run(settings_kept DISPLAY CHECK CheckSettings.cmake
    FIRST_ARGS @DATA@/select --frames 1 --size 1000x700 --speed 0.5
    ARGS @DATA@/select --frames 1 --report @WORK@/report.json)
  kutil_view_run(screenshot DISPLAY CHECK CheckScreenshot.cmake
    ARGS @DATA@/kinds --frames 5 --size 1280x800 --screenshot @WORK@/shot.png --report @WORK@/report.json)
endfunction()

cmake_language(DEFER DIRECTORY ${PROJECT_SOURCE_DIR} CALL kutil_view_tests)
