# SPDX-FileCopyrightText: 2026 The KUtil developers
# SPDX-License-Identifier: MIT
# The recording goes to the viewpoint Start (0, 1.6, -4), turns 1.2 rad to the left and walks 100 steps of
# 0.075. It meets the left wall (x = -3.7) at z = -2.68 and slides along it to the end of the walk.
view_json(frames frames)
view_json(inside inside_footprint_frames)
view_json(bumps collisions)
view_json(x camera position 0)
view_json(z camera position 2)
view_json(heading camera heading)
view_between(frames "${frames}" 170 170)
view_between(inside_footprint_frames "${inside}" 0 0)
view_between(collisions "${bumps}" 1 1)
view_between(heading "${heading}" -1.21 -1.19)
# Kept out of the wall by the library's margin of 0.3, no further than the last step beyond it.
view_between("x at the wall" "${x}" -3.40 -3.32)
# Every step kept its part along the wall: -4 + 100 x 0.075 x cos 1.2 = -1.28. Stopping would have left -2.68.
view_between("z along the wall" "${z}" -1.31 -1.25)
