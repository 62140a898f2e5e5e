// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KDecide.h
/// CKDecide: the behaviour table, its file and its clock.
#pragma once
#include "KUtilBase.h"
