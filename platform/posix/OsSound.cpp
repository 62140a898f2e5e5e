// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Sounds through libcanberra, which plays files asynchronously on the
// desktop's sound server; without a usable device playing simply fails.
#include "OsSound.h"

#if __has_include(<canberra.h>)
#include <canberra.h>
#define KUTIL_HAVE_CANBERRA 1
#endif

namespace kutil::platform {

#if defined(KUTIL_HAVE_CANBERRA)
namespace {

// All of the library's sounds share one id, so one can be stopped or waited for.
constexpr uint32_t kSoundId = 1;
ca_context* g_context = nullptr;
bool g_failed = false;

ca_context* context() {
  if (g_context || g_failed) return g_context;
  ca_context* made = nullptr;
  if (ca_context_create(&made) != CA_SUCCESS) {
    g_failed = true;
    return nullptr;
  }
  if (ca_context_open(made) != CA_SUCCESS) {
    ca_context_destroy(made);
    g_failed = true;  // no sound device: every later request fails the same way
    return nullptr;
  }
  g_context = made;
  return g_context;
}

}  // namespace

bool playSound(const char* file, unsigned int flags) {
  if (!file) {
    if ((flags & kSoundPurge) && g_context) ca_context_cancel(g_context, kSoundId);
    return true;
  }
  ca_context* ctx = context();
  if (!ctx) return false;
  int playing = 0;
  if (ca_context_playing(ctx, kSoundId, &playing) == CA_SUCCESS && playing) {
    if (flags & kSoundNoStop) return false;
    ca_context_cancel(ctx, kSoundId);
  }
  return ca_context_play(ctx, kSoundId, CA_PROP_MEDIA_FILENAME, file, nullptr) == CA_SUCCESS;
}
#else
// Built without a sound library: nothing can be played.
bool playSound(const char* file, unsigned int) { return file == nullptr; }
#endif

}  // namespace kutil::platform
