# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# A usage error is one sentence on standard error and nothing on standard output.
if(NOT err MATCHES "^kutil-view: [^\n]+\\.\n$")
  view_fail("a usage error should be one line on standard error")
endif()
if(NOT out STREQUAL "")
  view_fail("a usage error should print nothing on standard output")
endif()
