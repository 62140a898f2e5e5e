// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KTrans.h
/// CKTrans: the camera transform between world and screen.
#pragma once
#include "KUtilBase.h"
