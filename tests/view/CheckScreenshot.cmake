# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The screenshot is a real picture: of the requested size, many colours, and the objects' own colours
# (the panel is grey and blue, so orange, yellow, green and violet come from the solids).
execute_process(COMMAND ${PNG_COLOURS} ${WORK}/shot.png RESULT_VARIABLE code OUTPUT_VARIABLE colours)
if(NOT code EQUAL 0)
  view_fail("the screenshot is no readable PNG picture")
endif()
if(NOT colours MATCHES "size 1280 800\n")
  view_fail("the screenshot should be 1280 x 800:\n${colours}")
endif()
string(REGEX MATCH "colours ([0-9]+)" _ "${colours}")
view_between("distinct colours" "${CMAKE_MATCH_1}" 200 100000000)
foreach(hue orange yellow green violet)
  string(REGEX MATCH "${hue} ([0-9]+)" _ "${colours}")
  view_between("${hue} pixels" "${CMAKE_MATCH_1}" 400 100000000)
endforeach()
