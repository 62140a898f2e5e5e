# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# A path that does not exist: the program starts in an empty room and reports the missing file.
view_json(count LENGTH objects)
view_between("objects" "${count}" 0 0)
view_json(id messages 0 id)
view_between("message id" "${id}" 112 112)
view_json(frames frames)
view_between(frames "${frames}" 2 2)
