// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KVector.h
/// Vectors, matrices and quaternions on Direct3D records.
///
/// All angles are radians. Every function returns 1 for success or true and
/// 0 for failure or false (KUMkPlanarNormal deliberately returns 0). Vectors
/// are row vectors multiplied on the left of a matrix (v * M). Null pointers
/// are rejected with 0 and nothing is written.
#pragma once
#include "KUtilBase.h"

/// A 4x4 float matrix, row-major: element M[r][c] at m[4*r+c]; translation in row 3.
typedef struct tagKFMATRIX {
  float m[16];  ///< the sixteen elements, row by row
} tagKFMATRIX;

/// A quaternion: scalar part w, then the vector part x, y, z.
typedef struct tagKFQUATERN {
  float w;  ///< scalar part
  float x;  ///< vector part, x
  float y;  ///< vector part, y
  float z;  ///< vector part, z
} tagKFQUATERN;

/// Absolute value of a float into *out. Always 1 (0 only for a null out).
KUTIL_API int KUModF(float v, float* out);
/// Absolute value of a double into *out. Always 1 (0 only for a null out).
KUTIL_API int KUModD(double v, double* out);

/// Length of the double triple v into *out. Always 1.
KUTIL_API int KUVectorMagnitude(const double* v, double* out);
/// Length of v into *out. Always 1.
KUTIL_API int KUVectorMagnitude(const _D3DVECTOR* v, float* out);

/// Dot product of the double triples a and b into *out. Always 1.
KUTIL_API int KUVectorDotProduct(const double* a, const double* b, double* out);
/// Dot product of a and b into *out. Always 1.
KUTIL_API int KUVectorDotProduct(const _D3DVECTOR* a, const _D3DVECTOR* b, float* out);

/// Cross product a x b of double triples into out; 0 with out untouched when every component is within
/// +-0.001.
KUTIL_API int KUVectorCrossProduct(const double* a, const double* b, double* out);
/// Cross product a x b into out; 0 with out untouched when every component is within +-0.001.
KUTIL_API int KUVectorCrossProduct(const _D3DVECTOR* a, const _D3DVECTOR* b, _D3DVECTOR* out);

/// Normalises the double triple v in place; 0 and unchanged when its length is exactly 0.
KUTIL_API int KUVectorNormalise(double* v);
/// Normalises v in place; 0 and unchanged when its length is exactly 0.
KUTIL_API int KUVectorNormalise(_D3DVECTOR* v);

/// out = a - b. Always 1.
KUTIL_API int KUVectorSubtract(_D3DVECTOR* out, const _D3DVECTOR* a, const _D3DVECTOR* b);
/// out = a + b. Always 1.
KUTIL_API int KUVectorAdd(_D3DVECTOR* out, const _D3DVECTOR* a, const _D3DVECTOR* b);
/// out = s * v. Always 1.
KUTIL_API int KUVectorScale(_D3DVECTOR* out, const _D3DVECTOR* v, float s);

/// out = (v, 1) * M, keeping the first three columns; no division by w. Always 1.
KUTIL_API int KUMtxMultiplyVect(const _D3DVECTOR* v, const tagKFMATRIX* M, _D3DVECTOR* out);
/// out = v * M for a homogeneous row vector. Always 1.
KUTIL_API int KUMtxMultiplyVectHomog(const _D3DRMVECTOR4D* v, const tagKFMATRIX* M, _D3DRMVECTOR4D* out);

/// Rotation about x by angle into out (M[1][2] = sin). Always 1.
KUTIL_API int KUMtxMakeXRot(double angle, tagKFMATRIX* out);
/// Rotation about y by angle into out (M[2][0] = sin). Always 1.
KUTIL_API int KUMtxMakeYRot(double angle, tagKFMATRIX* out);
/// Rotation about z by angle into out (M[0][1] = sin). Always 1.
KUTIL_API int KUMtxMakeZRot(double angle, tagKFMATRIX* out);
/// Translation by t into out (identity with row 3 = (tx, ty, tz, 1)). Always 1.
KUTIL_API int KUMtxMakeTranslate(const _D3DVECTOR* t, tagKFMATRIX* out);
/// Perspective projection for p = (near, half-height at near, far) into out. Always 1.
KUTIL_API int KUMtxMakeFrustrumToView(const _D3DVECTOR* p, tagKFMATRIX* out);
/// The exact inverse of KUMtxMakeFrustrumToView for the same p, into out. Always 1.
KUTIL_API int KUMtxMakeViewToFrustrum(const _D3DVECTOR* p, tagKFMATRIX* out);

/// Quaternion for a rotation by angle about axis (used as given, not normalised). Always 1.
KUTIL_API int KUQuatCreate(tagKFQUATERN* out, const _D3DVECTOR* axis, float angle);
/// Inverse of q into out; a zero quaternion gives infinities or NaNs. Always 1.
KUTIL_API int KUQuatInverse(const tagKFQUATERN* q, tagKFQUATERN* out);
/// Normalised Hamilton product out = a * b; returns KUQuatNormalise's result.
KUTIL_API int KUQuatMultiply(tagKFQUATERN* out, const tagKFQUATERN* a, const tagKFQUATERN* b);
/// Scales q to unit length in place (a zero quaternion is left as it is). Always 1.
KUTIL_API int KUQuatNormalise(tagKFQUATERN* q);

/// Rotates v about axis by angle into out; a v along the axis (or null) is copied unchanged. Always 1.
KUTIL_API int KUVectorRotate(_D3DVECTOR* out, const _D3DVECTOR* v, const _D3DVECTOR* axis, float angle);
/// Rotates v between the frame (dir, up) and world axes: mode 1 frame to world,
/// mode 0 world to frame. v is normalised in place as a side effect.
/// Returns 0 for another mode or an unsolvable roll plane, out then untouched.
KUTIL_API int KUVectorRotateAgainstFrame(_D3DVECTOR* out, _D3DVECTOR* v, const _D3DVECTOR* dir,
                                         const _D3DVECTOR* up, int mode);
/// Axis and signed angle turning from into to; *kindOut is 0 (opposite), 1 (same) or 2 (axis and angle
/// written). Returns 0 when the cross product is near null.
KUTIL_API int KUVectorGetRotation(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* axisOut,
                                  double* angleOut, int* kindOut);
/// Supplement of the angle between a and b (pi for equal directions) into *out. Always 1.
KUTIL_API int KUGetAngleBetweenVectors(const _D3DVECTOR* a, const _D3DVECTOR* b, double* out);
/// Heading atan2(b, a) of the point (a, b) into *out, a zero a replaced by 0.0001. Always 1.
KUTIL_API int KUGetRotationalAngle(float a, float b, double* out);
/// a + b wrapped into [-pi, pi] into *out. Always 1.
KUTIL_API int KURotationalAdd(double a, double b, double* out);
/// Horizontal unit normal of the segment p0 -> p1 into out. Deliberately returns 0.
KUTIL_API int KUMkPlanarNormal(const _D3DVECTOR* p0, const _D3DVECTOR* p1, _D3DVECTOR* out);

/// 1 iff a and b are exactly equal.
KUTIL_API int KUIsSameVector(const _D3DVECTOR* a, const _D3DVECTOR* b);
/// 1 iff a equals b or -b exactly (no tolerance, no scaling).
KUTIL_API int KUIsParallelVector(const _D3DVECTOR* a, const _D3DVECTOR* b);
/// 1 iff every component of a lies strictly within 0.001 of b's.
KUTIL_API int KUIsSameVectorAPPROX(const _D3DVECTOR* a, const _D3DVECTOR* b);
/// 1 iff a and b point the same or opposite ways within 0.001 after normalising.
KUTIL_API int KUIsParallelVectorAPPROX(const _D3DVECTOR* a, const _D3DVECTOR* b);
/// 1 iff p is exactly equal to none of a, b, c.
KUTIL_API int KUIsUniqueIn(const _D3DVECTOR* p, const _D3DVECTOR* a, const _D3DVECTOR* b,
                           const _D3DVECTOR* c);
/// 1 iff at least two of the four points are unique among the other three.
KUTIL_API int KUHasArea(const _D3DVECTOR* p0, const _D3DVECTOR* p1, const _D3DVECTOR* p2,
                        const _D3DVECTOR* p3);
/// 1 iff v lies in the closed interval between a and b, bounds in either order.
KUTIL_API int KUIsBetween(float v, float a, float b);
/// 1 iff the collinear edges p0-p1 and q0-q1 overlap by at least 0.02.
KUTIL_API int KUIsCoExtensive(const _D3DVECTOR* p0, const _D3DVECTOR* p1, const _D3DVECTOR* q0,
                              const _D3DVECTOR* q1);
/// Texture size for n into *out: the next power of two from 16 up to 1024 (capped). Always 1.
KUTIL_API int KUGetNextPowerUp(int n, int* out);
