// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What the footprint sources share, and the footprint internals the generator reaches: the edge
// cursor it saves around a walk and the kind of the last line intersection, which the
// tessellation reads after every crossing test.
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

template <>
struct Internals<CKFootPrint> {
  /// The edge cursor, for saving and restoring around a walk with the FP selection calls.
  static tagKEdge*& cursor(CKFootPrint& fp) { return fp.m_currentEdge; }
  /// Kind of the last line intersection: 0 one point, 1 coincident, 2 parallel, -1 none yet.
  static int coincidenceKind(const CKFootPrint& fp) { return fp.m_coincidence.kind; }
};

}  // namespace kutil::detail
