// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KVector.h
/// Vectors, matrices and quaternions on Direct3D records.
#pragma once
#include "KUtilBase.h"
