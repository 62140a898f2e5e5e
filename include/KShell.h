// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KShell.h
/// Shell and system helpers: special folders, launching programs, screen savers.
#pragma once
#include "KUtilBase.h"
