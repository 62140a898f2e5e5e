// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KInputRecord.h
/// CKInputRecord: recording and playback of input commands.
#pragma once
#include "KUtilBase.h"
