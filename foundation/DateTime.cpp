// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The date/time record and the two stamps printed from it.
#include <cstdio>
#include <cstring>
#include <ctime>

#include "KText.h"
#include "KUtilVersion.h"
#include "OsSystem.h"
#include "TextDetail.h"

namespace {

// The library's build number, printed in every time stamp.
constexpr int kBuild[4] = {KUTIL_VERSION_MAJOR, KUTIL_VERSION_MINOR, KUTIL_VERSION_PATCH,
                           KUTIL_VERSION_BUILD};

}  // namespace

namespace kutil::detail {

void formatTimeStamp(const tagKDATETIME& when, char* out) {
  char text[200];
  std::snprintf(text, sizeof text, "DATE:    %d/%02d/%02d\nTIME:    %02d:%02d:%02d\nBuild:   %d,%d,%d,%d\n",
                when.year, when.month + 1, when.day, when.hour, when.minute, when.second, kBuild[0],
                kBuild[1], kBuild[2], kBuild[3]);
  std::memcpy(out, text, std::strlen(text) + 1);
}

void formatSecondStamp(const tagKDATETIME& when, char* out) {
  char text[48];
  std::snprintf(text, sizeof text, "%02d%02d%02d", when.hour, when.minute, when.second);
  std::memcpy(out, text, std::strlen(text) + 1);
}

}  // namespace kutil::detail

int KUGetDateTime(tagKDATETIME* when) {
  if (when == nullptr) return 0;
  std::tm local{};
  if (!kutil::platform::localNow(&local)) return 0;
  when->year = local.tm_year + 1900;
  when->month = local.tm_mon;
  when->day = local.tm_mday;
  when->weekDay = local.tm_wday;
  when->hour = local.tm_hour;
  when->minute = local.tm_min;
  when->second = local.tm_sec;
  when->extra = -1;
  return 1;
}

int KUGetTimeStamp(char* out) {
  if (out == nullptr) return 0;
  kutil::platform::resetTimeZone();
  tagKDATETIME when{};
  if (KUGetDateTime(&when) != 1) return 0;
  kutil::detail::formatTimeStamp(when, out);
  return 1;
}

int KUGetSecondStamp(char* out) {
  if (out == nullptr) return 0;
  tagKDATETIME when{};
  if (KUGetDateTime(&when) != 1) return 0;
  kutil::detail::formatSecondStamp(when, out);
  return 1;
}
