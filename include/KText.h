// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KText.h
/// Status, last error and comment, tagged line segments and the text toolkit.
#pragma once
#include "KUtilBase.h"
KUTIL_API int KUGetComment(char* out);
