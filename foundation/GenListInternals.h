// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// What other files may see of a CKGenList beyond its methods: its nodes, so
// that a list can be read without moving its cursor.
#pragma once
#include "KGenList.h"

template <>
struct kutil::detail::Internals<CKGenList> {
  /// The first node, null when the list is empty.
  static const tagHolder* head(const CKGenList& list) { return list.m_head; }
};
