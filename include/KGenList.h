// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KGenList.h
/// CKGenList: the singly linked list of untyped object pointers with a cursor.
#pragma once
#include "KUtilBase.h"
