// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KGenList.h
/// CKGenList: the singly linked list of untyped object pointers with a cursor.
#pragma once
#include "KUtilBase.h"

/// One node of a CKGenList.
struct tagHolder {
  void* object;     ///< the listed object (its identity for find and remove); never owned
  void* companion;  ///< a second pointer handed back with the object; never owned
  tagHolder* next;  ///< the following node, null at the tail
};

/// A singly linked list of object pointers with a cursor; owns its nodes, never the objects.
class KUTIL_API CKGenList {
 public:
  /// An empty list, so that destroying it at once is safe; call GLInitialise before any other method.
  CKGenList() : m_head(nullptr), m_current(nullptr) {}
  /// Frees every node (not the objects).
  ~CKGenList();
  CKGenList(const CKGenList&) = delete;
  CKGenList& operator=(const CKGenList&) = delete;

  /// Empties head and cursor without freeing anything; 1.
  int GLInitialise();
  /// Appends a node for object at the tail, cursor unchanged; 0 when no node can be allocated.
  int GLAdd(void* object, void* companion);
  /// Moves the cursor to the first node holding object; 0 (cursor cleared) when absent.
  int GLFind(void* object);
  /// Frees the first node holding object and clears the cursor; 0 when none matched.
  int GLRemoveFromList(void* object);
  /// Selects the head and writes its pointers (null outputs are skipped); 0 with nothing changed on an empty
  /// list.
  int GLSelectFirstObject(void** object, void** companion);
  /// Advances the cursor and writes its pointers; 0 with the cursor kept when it is null or on the tail.
  int GLSelectNextObject(void** object, void** companion);
  /// *out = cursor node; 0 when nothing is selected.
  int GLGetCurrentByAddress(tagHolder** out);
  /// Sets the cursor to node (not checked, null clears it); 0 with nothing changed on an empty list.
  int GLSetCurrentByAddress(tagHolder* node);

 private:
  friend struct kutil::detail::Internals<CKGenList>;

  tagHolder* m_head;     ///< first node, null when empty
  tagHolder* m_current;  ///< the cursor, null when nothing is selected
};
