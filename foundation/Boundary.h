// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The API's promise that no exception crosses it. An exported function whose
// work may allocate through the standard library runs that work through
// guarded(), so that running out of memory is its failure status like any
// other failure, never an exception in a host that expects an int.
#pragma once

namespace kutil::detail {

/// Runs body and returns its status; failure when body throws anything.
template <class Body>
int guarded(Body&& body, int failure = 0) noexcept {
  try {
    return body();
  } catch (...) {
    return failure;
  }
}

}  // namespace kutil::detail
