// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The API's promise that no exception crosses it. An exported function whose
// work may allocate through the standard library runs that work through
// guarded(), so that running out of memory is its failure status like any
// other failure, never an exception in a host that expects an int. The
// POSIX backends do the same at their own entry points, so that the platform
// interface, like the Win32 API it mirrors, reports every failure as a value.
#pragma once

namespace kutil::detail {

/// Runs body and returns its status; failure when body throws anything. The status is an int unless
/// failure gives it another type (a platform error code, a bool).
template <class Body, class Status = int>
Status guarded(Body&& body, Status failure = 0) noexcept {
  try {
    return body();
  } catch (...) {
    return failure;
  }
}

}  // namespace kutil::detail
