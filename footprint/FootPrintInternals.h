// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Constants and small helpers shared by the footprint sources.
#pragma once
#include "KFootPrint.h"

namespace kutil::detail {

/// Near-zero, parallel and coincidence tolerance of the x-z tests.
constexpr double kFootTolerance = 0.001;
/// Distance movement keeps from a wall.
constexpr double kBoundaryMargin = 0.3;
/// Tolerance of plane coefficients and normals.
constexpr double kPlaneTolerance = 0.01;

/// End of an edge: the next vertex, or the first vertex for the tail.
inline const tagKVertex* edgeEnd(const tagKEdge* edge, const tagKEdge* first) {
  return edge->next != nullptr ? edge->next->vertex : first->vertex;
}

}  // namespace kutil::detail
