// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "VGenRecords.h"

#include <new>

namespace kutil::detail {

CKFootPrint* makeFootPrint() {
  CKFootPrint* fp = new (std::nothrow) CKFootPrint();
  if (fp == nullptr) return nullptr;
  if (fp->FPInitialise() == 0) {
    delete fp;
    return nullptr;
  }
  return fp;
}

void destroyFootPrint(CKFootPrint* fp) {
  if (fp == nullptr) return;
  fp->FPTerminate();
  delete fp;
}

tagKExtrudePlane* makePlane() {
  tagKExtrudePlane* plane = new (std::nothrow) tagKExtrudePlane();
  if (plane == nullptr) return nullptr;
  plane->normal.z = 1.0f;
  plane->outline = makeFootPrint();
  if (plane->outline == nullptr) {
    delete plane;
    return nullptr;
  }
  return plane;
}

void destroyPlane(tagKExtrudePlane* plane) {
  if (plane == nullptr) return;
  tagKExtrudeVertex* v = plane->vertices;
  while (v != nullptr) {
    tagKExtrudeVertex* next = v->next;
    destroyVertex(v);
    v = next;
  }
  destroyFootPrint(plane->outline);
  delete plane;
}

void destroyPlaneList(tagKExtrudePlane* plane) {
  while (plane != nullptr) {
    tagKExtrudePlane* next = plane->next;
    destroyPlane(plane);
    plane = next;
  }
}

tagKExtrudeVertex* makeVertex(const _D3DVECTOR& point, bool withFaceOutline) {
  tagKExtrudeVertex* v = new (std::nothrow) tagKExtrudeVertex();
  if (v == nullptr) return nullptr;
  if (CKFootPrint::FPInitVertex(&v->point) == 0) {
    delete v;
    return nullptr;
  }
  v->point.position = point;
  if (withFaceOutline) {
    v->faceOutline = makeFootPrint();
    if (v->faceOutline == nullptr) {
      delete v;
      return nullptr;
    }
  }
  return v;
}

void destroyVertex(tagKExtrudeVertex* vertex) {
  if (vertex == nullptr) return;
  destroyFootPrint(vertex->faceOutline);
  delete vertex;
}

void appendVertex(tagKExtrudePlane* plane, tagKExtrudeVertex* vertex) {
  vertex->next = nullptr;
  if (plane->vertices == nullptr) {
    plane->vertices = vertex;
    return;
  }
  lastVertex(plane->vertices)->next = vertex;
}

tagKExtrudeVertex* vertexByNumber(tagKExtrudeVertex* head, int n) {
  int i = 0;
  tagKExtrudeVertex* v = head;
  while (v != nullptr && i < n) {
    v = v->next;
    ++i;
  }
  return v;
}

int numberOfVertex(const tagKExtrudeVertex* head, const tagKExtrudeVertex* vertex) {
  int i = 0;
  for (const tagKExtrudeVertex* v = head; v != nullptr; v = v->next, ++i) {
    if (v == vertex) return i;
  }
  return -1;
}

tagKExtrudeVertex* lastVertex(tagKExtrudeVertex* head) {
  if (head == nullptr) return nullptr;
  while (head->next != nullptr) head = head->next;
  return head;
}

tagKExtrudePlane* lastPlane(tagKExtrudePlane* head) {
  if (head == nullptr) return nullptr;
  while (head->next != nullptr) head = head->next;
  return head;
}

}  // namespace kutil::detail
