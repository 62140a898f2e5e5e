# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The first run set the window size and the walking speed; the second run found them in the store.
view_json(width window 0)
view_json(height window 1)
view_json(speed walk_speed)
view_between(width "${width}" 1000 1000)
view_between(height "${height}" 700 700)
view_between("walking speed" "${speed}" 0.499 0.501)
