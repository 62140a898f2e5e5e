// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFootPrint.h
/// CKFootPrint: footprint polygons, boundary crossing and movement.
#pragma once
#include "KUtilBase.h"
