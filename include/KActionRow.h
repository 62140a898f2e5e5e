// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KActionRow.h
/// CKActionRow: one row of a behaviour table and its vocabulary.
#pragma once
#include "KUtilBase.h"
