// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The generic object list: nodes from the C heap, objects never owned.
#include <cstdlib>

#include "KGenList.h"

CKGenList::~CKGenList() {
  tagHolder* node = head;
  while (node != nullptr) {
    tagHolder* next = node->next;
    std::free(node);
    node = next;
  }
  head = nullptr;
  current = nullptr;
}

int CKGenList::GLInitialise() {
  head = nullptr;
  current = nullptr;
  return 1;
}

int CKGenList::GLAdd(void* object, void* companion) {
  tagHolder* node = static_cast<tagHolder*>(std::malloc(sizeof(tagHolder)));
  if (node == nullptr) return 0;
  node->object = object;
  node->companion = companion;
  node->next = nullptr;
  if (head == nullptr) {
    head = node;
    return 1;
  }
  tagHolder* tail = head;
  while (tail->next != nullptr) tail = tail->next;
  tail->next = node;
  return 1;
}

int CKGenList::GLFind(void* object) {
  for (tagHolder* node = head; node != nullptr; node = node->next) {
    if (node->object == object) {
      current = node;
      return 1;
    }
  }
  current = nullptr;
  return 0;
}

int CKGenList::GLRemoveFromList(void* object) {
  current = nullptr;
  tagHolder* previous = nullptr;
  for (tagHolder* node = head; node != nullptr; previous = node, node = node->next) {
    if (node->object != object) continue;
    if (previous == nullptr) {
      head = node->next;
    } else {
      previous->next = node->next;
    }
    std::free(node);
    return 1;
  }
  return 0;
}

int CKGenList::GLSelectFirstObject(void** object, void** companion) {
  if (head == nullptr) return 0;
  current = head;
  if (object != nullptr) *object = current->object;
  if (companion != nullptr) *companion = current->companion;
  return 1;
}

int CKGenList::GLSelectNextObject(void** object, void** companion) {
  // Staying on the tail lets a caller's loop end on the last node.
  if (current == nullptr || current->next == nullptr) return 0;
  current = current->next;
  if (object != nullptr) *object = current->object;
  if (companion != nullptr) *companion = current->companion;
  return 1;
}

int CKGenList::GLGetCurrentByAddress(tagHolder** out) {
  if (current == nullptr || out == nullptr) return 0;
  *out = current;
  return 1;
}

int CKGenList::GLSetCurrentByAddress(tagHolder* node) {
  if (head == nullptr) return 0;
  // Trusted: callers hand back a node they got from this list.
  current = node;
  return 1;
}
