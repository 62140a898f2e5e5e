// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KInfo.h
/// CKaldoInfo: info sheets, messages and the log.
#pragma once
#include "KUtilBase.h"
