// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFile.h
/// File utilities: file-type numbers, appending, counting and clipping text files, copying referenced files.
#pragma once
#include "KUtilBase.h"
