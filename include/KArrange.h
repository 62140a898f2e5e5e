// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KArrange.h
/// CKArrange: the arrangement grid.
#pragma once
#include "KUtilBase.h"
