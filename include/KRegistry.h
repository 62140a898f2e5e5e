// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KRegistry.h
/// Registry-held user settings.
#pragma once
#include "KUtilBase.h"
