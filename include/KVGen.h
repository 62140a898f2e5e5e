// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KVGen.h
/// CKVGen: extruded solids, tessellation, faces and the shape file.
#pragma once
#include "KUtilBase.h"
