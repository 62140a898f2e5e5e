// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KMarkerList.h
/// CKMarkerList: marker lists and their file.
#pragma once
#include "KUtilBase.h"
