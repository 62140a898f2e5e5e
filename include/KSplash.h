// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KSplash.h
/// CKSplash: the splash screen painter.
#pragma once
#include "KUtilBase.h"
