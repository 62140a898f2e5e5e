// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KFIFO.h
/// CKFIFO: the eight-slot command queue.
#pragma once
#include "KUtilBase.h"
