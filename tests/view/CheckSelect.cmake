# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The recording selects lamp.txt by name; its lamp.kvc turns it by 0.1 on five ticks and pings once.
view_json(name objects 0 name)
view_json(selected objects 0 selected)
view_json(commands objects 0 commands)
view_json(heading objects 0 heading)
view_json(other objects 1 commands)
view_json(request requests 0 text)
if(NOT name STREQUAL "lamp.txt" OR NOT selected)
  view_fail("lamp.txt should be the first object and selected")
endif()
view_between("lamp commands" "${commands}" 6 6)
view_between("lamp heading" "${heading}" -0.501 -0.499)
view_between("other object's commands" "${other}" 0 0)
if(NOT request STREQUAL "lamp selected")
  view_fail("the lamp's PING should be shown as a request, found \"${request}\"")
endif()
