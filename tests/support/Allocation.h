// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Watching and failing the test program's allocations. A test program that
// uses either class gets the replaced global operator new and delete of
// Allocation.cpp; programs that use neither keep the standard ones.
#pragma once

namespace kutil::test {

/// Counts every allocation through operator new while it lives.
class AllocationCounter {
 public:
  AllocationCounter();
  ~AllocationCounter();
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;
  /// Allocations counted so far.
  long count() const;
};

/// Makes every allocation through operator new fail while it lives (std::bad_alloc, or null from
/// the nothrow forms), as a machine out of memory does.
class AllocationFailure {
 public:
  AllocationFailure();
  ~AllocationFailure();
  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;
};

}  // namespace kutil::test
