// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Making, finding and freeing the generator's plane, vertex and instruction records.
#pragma once
#include "KVGen.h"

namespace kutil::detail {

/// A new initialised footprint on the heap, or null when it cannot be made.
CKFootPrint* makeFootPrint();
/// Terminates and frees a footprint made by makeFootPrint (null is ignored).
void destroyFootPrint(CKFootPrint* fp);

/// A zeroed plane with normal (0, 0, 1) and a fresh outline, or null.
tagKExtrudePlane* makePlane();
/// Frees a plane with its outline and vertices (null is ignored).
void destroyPlane(tagKExtrudePlane* plane);
/// Frees a whole chain of planes.
void destroyPlaneList(tagKExtrudePlane* plane);

/// A vertex at point, with a face outline when withFaceOutline, or null.
tagKExtrudeVertex* makeVertex(const _D3DVECTOR& point, bool withFaceOutline);
/// Frees a vertex with its face outline (null is ignored).
void destroyVertex(tagKExtrudeVertex* vertex);
/// Appends vertex at the end of plane's list.
void appendVertex(tagKExtrudePlane* plane, tagKExtrudeVertex* vertex);

/// Vertex n of a list, walking while the position is below n (so a negative n gives the head);
/// null when the list ends first.
tagKExtrudeVertex* vertexByNumber(tagKExtrudeVertex* head, int n);
/// Number of the vertex in the list, or -1 when it is not there.
int numberOfVertex(const tagKExtrudeVertex* head, const tagKExtrudeVertex* vertex);
/// Last vertex of a list, or null.
tagKExtrudeVertex* lastVertex(tagKExtrudeVertex* head);
/// Last plane of a chain, or null.
tagKExtrudePlane* lastPlane(tagKExtrudePlane* head);

}  // namespace kutil::detail
