// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KUtil.h
/// The whole exported interface of KUtil in one include.
#pragma once
#include "KActionRow.h"
#include "KArrange.h"
#include "KDecide.h"
#include "KFIFO.h"
#include "KFile.h"
#include "KFootPrint.h"
#include "KGenList.h"
#include "KInfo.h"
#include "KInputRecord.h"
#include "KMarkerList.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KRegistry.h"
#include "KShell.h"
#include "KSound.h"
#include "KSplash.h"
#include "KText.h"
#include "KTrans.h"
#include "KUtilBase.h"
#include "KUtilVersion.h"
#include "KVGen.h"
#include "KVector.h"
