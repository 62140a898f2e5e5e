// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KSound.h
/// CKSound: requested and background sounds.
#pragma once
#include "KUtilBase.h"
