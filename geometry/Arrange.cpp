// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The arrangement grid only keeps values; its user does the placing.

#include "KArrange.h"
#include "VectorDetail.h"

using kutil::detail::makeVector;

namespace {
// Index of each axis in the stored first position (x, z, y order).
constexpr int kX = 0, kZ = 1, kY = 2;
}  // namespace

int CKArrange::CAInitialise() {
  m_itemType = 0;
  m_firstPosition[kX] = 0.0f;
  m_firstPosition[kZ] = -0.4f;
  m_firstPosition[kY] = -0.8f;
  m_direction = makeVector(0.0, 0.0, 1.0);
  m_up = makeVector(0.0, 1.0, 0.0);
  m_deltaOrientation = {0, 0.0f};
  m_deltaTranslation = {12, 1.0f};
  m_rowOrientation = {0, 0.0f};
  m_rowTranslation = {5, 1.0f};
  m_colOrientation = {0, 0.0f};
  m_colTranslation = {2, 1.0f};
  return 1;
}

int CKArrange::CATerminate() { return 1; }

int CKArrange::CASetItemType(int type) {
  m_itemType = type;
  return 1;
}

int CKArrange::CAGetItemType(int* type) {
  if (!type || m_itemType == -1) return 0;
  *type = m_itemType;
  return 1;
}

int CKArrange::CASetFirstPosition(float x, float y, float z) {
  m_firstPosition[kX] = x;
  m_firstPosition[kY] = y;
  m_firstPosition[kZ] = z;
  return 1;
}

int CKArrange::CAGetFirstPosition(float* x, float* y, float* z) {
  if (!x || !y || !z) return 0;
  *x = m_firstPosition[kX];
  *y = m_firstPosition[kY];
  *z = m_firstPosition[kZ];
  return 1;
}

int CKArrange::CASetFirstOrientation(const _D3DVECTOR* direction, const _D3DVECTOR* up) {
  if (!direction || !up) return 0;
  m_direction = *direction;
  m_up = *up;
  return 1;
}

int CKArrange::CAGetFirstOrientation(_D3DVECTOR* direction, _D3DVECTOR* up) {
  if (!direction || !up) return 0;
  *direction = m_direction;
  *up = m_up;
  return 1;
}

namespace {
int getStep(int selector, float amount, int* selectorOut, float* amountOut) {
  if (!selectorOut || !amountOut) return 0;
  *selectorOut = selector;
  *amountOut = amount;
  return 1;
}
}  // namespace

int CKArrange::CASetDeltaOrientation(int selector, float amount) {
  m_deltaOrientation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDeltaOrientation(int* selector, float* amount) {
  return getStep(m_deltaOrientation.selector, m_deltaOrientation.amount, selector, amount);
}

int CKArrange::CASetDeltaTranslation(int selector, float amount) {
  m_deltaTranslation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDeltaTranslation(int* selector, float* amount) {
  return getStep(m_deltaTranslation.selector, m_deltaTranslation.amount, selector, amount);
}

int CKArrange::CASetDRowOrientation(int selector, float amount) {
  m_rowOrientation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDRowOrientation(int* selector, float* amount) {
  return getStep(m_rowOrientation.selector, m_rowOrientation.amount, selector, amount);
}

int CKArrange::CASetDRowTranslation(int selector, float amount) {
  m_rowTranslation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDRowTranslation(int* selector, float* amount) {
  return getStep(m_rowTranslation.selector, m_rowTranslation.amount, selector, amount);
}

int CKArrange::CASetDColOrientation(int selector, float amount) {
  m_colOrientation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDColOrientation(int* selector, float* amount) {
  return getStep(m_colOrientation.selector, m_colOrientation.amount, selector, amount);
}

int CKArrange::CASetDColTranslation(int selector, float amount) {
  m_colTranslation = {selector, amount};
  return 1;
}

int CKArrange::CAGetDColTranslation(int* selector, float* amount) {
  return getStep(m_colTranslation.selector, m_colTranslation.amount, selector, amount);
}
