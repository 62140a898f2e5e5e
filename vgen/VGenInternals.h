// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The generator's records and cursors for the helpers of its own sources (the extrusion walks,
// the faces, the end-plane mapping), which work on the planes in place.
#pragma once
#include "KVGen.h"

namespace kutil::detail {

template <>
struct Internals<CKVGen> {
  /// The seed plane (owned by the generator), or null.
  static tagKExtrudePlane* seedPlane(const CKVGen& gen) { return gen.m_seedPlane; }
  /// Head of the generated planes (owned by the generator), or null.
  static tagKExtrudePlane* genPlanes(const CKVGen& gen) { return gen.m_genPlanes; }
  /// The current-plane cursor.
  static tagKExtrudePlane*& currentPlane(CKVGen& gen) { return gen.m_currentPlane; }
  /// The selected vertex of the current plane, or null.
  static tagKExtrudeVertex* selectedGenVertex(const CKVGen& gen) { return gen.m_selectedGenVertex; }
  /// 0 (raw seed normal z >= 0), 1 (z < 0) or -1 (unknown).
  static int& seedOrientation(CKVGen& gen) { return gen.m_seedOrientation; }
  /// The triangulation of the seed, or null.
  static KVTessellation* tessellation(const CKVGen& gen) { return gen.m_tessellation; }
};

}  // namespace kutil::detail
