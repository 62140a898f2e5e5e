// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KNormalise.h
/// Making behaviour, scene-list and animation files machine-independent.
#pragma once
#include "KUtilBase.h"

/// Copies the other five faces of sourceFace's sky box next to newName (same base, suffixes "_fw" "_rh" "_bk" "_lf" "_up" "_dn", same extension), skipping absent faces and never overwriting; 0 when either name lacks a sky-box ending, else 1.
KUTIL_API int KUCopySkyBoxFaces(const char* sourceFace, const char* newName);
