// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KUtil.h
/// The whole exported interface of KUtil in one include.
#pragma once
#include "KUtilBase.h"
#include "KUtilVersion.h"
#include "KText.h"
#include "KGenList.h"
#include "KFile.h"
#include "KPathVars.h"
#include "KVector.h"
#include "KTrans.h"
#include "KArrange.h"
#include "KMarkerList.h"
#include "KFIFO.h"
#include "KInputRecord.h"
#include "KActionRow.h"
#include "KDecide.h"
#include "KFootPrint.h"
#include "KVGen.h"
#include "KNormalise.h"
#include "KRegistry.h"
#include "KInfo.h"
#include "KShell.h"
#include "KSound.h"
#include "KSplash.h"
