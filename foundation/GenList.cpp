// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The generic object list: nodes from the C heap, objects never owned.
#include <cstdlib>

#include "KGenList.h"

CKGenList::~CKGenList() {
  tagHolder* node = m_head;
  while (node != nullptr) {
    tagHolder* next = node->next;
    std::free(node);
    node = next;
  }
  m_head = nullptr;
  m_current = nullptr;
}

int CKGenList::GLInitialise() {
  m_head = nullptr;
  m_current = nullptr;
  return 1;
}

int CKGenList::GLAdd(void* object, void* companion) {
  tagHolder* node = static_cast<tagHolder*>(std::malloc(sizeof(tagHolder)));
  if (node == nullptr) return 0;
  node->object = object;
  node->companion = companion;
  node->next = nullptr;
  if (m_head == nullptr) {
    m_head = node;
    return 1;
  }
  tagHolder* tail = m_head;
  while (tail->next != nullptr) tail = tail->next;
  tail->next = node;
  return 1;
}

int CKGenList::GLFind(void* object) {
  for (tagHolder* node = m_head; node != nullptr; node = node->next) {
    if (node->object == object) {
      m_current = node;
      return 1;
    }
  }
  m_current = nullptr;
  return 0;
}

int CKGenList::GLRemoveFromList(void* object) {
  m_current = nullptr;
  tagHolder* previous = nullptr;
  for (tagHolder* node = m_head; node != nullptr; previous = node, node = node->next) {
    if (node->object != object) continue;
    if (previous == nullptr) {
      m_head = node->next;
    } else {
      previous->next = node->next;
    }
    std::free(node);
    return 1;
  }
  return 0;
}

int CKGenList::GLSelectFirstObject(void** object, void** companion) {
  if (m_head == nullptr) return 0;
  m_current = m_head;
  if (object != nullptr) *object = m_current->object;
  if (companion != nullptr) *companion = m_current->companion;
  return 1;
}

int CKGenList::GLSelectNextObject(void** object, void** companion) {
  // Staying on the tail lets a caller's loop end on the last node.
  if (m_current == nullptr || m_current->next == nullptr) return 0;
  m_current = m_current->next;
  if (object != nullptr) *object = m_current->object;
  if (companion != nullptr) *companion = m_current->companion;
  return 1;
}

int CKGenList::GLGetCurrentByAddress(tagHolder** out) {
  if (m_current == nullptr || out == nullptr) return 0;
  *out = m_current;
  return 1;
}

int CKGenList::GLSetCurrentByAddress(tagHolder* node) {
  if (m_head == nullptr) return 0;
  // Trusted: callers hand back a node they got from this list.
  m_current = node;
  return 1;
}
