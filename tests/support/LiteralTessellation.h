// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The seed tessellation done the slow, step-by-step way (every chord's
// crossings re-counted after each removal), kept as the reference the
// library's engine must match triangle for triangle; plus the seed shapes the
// tests and benchmarks feed to both.
#pragma once
#include <array>
#include <cstdint>
#include <vector>

#include "KUtilBase.h"

namespace kutil::test {

/// A triangle as three ascending seed vertex numbers.
using Triple = std::array<int, 3>;

/// Tessellates seed (drawn in the x-y plane) by re-counting every chord's
/// crossings after each removal. Returns 1 with the triangles in the order
/// found, 0 on failure (triangles then empty).
int literalTessellate(const std::vector<_D3DVECTOR>& seed, std::vector<Triple>* triangles);

/// Regular polygon of n vertices on a circle of the given radius, counter-clockwise, starting at angle phase.
std::vector<_D3DVECTOR> convexSeed(int n, float radius = 10.0f, double phase = 0.0);
/// Convex polygon whose vertices sit at seeded random angles on an ellipse.
std::vector<_D3DVECTOR> jitteredConvexSeed(int n, std::uint32_t seed);
/// Star of the given number of points, alternating outer and inner radius.
std::vector<_D3DVECTOR> starSeed(int points, float outer = 10.0f, float inner = 4.0f);
/// L-shape 0..w by 0..h with the notch cut above y = t and right of x = t; each edge split into parts.
std::vector<_D3DVECTOR> lShapeSeed(float w, float h, float t, int parts = 1);
/// Comb with the given number of teeth along the top of a bar.
std::vector<_D3DVECTOR> combSeed(int teeth);
/// Axis-aligned square of the given side with perSide collinear vertices on every side (corners included
/// once).
std::vector<_D3DVECTOR> collinearSquareSeed(int perSide, float side = 8.0f);
/// Seeded random simple polygon: star-shaped about the origin, random radii at sorted random angles.
std::vector<_D3DVECTOR> randomSimpleSeed(int n, std::uint32_t seed);
/// The globe's seed: rings + 1 vertices on a half circle in the y-z plane (as the globe builder makes it).
std::vector<_D3DVECTOR> globeSeed(int rings, float radius);
/// The same half circle drawn in the x-y plane.
std::vector<_D3DVECTOR> halfDiscSeed(int rings, float radius);
/// The seed in reverse vertex order.
std::vector<_D3DVECTOR> reversedSeed(std::vector<_D3DVECTOR> seed);

}  // namespace kutil::test
