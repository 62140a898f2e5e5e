// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KNormalise.h
/// Making behaviour, scene-list and animation files machine-independent.
#pragma once
#include "KUtilBase.h"
