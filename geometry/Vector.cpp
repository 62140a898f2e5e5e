// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Vector, matrix and quaternion maths. Intermediate values are doubles held
// in locals (so every routine is reentrant and tolerates aliased arguments);
// results are rounded to float only when stored.

#include <cmath>

#include "KVector.h"
#include "VectorDetail.h"

using kutil::detail::makeVector;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kEqualTol = 0.001;   // component equality and near-zero tests
constexpr double kOverlapTol = 0.02;  // usable overlap of two edges
constexpr double kPlaneTol = 0.01;    // plane coefficients
constexpr double kOppositeLow = 3.1405926535897932;
constexpr double kOppositeHigh = 3.142592653589793;
constexpr float kZeroAbscissa = 0.0001f;  // stands in for a zero abscissa in headings

struct Vec3 {
  double x, y, z;
};

Vec3 load(const _D3DVECTOR& v) { return {v.x, v.y, v.z}; }

void store(_D3DVECTOR* out, const Vec3& v) {
  out->x = static_cast<float>(v.x);
  out->y = static_cast<float>(v.y);
  out->z = static_cast<float>(v.z);
}

double length(const Vec3& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }

bool strictlyWithin(double v, double low, double high) { return v > low && v < high; }

void setIdentity(tagKFMATRIX* out) {
  for (int i = 0; i < 16; ++i) out->m[i] = (i % 5 == 0) ? 1.0f : 0.0f;
}

void setZero(tagKFMATRIX* out) {
  for (float& e : out->m) e = 0.0f;
}

tagKFQUATERN pureQuaternion(const _D3DVECTOR& v) {
  tagKFQUATERN q;
  q.w = 0.0f;
  q.x = v.x;
  q.y = v.y;
  q.z = v.z;
  return q;
}

// Applies q to p as q * p * q^-1, each product normalised like every
// quaternion product of the library; the vector part of the result.
_D3DVECTOR conjugateBy(const tagKFQUATERN& q, const _D3DVECTOR& p) {
  tagKFQUATERN qi;
  KUQuatInverse(&q, &qi);
  const tagKFQUATERN pure = pureQuaternion(p);
  tagKFQUATERN r;
  KUQuatMultiply(&r, &q, &pure);
  KUQuatMultiply(&r, &r, &qi);
  _D3DVECTOR out;
  out.x = r.x;
  out.y = r.y;
  out.z = r.z;
  return out;
}

}  // namespace

int KUModF(float v, float* out) {
  if (!out) return 0;
  *out = v >= 0.0f ? v : -v;
  return 1;
}

int KUModD(double v, double* out) {
  if (!out) return 0;
  *out = v >= 0.0 ? v : -v;
  return 1;
}

int KUVectorMagnitude(const double* v, double* out) {
  if (!v || !out) return 0;
  *out = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  return 1;
}

int KUVectorMagnitude(const _D3DVECTOR* v, float* out) {
  if (!v || !out) return 0;
  *out = static_cast<float>(length(load(*v)));
  return 1;
}

int KUVectorDotProduct(const double* a, const double* b, double* out) {
  if (!a || !b || !out) return 0;
  *out = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
  return 1;
}

int KUVectorDotProduct(const _D3DVECTOR* a, const _D3DVECTOR* b, float* out) {
  if (!a || !b || !out) return 0;
  const double d =
      static_cast<double>(a->x) * b->x + static_cast<double>(a->y) * b->y + static_cast<double>(a->z) * b->z;
  *out = static_cast<float>(d);
  return 1;
}

namespace {
// Shared by both cross-product overloads: near-null results are refused.
bool crossChecked(const Vec3& a, const Vec3& b, Vec3* out) {
  const Vec3 c{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
  if (strictlyWithin(c.x, -kEqualTol, kEqualTol) && strictlyWithin(c.y, -kEqualTol, kEqualTol) &&
      strictlyWithin(c.z, -kEqualTol, kEqualTol))
    return false;
  *out = c;
  return true;
}
}  // namespace

int KUVectorCrossProduct(const double* a, const double* b, double* out) {
  if (!a || !b || !out) return 0;
  Vec3 c;
  if (!crossChecked({a[0], a[1], a[2]}, {b[0], b[1], b[2]}, &c)) return 0;
  out[0] = c.x;
  out[1] = c.y;
  out[2] = c.z;
  return 1;
}

int KUVectorCrossProduct(const _D3DVECTOR* a, const _D3DVECTOR* b, _D3DVECTOR* out) {
  if (!a || !b || !out) return 0;
  Vec3 c;
  if (!crossChecked(load(*a), load(*b), &c)) return 0;
  store(out, c);
  return 1;
}

int KUVectorNormalise(double* v) {
  if (!v) return 0;
  const double m = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
  if (m == 0.0) return 0;
  const double f = 1.0 / m;
  v[0] *= f;
  v[1] *= f;
  v[2] *= f;
  return 1;
}

int KUVectorNormalise(_D3DVECTOR* v) {
  if (!v) return 0;
  const Vec3 a = load(*v);
  const double m = length(a);
  if (m == 0.0) return 0;
  const double f = 1.0 / m;
  store(v, {a.x * f, a.y * f, a.z * f});
  return 1;
}

int KUVectorSubtract(_D3DVECTOR* out, const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!out || !a || !b) return 0;
  store(out, {static_cast<double>(a->x) - b->x, static_cast<double>(a->y) - b->y,
              static_cast<double>(a->z) - b->z});
  return 1;
}

int KUVectorAdd(_D3DVECTOR* out, const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!out || !a || !b) return 0;
  store(out, {static_cast<double>(a->x) + b->x, static_cast<double>(a->y) + b->y,
              static_cast<double>(a->z) + b->z});
  return 1;
}

int KUVectorScale(_D3DVECTOR* out, const _D3DVECTOR* v, float s) {
  if (!out || !v) return 0;
  const double f = s;
  store(out, {f * v->x, f * v->y, f * v->z});
  return 1;
}

int KUMtxMultiplyVect(const _D3DVECTOR* v, const tagKFMATRIX* M, _D3DVECTOR* out) {
  if (!v || !M || !out) return 0;
  const Vec3 a = load(*v);
  const float* m = M->m;
  double r[3];
  for (int c = 0; c < 3; ++c)
    r[c] = a.x * m[c] + a.y * m[4 + c] + a.z * m[8 + c] + static_cast<double>(m[12 + c]);
  store(out, {r[0], r[1], r[2]});
  return 1;
}

int KUMtxMultiplyVectHomog(const _D3DRMVECTOR4D* v, const tagKFMATRIX* M, _D3DRMVECTOR4D* out) {
  if (!v || !M || !out) return 0;
  const double a[4] = {v->x, v->y, v->z, v->w};
  const float* m = M->m;
  double r[4];
  for (int c = 0; c < 4; ++c) r[c] = a[0] * m[c] + a[1] * m[4 + c] + a[2] * m[8 + c] + a[3] * m[12 + c];
  out->x = static_cast<float>(r[0]);
  out->y = static_cast<float>(r[1]);
  out->z = static_cast<float>(r[2]);
  out->w = static_cast<float>(r[3]);
  return 1;
}

int KUMtxMakeXRot(double angle, tagKFMATRIX* out) {
  if (!out) return 0;
  const float c = static_cast<float>(std::cos(angle));
  const float s = static_cast<float>(std::sin(angle));
  setIdentity(out);
  out->m[5] = c;
  out->m[6] = s;
  out->m[9] = -s;
  out->m[10] = c;
  return 1;
}

int KUMtxMakeYRot(double angle, tagKFMATRIX* out) {
  if (!out) return 0;
  const float c = static_cast<float>(std::cos(angle));
  const float s = static_cast<float>(std::sin(angle));
  setIdentity(out);
  out->m[0] = c;
  out->m[2] = -s;
  out->m[8] = s;
  out->m[10] = c;
  return 1;
}

int KUMtxMakeZRot(double angle, tagKFMATRIX* out) {
  if (!out) return 0;
  const float c = static_cast<float>(std::cos(angle));
  const float s = static_cast<float>(std::sin(angle));
  setIdentity(out);
  out->m[0] = c;
  out->m[1] = s;
  out->m[4] = -s;
  out->m[5] = c;
  return 1;
}

int KUMtxMakeTranslate(const _D3DVECTOR* t, tagKFMATRIX* out) {
  if (!t || !out) return 0;
  const _D3DVECTOR v = *t;  // t may live inside out
  setIdentity(out);
  out->m[12] = v.x;
  out->m[13] = v.y;
  out->m[14] = v.z;
  return 1;
}

// Zero near plane, zero half-height or near = far are not guarded: the
// elements become infinities or NaNs, which callers accept.
int KUMtxMakeFrustrumToView(const _D3DVECTOR* p, tagKFMATRIX* out) {
  if (!p || !out) return 0;
  const double n = p->x, h = p->y, f = p->z;
  setZero(out);
  out->m[0] = out->m[5] = static_cast<float>(n / h);
  out->m[10] = static_cast<float>(f / (f - n));
  out->m[11] = 1.0f;
  out->m[14] = static_cast<float>(-n * f / (f - n));
  return 1;
}

int KUMtxMakeViewToFrustrum(const _D3DVECTOR* p, tagKFMATRIX* out) {
  if (!p || !out) return 0;
  const double n = p->x, h = p->y, f = p->z;
  setZero(out);
  out->m[0] = out->m[5] = static_cast<float>(h / n);
  out->m[11] = static_cast<float>((n - f) / (n * f));
  out->m[14] = 1.0f;
  out->m[15] = static_cast<float>(1.0 / n);
  return 1;
}

int KUQuatCreate(tagKFQUATERN* out, const _D3DVECTOR* axis, float angle) {
  if (!out || !axis) return 0;
  const double half = static_cast<double>(angle) / 2.0;
  const double s = std::sin(half);
  const Vec3 a = load(*axis);
  out->w = static_cast<float>(std::cos(half));
  out->x = static_cast<float>(a.x * s);
  out->y = static_cast<float>(a.y * s);
  out->z = static_cast<float>(a.z * s);
  return 1;
}

// A zero quaternion is not guarded: the result is NaN.
int KUQuatInverse(const tagKFQUATERN* q, tagKFQUATERN* out) {
  if (!q || !out) return 0;
  const double w = q->w, x = q->x, y = q->y, z = q->z;
  const double n = w * w + x * x + y * y + z * z;
  out->w = static_cast<float>(w / n);
  out->x = static_cast<float>(-x / n);
  out->y = static_cast<float>(-y / n);
  out->z = static_cast<float>(-z / n);
  return 1;
}

int KUQuatMultiply(tagKFQUATERN* out, const tagKFQUATERN* a, const tagKFQUATERN* b) {
  if (!out || !a || !b) return 0;
  const double aw = a->w, ax = a->x, ay = a->y, az = a->z;
  const double bw = b->w, bx = b->x, by = b->y, bz = b->z;
  const double w = aw * bw - ax * bx - ay * by - az * bz;
  const double x = aw * bx + bw * ax + ay * bz - az * by;
  const double y = aw * by + bw * ay + az * bx - ax * bz;
  const double z = aw * bz + bw * az + ax * by - ay * bx;
  out->w = static_cast<float>(w);
  out->x = static_cast<float>(x);
  out->y = static_cast<float>(y);
  out->z = static_cast<float>(z);
  return KUQuatNormalise(out);
}

int KUQuatNormalise(tagKFQUATERN* q) {
  if (!q) return 0;
  const double w = q->w, x = q->x, y = q->y, z = q->z;
  const double n = w * w + x * x + y * y + z * z;
  const double f = n > 0.0 ? 1.0 / std::sqrt(n) : 1.0;
  q->w = static_cast<float>(w * f);
  q->x = static_cast<float>(x * f);
  q->y = static_cast<float>(y * f);
  q->z = static_cast<float>(z * f);
  return 1;
}

int KUVectorRotate(_D3DVECTOR* out, const _D3DVECTOR* v, const _D3DVECTOR* axis, float angle) {
  if (!out || !v || !axis) return 0;
  const _D3DVECTOR src = *v;
  double m = length(load(src));
  if (m == 0.0) m = 1.0;
  _D3DVECTOR a = *axis;
  KUVectorNormalise(&a);
  const _D3DVECTOR u = makeVector(src.x / m, src.y / m, src.z / m);
  // Exactly along or against the axis (or null): nothing to turn.
  if (KUIsParallelVector(&u, &a)) {
    *out = src;
    return 1;
  }
  tagKFQUATERN q;
  KUQuatCreate(&q, &a, angle);
  const _D3DVECTOR r = conjugateBy(q, u);
  store(out, {m * r.x, m * r.y, m * r.z});
  return 1;
}

int KUVectorGetRotation(const _D3DVECTOR* from, const _D3DVECTOR* to, _D3DVECTOR* axisOut, double* angleOut,
                        int* kindOut) {
  if (!from || !to || !axisOut || !angleOut || !kindOut) return 0;
  const Vec3 f = load(*from), t = load(*to);
  double c = (f.x * t.x + f.y * t.y + f.z * t.z) / (length(f) * length(t));
  if (c > 1.0) c = 1.0;
  if (c < -1.0) c = -1.0;
  const double theta = std::acos(c);
  if (strictlyWithin(theta, kOppositeLow, kOppositeHigh)) {
    *kindOut = 0;
    return 1;
  }
  if (strictlyWithin(theta, -kEqualTol, kEqualTol)) {
    *kindOut = 1;
    return 1;
  }
  _D3DVECTOR axis;
  if (!KUVectorCrossProduct(from, to, &axis)) return 0;
  KUVectorNormalise(&axis);
  *axisOut = axis;
  _D3DVECTOR r;
  KUVectorRotate(&r, from, &axis, static_cast<float>(theta));
  const bool positive = t.x - kEqualTol < r.x && r.x <= t.x + kEqualTol && t.y - kEqualTol < r.y &&
                        r.y <= t.y + kEqualTol && t.z - kEqualTol < r.z && r.z <= t.z + kEqualTol;
  *angleOut = positive ? theta : -theta;
  *kindOut = 2;
  return 1;
}

// By the law of cosines the expression below is pi minus the angle between a
// and b; callers rely on that supplement. Rounding can push the cosine a hair
// outside [-1, 1]; it is clamped there so that equal directions give pi
// rather than NaN. Null vectors are not guarded and give NaN.
int KUGetAngleBetweenVectors(const _D3DVECTOR* a, const _D3DVECTOR* b, double* out) {
  if (!a || !b || !out) return 0;
  const Vec3 va = load(*a), vb = load(*b);
  const Vec3 d{va.x - vb.x, va.y - vb.y, va.z - vb.z};
  const double la = length(va), lb = length(vb);
  double c = ((d.x * d.x + d.y * d.y + d.z * d.z) - la * la - lb * lb) / (2.0 * la * lb);
  if (c > 1.0) c = 1.0;
  if (c < -1.0) c = -1.0;
  *out = std::acos(c);
  return 1;
}

int KUGetRotationalAngle(float a, float b, double* out) {
  if (!out) return 0;
  if (a == 0.0f) {
    if (b == 0.0f) {
      *out = 0.0;
      return 1;
    }
    a = kZeroAbscissa;
  }
  const double t = std::atan(std::fabs(static_cast<double>(b)) / std::fabs(static_cast<double>(a)));
  // -0.0 counts as not negative, so (-1, -0.0) faces pi like (-1, 0).
  if (b < 0.0f)
    *out = a >= 0.0f ? -t : t - kPi;
  else
    *out = a < 0.0f ? kPi - t : t;
  return 1;
}

int KURotationalAdd(double a, double b, double* out) {
  if (!out) return 0;
  const double s = std::fmod(a + b, 2.0 * kPi);
  if (s < -kPi)
    *out = s + 2.0 * kPi;
  else if (s <= kPi)
    *out = s;
  else
    *out = s - 2.0 * kPi;
  return 1;
}

// Callers ignore the result; it is 0 even though the normal is always written.
int KUMkPlanarNormal(const _D3DVECTOR* p0, const _D3DVECTOR* p1, _D3DVECTOR* out) {
  if (!p0 || !p1 || !out) return 0;
  const double dx = static_cast<double>(p1->x) - p0->x;
  const double dz = static_cast<double>(p1->z) - p0->z;
  store(out, {-dz, 0.0, dx});
  KUVectorNormalise(out);
  return 0;
}

int KUIsSameVector(const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!a || !b) return 0;
  return a->x == b->x && a->y == b->y && a->z == b->z;
}

// Exact on purpose: callers pass unit vectors and want bit-equality.
int KUIsParallelVector(const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!a || !b) return 0;
  if (a->x == b->x && a->y == b->y && a->z == b->z) return 1;
  return a->x == -b->x && a->y == -b->y && a->z == -b->z;
}

int KUIsSameVectorAPPROX(const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!a || !b) return 0;
  const Vec3 va = load(*a), vb = load(*b);
  return strictlyWithin(va.x, vb.x - kEqualTol, vb.x + kEqualTol) &&
         strictlyWithin(va.y, vb.y - kEqualTol, vb.y + kEqualTol) &&
         strictlyWithin(va.z, vb.z - kEqualTol, vb.z + kEqualTol);
}

int KUIsParallelVectorAPPROX(const _D3DVECTOR* a, const _D3DVECTOR* b) {
  if (!a || !b) return 0;
  _D3DVECTOR na = *a, nb = *b;
  KUVectorNormalise(&na);  // a null vector stays as it is
  KUVectorNormalise(&nb);
  const _D3DVECTOR neg = makeVector(-na.x, -na.y, -na.z);
  return KUIsSameVectorAPPROX(&na, &nb) || KUIsSameVectorAPPROX(&neg, &nb);
}

int KUIsUniqueIn(const _D3DVECTOR* p, const _D3DVECTOR* a, const _D3DVECTOR* b, const _D3DVECTOR* c) {
  if (!p || !a || !b || !c) return 0;
  return !KUIsSameVector(p, a) && !KUIsSameVector(p, b) && !KUIsSameVector(p, c);
}

int KUHasArea(const _D3DVECTOR* p0, const _D3DVECTOR* p1, const _D3DVECTOR* p2, const _D3DVECTOR* p3) {
  if (!p0 || !p1 || !p2 || !p3) return 0;
  const int unique = KUIsUniqueIn(p0, p1, p2, p3) + KUIsUniqueIn(p1, p0, p2, p3) +
                     KUIsUniqueIn(p2, p0, p1, p3) + KUIsUniqueIn(p3, p0, p1, p2);
  return unique >= 2;
}

// With a < b the lower bound itself is outside (a < v <= b); with b <= a both
// bounds count. The edge-overlap test below depends on this exact form.
int KUIsBetween(float v, float a, float b) { return (b <= v && v <= a) || (a < v && v <= b); }

int KUIsCoExtensive(const _D3DVECTOR* p0, const _D3DVECTOR* p1, const _D3DVECTOR* q0, const _D3DVECTOR* q1) {
  if (!p0 || !p1 || !q0 || !q1) return 0;
  const bool useX =
      std::fabs(static_cast<double>(p0->x) - p1->x) > std::fabs(static_cast<double>(p0->z) - p1->z);
  const float a0 = useX ? p0->x : p0->z, a1 = useX ? p1->x : p1->z;
  const float b0 = useX ? q0->x : q0->z, b1 = useX ? q1->x : q1->z;
  auto dist = [](float u, float v) { return std::fabs(static_cast<double>(u) - v); };

  if (dist(a0, b0) < kOverlapTol && dist(a1, b1) < kOverlapTol) return 1;
  if (dist(a0, b1) < kOverlapTol && dist(a1, b0) < kOverlapTol) return 1;

  const bool a0InB = KUIsBetween(a0, b0, b1), a1InB = KUIsBetween(a1, b0, b1);
  const bool b0InA = KUIsBetween(b0, a0, a1), b1InA = KUIsBetween(b1, a0, a1);
  if (a0InB && a1InB) return dist(a0, a1) >= kOverlapTol;
  if (b0InA && b1InA) return dist(b0, b1) >= kOverlapTol;

  double overlap;
  if (b0InA && a0InB)
    overlap = dist(a0, b0);
  else if (b0InA && a1InB)
    overlap = dist(a1, b0);
  else if (b1InA && a0InB)
    overlap = dist(a0, b1);
  else if (b1InA && a1InB)
    overlap = dist(a1, b1);
  else
    return 0;
  return overlap >= kOverlapTol;
}

// Capped at 1024 and floored at 16 on purpose: those are the texture sizes
// the renderer accepts.
int KUGetNextPowerUp(int n, int* out) {
  if (!out) return 0;
  int size = 16;
  if (n > 512)
    size = 1024;
  else if (n > 256)
    size = 512;
  else if (n > 128)
    size = 256;
  else if (n > 64)
    size = 128;
  else if (n > 32)
    size = 64;
  else if (n > 16)
    size = 32;
  *out = size;
  return 1;
}

namespace {

// The roll of a frame that looks straight up or down, or whose up or
// forward axis lies along world up or in the horizontal plane; false for any
// other frame. vertical is set to 1 for a frame looking straight up and 0 for
// one looking straight down.
bool axisAlignedRoll(const _D3DVECTOR& d, const _D3DVECTOR& u, const _D3DVECTOR& side, double* roll,
                     int* vertical) {
  if (strictlyWithin(d.y, 0.999, 1.001)) {
    KUGetRotationalAngle(u.z, u.x, roll);
    *roll -= kPi;
    *vertical = 1;
    return true;
  }
  if (strictlyWithin(d.y, -1.001, -0.999)) {
    KUGetRotationalAngle(u.z, u.x, roll);
    *vertical = 0;
    return true;
  }
  if (strictlyWithin(u.y, 0.999, 1.001)) {
    *roll = 0.0;
    return true;
  }
  if (strictlyWithin(u.y, -1.001, -0.999)) {
    *roll = kPi;
    return true;
  }
  if (strictlyWithin(d.y, -kEqualTol, kEqualTol) && strictlyWithin(u.y, -kEqualTol, kEqualTol)) {
    *roll = strictlyWithin(side.y, 0.999, 1.001) ? kPi / 2.0 : -kPi / 2.0;
    return true;
  }
  return false;
}

// The up vector of the frame (d, u) without its roll: the direction of the
// plane through the origin, up and side that leans toward world up. False
// when the frame is degenerate.
bool unrolledUp(const _D3DVECTOR& d, const _D3DVECTOR& u, const _D3DVECTOR& side, _D3DVECTOR* w) {
  // The plane a*x + b*y + c*z = d through the origin, up and side; its normal
  // is up x side, so d is 0.
  const Vec3 up = load(u), sd = load(side);
  const double a = up.y * sd.z - up.z * sd.y;
  const double b = up.z * sd.x - up.x * sd.z;
  const double c = up.x * sd.y - up.y * sd.x;
  const double n = std::sqrt(a * a + b * b + c * c);
  // Up along dir leaves no side axis and so no plane: the frame is degenerate.
  if (n == 0.0) return false;

  if (strictlyWithin(b / n, -kPlaneTol, kPlaneTol)) {
    *w = makeVector(0.0, 1.0, 0.0);
  } else {
    double x = 1.0, z = 1.0;
    if (strictlyWithin(d.x, -kEqualTol, kEqualTol))
      x = 0.0;
    else
      z = static_cast<double>(d.z) / d.x;
    if (strictlyWithin(b, -kPlaneTol, kPlaneTol)) return false;
    *w = makeVector(x, (0.0 - a * x - c * z) / b, z);
    KUVectorNormalise(w);
  }
  if (w->y < 0.0f) *w = makeVector(-w->x, -w->y, -w->z);
  return true;
}

// The roll that turns the unrolled up vector w into the frame's up u about d.
double rollFromUnrolledUp(const _D3DVECTOR& d, const _D3DVECTOR& u, const _D3DVECTOR& w) {
  _D3DVECTOR axis;
  double angle = 0.0;
  // A rotation too small for the cross-product test keeps kind 1 (no roll).
  int kind = 1;
  KUVectorGetRotation(&w, &u, &axis, &angle, &kind);
  if (kind == 0) return kPi;
  if (kind == 1) return 0.0;
  // The sign of the angle depends on the axis found; check it against dir:
  // if turning up by the angle lands on w, the roll is the opposite turn.
  _D3DVECTOR turned;
  KUVectorRotate(&turned, &u, &d, static_cast<float>(angle));
  // Otherwise the angle is kept, even when w is world up standing in for a
  // plane that is only nearly vertical and the kept sign mirrors the roll:
  // hosts have stored frames computed this way.
  return KUIsSameVectorAPPROX(&turned, &w) ? -angle : angle;
}

// Roll of the frame (d, u) (unit copies) about its forward axis, or false
// when the frame is degenerate. vertical is set to 1 for a frame looking
// straight up, 0 for straight down, and left at -1 otherwise.
bool frameRoll(const _D3DVECTOR& d, const _D3DVECTOR& u, double* roll, int* vertical) {
  _D3DVECTOR side = makeVector(0.0, 0.0, 0.0);
  if (KUVectorCrossProduct(&u, &d, &side)) KUVectorNormalise(&side);
  if (axisAlignedRoll(d, u, side, roll, vertical)) return true;
  _D3DVECTOR w;
  if (!unrolledUp(d, u, side, &w)) return false;
  *roll = rollFromUnrolledUp(d, u, w);
  return true;
}

}  // namespace

int KUVectorRotateAgainstFrame(_D3DVECTOR* out, _D3DVECTOR* v, const _D3DVECTOR* dir, const _D3DVECTOR* up,
                               int mode) {
  if (!out || !v || !dir || !up) return 0;
  // An unknown mode is refused before anything, v included, is touched.
  if (mode != 0 && mode != 1) return 0;

  _D3DVECTOR d = *dir, u = *up;
  KUVectorNormalise(&d);
  KUVectorNormalise(&u);

  double roll = 0.0;
  int vertical = -1;
  if (!frameRoll(d, u, &roll, &vertical)) return 0;

  double yaw = 0.0, pitch = 0.0;
  if (vertical == 0) {
    pitch = kPi / 2.0;
  } else if (vertical == 1) {
    pitch = -kPi / 2.0;
  } else {
    KUGetRotationalAngle(d.z, d.x, &yaw);
    double elevation = 0.0;
    const double h = std::sqrt(static_cast<double>(d.x) * d.x + static_cast<double>(d.z) * d.z);
    KUGetRotationalAngle(static_cast<float>(h), d.y, &elevation);
    pitch = -elevation;
  }

  const _D3DVECTOR X = makeVector(1.0, 0.0, 0.0), Y = makeVector(0.0, 1.0, 0.0),
                   Z = makeVector(0.0, 0.0, 1.0);
  tagKFQUATERN q1, q2, q3;
  if (mode == 1) {
    KUQuatCreate(&q1, &Y, static_cast<float>(yaw));
    KUQuatCreate(&q2, &X, static_cast<float>(pitch));
    KUQuatCreate(&q3, &Z, static_cast<float>(roll));
  } else {
    KUQuatCreate(&q1, &Z, static_cast<float>(-roll));
    KUQuatCreate(&q2, &X, static_cast<float>(-pitch));
    KUQuatCreate(&q3, &Y, static_cast<float>(-yaw));
  }
  tagKFQUATERN q;
  KUQuatMultiply(&q, &q1, &q2);
  KUQuatMultiply(&q, &q, &q3);

  // Only the length of v survives into out; v itself is left normalised,
  // which callers rely on.
  const double m = length(load(*v));
  KUVectorNormalise(v);
  const _D3DVECTOR r = conjugateBy(q, *v);
  store(out, {m * r.x, m * r.y, m * r.z});
  return 1;
}
