// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFootPrint.h
/// CKFootPrint: footprint polygons, boundary crossing and movement.
///
/// A footprint is a closed polygon in the horizontal x-z plane (y is carried
/// along, never tested): each vertex starts an edge that runs to the next
/// vertex, the last edge runs back to the first. Every method returns an int
/// status, 1 for success or true and 0 for failure or false; null pointers are
/// rejected with 0 and nothing is written.
#pragma once
#include "KUtilBase.h"

/// Line of an edge in the x-z plane, cached per edge.
typedef struct tagKLineEquation {
  _D3DVECTOR start;  ///< start point of the segment
  _D3DVECTOR end;    ///< end point of the segment
  float gradient;    ///< dz/dx for kind 0; 999.0 for kind 1; 0.001 for kind 2
  float xIntercept;  ///< x where the line meets z = 0 (kind 0) or the constant x (kind 1)
  float constZ;      ///< the constant z of a kind 2 line
  int kind;          ///< 0 general, 1 constant x, 2 constant z, -1 not made
} tagKLineEquation;

/// Plane a*x + b*y + c*z = d through a footprint's vertices.
typedef struct tagKPlaneEquation {
  float d;   ///< right-hand side
  float a;   ///< x coefficient
  float b;   ///< y coefficient
  float c;   ///< z coefficient
  int kind;  ///< -1 unset, 0 vertical, 1 steep, 2 horizontal, 3 sloping
  int made;  ///< 1 once the plane has been made, else 0
} tagKPlaneEquation;

/// Tessellation data the vertex generator attaches to each footprint vertex.
typedef struct tagKTessVertex {
  double u;  ///< texture coordinate across the end plane
  double v;  ///< texture coordinate up the end plane
  float x;   ///< scaled position, x
  float y;   ///< scaled position, y
  float z;   ///< scaled position, z
} tagKTessVertex;

/// A footprint vertex: the start point of an edge and the edge's properties.
typedef struct tagKVertex {
  _D3DVECTOR position;  ///< x, y, z of the edge's start point
  int resist;           ///< resist of the edge; 999 when made
  int sectorAccess;     ///< sector access of the edge; -1 (unset) when made
  int itemAccess;       ///< item access of the edge; -1 (unset) when made
  int property;         ///< property of the edge; 3 when made
  tagKTessVertex tess;  ///< tessellation data; all zero when made
} tagKVertex;

/// A node of a footprint's singly linked edge list; owns its vertex record.
typedef struct tagKEdge {
  tagKVertex* vertex;     ///< the edge's start vertex (owned)
  tagKLineEquation line;  ///< cached line equation from this vertex to the next
  tagKEdge* next;         ///< next edge, null at the tail
} tagKEdge;

/// The last line intersection of a footprint: where and how two lines met.
typedef struct tagKCoincidence {
  _D3DVECTOR point;  ///< the crossing point; y is always 0
  int kind;          ///< 0 one point, 1 coincident, 2 parallel and distinct, -1 unset
} tagKCoincidence;

/// A closed polygon that bounds movement, with edge properties, box, plane and crossing tests.
class KUTIL_API CKFootPrint {
 public:
  /// Does nothing observable; call FPInitialise before anything else.
  CKFootPrint() = default;
  /// Releases the edges still held.
  ~CKFootPrint();
  /// Not copyable: a footprint owns its edges (use FPCopyFrom).
  CKFootPrint(const CKFootPrint&) = delete;
  /// Not assignable: a footprint owns its edges (use FPCopyFrom).
  CKFootPrint& operator=(const CKFootPrint&) = delete;

  // ---- lifecycle and whole-footprint data ----

  /// Empties the footprint (freeing any edges still held) and resets every field. Returns 1.
  int FPInitialise();
  /// Frees every edge and vertex. Returns 1.
  int FPTerminate();
  /// Always 1.
  int FPIsUncorrupted();
  /// Stores the free classification type. Returns 1.
  int FPSetType(int type);
  /// Copies the type out; 0 while it is -1 (unset).
  int FPGetType(int* type);
  /// Stores the centre of gravity. Returns 1.
  int FPSetCentreOfGravity(float x, float y, float z);
  /// Stores the centre of gravity. Returns 1.
  int FPSetCentreOfGravity(const _D3DVECTOR* centre);
  /// Copies the centre of gravity out. Returns 1.
  int FPGetCentreOfGravity(_D3DVECTOR* centre);
  /// Box centre of the vertices (not the area centroid) into out; 0 when the box cannot be made.
  int FPCalcCentreOfGravity(_D3DVECTOR* out);
  /// Hands out a pointer to the stored external vertex (valid while the footprint lives). Returns 1.
  int FPGetExternalVertex(_D3DVECTOR** out);
  /// Copies a point known to lie outside the polygon in. Returns 1.
  int FPSetExternalVertex(const _D3DVECTOR* vertex);
  /// External vertex = box max + (17.3133, 6.550404, 103.00314); 0 without a valid box.
  int FPUpdateExternalVertex();
  /// Sets the clearance: box max.y = top, min.y = bottom, flag 1. Returns 1.
  int FPSetClearance(float top, float bottom);
  /// Copies the clearance out; 0 unless it is valid (flag 1).
  int FPGetClearance(float* top, float* bottom);
  /// Hands out a pointer to the box; 0 unless both its vertical and horizontal extents are valid.
  int FPGetBox(_D3DRMBOX** out);
  /// Box = the given box moved by (dx, dy, dz); both extents become valid. Returns 1.
  int FPSetBox(const _D3DRMBOX* box, float dx, float dy, float dz);
  /// Box = the given box moved by offset; both extents become valid. Returns 1.
  int FPSetBox(const _D3DRMBOX* box, const _D3DVECTOR* offset);
  /// Copies the six floats of src into dst. Returns 1.
  int FPCopyBox(_D3DRMBOX* dst, const _D3DRMBOX* src);
  /// Horizontal extent (x, z) from the vertices, flag 2 added; 0 without vertices. Cursor restored.
  int FPSet2DBoxFromVertices();
  /// Box from all vertices, flags 1 and 2 set; returns the last growth step's result,
  /// so 0 for one vertex (box set nevertheless) and 0 for none. Cursor restored.
  int FPSet3DBoxFromVertices();
  /// Grows the footprint's box to include v. Returns 1.
  int FPUpdate3DBoxFromVertex(const _D3DVECTOR* v);
  /// Grows box to include both corners of other. Returns 1.
  int FPUpdate3DBoxFromBox(_D3DRMBOX* box, const _D3DRMBOX* other);
  /// Centre, box, external vertex, line equations and plane, in that order; 0 at the first failure.
  int FPUpdateVertexDependencies();
  /// Replaces this footprint by a copy of source (item access is deliberately not copied); 0 for null.
  int FPCopyFrom(CKFootPrint* source);

  // ---- vertices and edges ----

  /// Appends a vertex (and the edge it starts) with default properties; 0 on allocation failure.
  int FPAddVertex(float x, float y, float z);
  /// Appends a vertex (and the edge it starts) with default properties; 0 on allocation failure.
  int FPAddVertex(const _D3DVECTOR* v);
  /// Frees every edge; no cursor; vertex count 0. Returns 1.
  int FPDeleteAllEdges();
  /// Removes the current edge; the cursor moves to its successor (none after the tail).
  /// The vertex count is deliberately kept. 0 when nothing is selected.
  int FPDeleteSelectedEdge();
  /// Cursor = first edge; 0 (cursor null) when empty.
  int FPSelectFirstEdge();
  /// Cursor = next edge; 0 at the last edge (cursor kept) or without a cursor.
  int FPSelectNextEdgeNoWrap();
  /// Cursor = previous edge; 0 at the first edge (cursor kept) or without a cursor.
  int FPSelectPreviousEdgeNoWrap();
  /// Cursor = next edge, or the first after the last; 0 without a cursor.
  int FPSelectNextEdgeWrapping();
  /// Cursor = previous edge, or the last when at the first; 0 without a cursor.
  int FPSelectPreviousEdgeWrapping();
  /// 1 iff the cursor is the first edge.
  int FPIsSelectedTheFirst();
  /// Copies the current edge's start vertex out; 0 without a cursor.
  int FPGetEdgeFromVector(_D3DVECTOR* out);
  /// Overwrites the current edge's start vertex; 0 without a cursor.
  int FPUpdateEdgeFromVector(const _D3DVECTOR* in);
  /// Copies the current edge's end (the next vertex, or the first for the last edge) out; 0 without a cursor.
  int FPGetEdgeToVector(_D3DVECTOR* out);
  /// Sets the current edge's resist; 0 without a cursor.
  int FPSetThisEdgeResist(int resist);
  /// Copies the current edge's resist out; 0 without a cursor.
  int FPGetThisEdgeResist(int* resist);
  /// Sets the current edge's sector access; 0 without a cursor.
  int FPSetThisEdgeSectorAccess(int access);
  /// Copies the current edge's sector access out; 0 without a cursor or while unset (-1).
  int FPGetThisEdgeSectorAccess(int* access);
  /// Sets the current edge's item access; 0 without a cursor.
  int FPSetThisEdgeItemAccess(int access);
  /// Copies the current edge's item access out; 0 without a cursor or while unset (-1).
  int FPGetThisEdgeItemAccess(int* access);
  /// Sets the current edge's property; 0 without a cursor.
  int FPSetThisEdgeProperty(int property);
  /// Copies the current edge's property out; 0 without a cursor.
  int FPGetThisEdgeProperty(int* property);
  /// Hands out a pointer to the current edge's cached line equation; 0 without a cursor.
  int FPGetThisEdgeLineEquation(tagKLineEquation** out);
  /// Copies the vertex count out (deliberately not lowered by FPDeleteSelectedEdge). Returns 1.
  int FPGetVertexCount(int* count);
  /// Sets every edge's resist; 0 when empty. Cursor restored.
  int FPSetAllEdgeResist(int resist);
  /// Sets every edge's sector access (deliberately not the item access); 0 when empty. Cursor restored.
  int FPSetAllAccess(int access);
  /// Rebuilds every edge's line equation; 0 when empty. Cursor restored.
  int FPUpdateEdgeLineEquations();
  /// Line equation of the segment start -> end into line (kinds 0, 1, 2). Returns 1.
  int FPMakeLineEquation(tagKLineEquation* line, const _D3DVECTOR* start, const _D3DVECTOR* end);
  /// Copies the ten fields of src into dst. Returns 1.
  int FPCopyLineEquation(const tagKLineEquation* src, tagKLineEquation* dst);
  /// Adds t to every vertex; 1 even when empty. Leaves dependencies stale.
  int FPTranslate(const _D3DVECTOR* t);
  /// Rotates every vertex about the y axis through the origin; 1 even when empty.
  int FPRotateHorizontal(float angle);
  /// Rotates every vertex about the axis (-1, 0, 0) through the origin; 1 even when empty.
  int FPElevate(float angle);
  /// Rotates every vertex about the axis (0, 0, 1) through the origin; 1 even when empty.
  int FPRoll(float angle);
  /// Multiplies every vertex by factor (about the origin); 1 even when empty.
  int FPResize(float factor);

  // ---- plane equations ----

  /// d, a, b, c = 0, kind -1, made 0. Returns 1.
  int FPInitPlaneEquation(tagKPlaneEquation* plane);
  /// 1 iff the footprint's plane has been made.
  int FPIsPlaneEquationInUse();
  /// Hands out a pointer to the footprint's own plane record. Returns 1.
  int FPGetPlaneEquation(tagKPlaneEquation** out);
  /// Plane through three points, with its kind; 0 (kind and made kept) for near-collinear points.
  int FPMakePlaneEquation(tagKPlaneEquation* plane, const _D3DVECTOR* p1, const _D3DVECTOR* p2,
                          const _D3DVECTOR* p3);
  /// Plane through three distinct points picked among four; 0 when no three are distinct.
  int FPMakePlaneEquation(tagKPlaneEquation* plane, const _D3DVECTOR* p1, const _D3DVECTOR* p2,
                          const _D3DVECTOR* p3, const _D3DVECTOR* p4);
  /// Copies the six fields of src into dst. Returns 1.
  int FPCopyPlaneEquation(const tagKPlaneEquation* src, tagKPlaneEquation* dst);
  /// out = (in.x, height of the plane at in, in.z); 0 for a vertical plane or |b| < 0.01.
  int FPSolvePlaneEquation(const tagKPlaneEquation* plane, const _D3DVECTOR* in, _D3DVECTOR* out);
  /// Identical to FPSolvePlaneEquation.
  int FPSolvePlaneEquationBroadly(const tagKPlaneEquation* plane, const _D3DVECTOR* in, _D3DVECTOR* out);
  /// Makes the footprint's plane from its first three or four vertices; resets it (and returns 1)
  /// for fewer than three vertices or a failure. Cursor restored.
  int FPUpdatePlaneEquation();
  /// Horizontal unit vector of a sloping plane, in the sense nearer to reference; 0 unless kind 3.
  int FPGetConstYVector(const tagKPlaneEquation* plane, const _D3DVECTOR* reference, _D3DVECTOR* out);
  /// Unfinished: always 0, writes nothing.
  int FPGetPlaneProjectionOf(const _D3DVECTOR* in, _D3DVECTOR* out);
  /// Unfinished: always 0, writes nothing.
  int FPGetPlaneProjectionOf(const tagKPlaneEquation* plane, const _D3DVECTOR* in, _D3DVECTOR* out);

  // ---- clearance along a step ----

  /// Floor and ceiling along the step from -> to into top->y and bottom->y (only y is written):
  /// the face clearance (mode 2 instead when preferFace and the plane is vertical or steep),
  /// else the box clearance; 0 when neither applies.
  int FPGetClearance(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* top, _D3DVECTOR* bottom,
                     int mode, int preferFace);
  /// Clearance from the plane and the crossing of from -> to (modes 0, 1, 2) into top->y, bottom->y.
  int FPGetFaceClearance(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* top, _D3DVECTOR* bottom,
                         int mode);

  // ---- boundary crossing and movement ----

  /// Intersects lines a and b; 1 when they meet in one point. Kept: crossing point and kind
  /// (0 one point, 1 coincident, 2 parallel with crossing point (0, 0, 0)).
  int FPGetLineIntersection(const tagKLineEquation* a, const tagKLineEquation* b);
  /// 1 if the step ends within 0.3 of an edge, measured square to it between its end points.
  int FPIsBoundaryCrossed(const _D3DVECTOR* position, const _D3DVECTOR* step);
  /// 1 if the segment position -> position + step crosses an edge.
  int FPIsBoundaryCrossedNoMargin(const _D3DVECTOR* position, const _D3DVECTOR* step);
  /// 1 if the segments a1 -> a2 and b1 -> b2 cross (in x-z); the crossing point is kept.
  int FPDoLinesCross(const _D3DVECTOR* a1, const _D3DVECTOR* a2, const _D3DVECTOR* b1, const _D3DVECTOR* b2);
  /// 1 if the segment of line a and the segment b1 -> b2 cross; the crossing point is kept.
  int FPDoLinesCross(const tagKLineEquation* a, const _D3DVECTOR* b1, const _D3DVECTOR* b2);
  /// 1 if the segments of lines a and b cross; the crossing point is kept.
  int FPDoLinesCross(const tagKLineEquation* a, const tagKLineEquation* b);
  /// Copies the last crossing point out. Returns 1.
  int FPGetCrossingPoint(_D3DVECTOR* out);
  /// Copies the kind of the last line intersection out; 0 while unset.
  int FPGetCoincidenceKind(int* kind);
  /// 1 if point is inside (parity of crossings towards the external vertex); needs current dependencies.
  int FPIsPointInside(const _D3DVECTOR* point);
  /// 1 if p and q are on the same side of the boundary (always 1 for two or fewer vertices).
  int FPPointsAreOnTheSameSide(const _D3DVECTOR* p, const _D3DVECTOR* q);
  /// Turns step in place into a slide along the wall edgeStart -> edgeEnd, keeping step.y. Always 1.
  static int FPAdjustTranslation(const _D3DVECTOR* edgeStart, const _D3DVECTOR* edgeEnd, _D3DVECTOR* step);
  /// Sets point->y to the current edge's height at the point; 0 without a cursor.
  int FPUpdateYFromSelectedEdgeCrossing(_D3DVECTOR* point);
  /// Distance from q1 to where p1 -> p2 crosses q1 -> q2 into *out; 0 when they do not cross.
  int FPDistanceToEdge(const _D3DVECTOR* p1, const _D3DVECTOR* p2, const _D3DVECTOR* q1, const _D3DVECTOR* q2,
                       float* out);
  /// 1 if from -> to crosses an edge other than at from or to; out spans the crossing points,
  /// its y range the crossed edges' heights there. out is untouched on 0.
  int FPBoxBoundaryCrossingExclusive(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DRMBOX* out);
  /// As FPBoxBoundaryCrossingExclusive, but crossings at from and to count too.
  int FPBoxBoundaryCrossingInclusive(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DRMBOX* out);
  /// Selects the first edge lying on the line of p0 -> p1 and overlapping it by at least 0.02;
  /// 0 (cursor restored) when there is none.
  int FPSelectCoincidentEdge(const _D3DVECTOR* p0, const _D3DVECTOR* p1);
  /// Horizontal (x-z) distance from point to the nearest point of the current edge into *out;
  /// 0 without a cursor.
  int FPGetEdgeSampleDistance(const _D3DVECTOR* point, float* out);

  /// Initialises a vertex record with the defaults (resist 999, access -1, property 3, zero position
  /// and tessellation data); 0 for null.
  static int FPInitVertex(tagKVertex* vertex);

 private:
  friend struct kutil::detail::Internals<CKFootPrint>;

  /// target = box moved by offset (both corners). Returns 1.
  int FPSetBox(_D3DRMBOX* target, const _D3DRMBOX* box, const _D3DVECTOR* offset);
  /// The box crossing of both forms; inclusive counts crossings at the step's ends.
  int boxCrossing(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DRMBOX* out, bool inclusive);
  /// Clearance mode 0 with the plane solved at `at`: the crossing box grown by that point.
  int solveAtStep(const _D3DVECTOR* at, const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* top,
                  _D3DVECTOR* bottom);

  tagKEdge* m_currentEdge = nullptr;         ///< cursor; null when nothing is selected
  int m_lastStatus = 0;                      ///< result of the last selection or edge access
  int m_vertexCount = 0;                     ///< vertices added since the last FPDeleteAllEdges
  tagKEdge* m_firstEdge = nullptr;           ///< head of the edge list
  _D3DVECTOR m_centreOfGravity = {};         ///< centre of gravity
  _D3DVECTOR m_externalVertex = {};          ///< a point outside the polygon
  tagKCoincidence m_coincidence = {{}, -1};  ///< last line intersection
  int m_boxFlags = 0;                        ///< 1 clearance (y) valid, 2 horizontal extent valid
  _D3DRMBOX m_box = {};                      ///< box; min.y floor and max.y ceiling
  tagKPlaneEquation m_planeEquation = {0.0f, 0.0f, 0.0f, 0.0f, -1, 0};  ///< plane through the vertices
  int m_type = -1;                                                      ///< free classification; -1 unset
};
