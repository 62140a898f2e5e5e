# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# --help prints the usage with every option of a run.
foreach(option PATH --record --play --frames --screenshot --report --launch)
  string(FIND "${out}" "${option}" at)
  if(at LESS 0)
    view_fail("--help does not mention ${option}")
  endif()
endforeach()
