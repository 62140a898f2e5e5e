// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KPathVars.h
/// Path variables and the relativisation of file names.
#pragma once
#include "KUtilBase.h"
