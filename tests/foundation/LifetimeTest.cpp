// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Every class can be destroyed straight after construction, without its
// Initialise: the host may bail out between the two.
#include <gtest/gtest.h>

#include <cstring>
#include <new>

#include "KUtil.h"

namespace {

// Builds each T over memory full of garbage (default-initialised, so nothing is
// zeroed for it) and destroys it at once; a member left undefined by the
// constructor and used by the destructor shows up as a crash or a sanitizer report.
template <class... T>
void constructEach() {
  (
      [] {
        alignas(T) unsigned char storage[sizeof(T)];
        std::memset(storage, 0xA5, sizeof storage);
        (new (storage) T)->~T();
      }(),
      ...);
}

}  // namespace

TEST(Lifetime, EveryClassIsSafeToDestroyWithoutInitialise) {
  constructEach<CKGenList, CKMarkerList, CKTrans, CKArrange, CKFIFO, CKActionRow, CKDecide, CKInputRecord,
                CKFootPrint, CKVGen, CKaldoInfo, CKSound, CKSplash>();
}
