// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include "Allocation.h"

#include <cstdlib>
#include <new>

// The replacements hand out malloc memory and give it back with free, which GCC flags once it
// inlines a delete next to its new.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

namespace {

bool g_counting = false;
bool g_failing = false;
long g_allocations = 0;

void* allocate(std::size_t size) noexcept {
  if (g_counting) ++g_allocations;
  if (g_failing) return nullptr;
  return std::malloc(size != 0 ? size : 1);
}

void* allocateOrThrow(std::size_t size) {
  if (void* p = allocate(size)) return p;
  throw std::bad_alloc();
}

}  // namespace

// Every form is replaced: a sanitizer runtime would otherwise supply its own for the rest.
void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace kutil::test {

AllocationCounter::AllocationCounter() {
  g_allocations = 0;
  g_counting = true;
}
AllocationCounter::~AllocationCounter() { g_counting = false; }
long AllocationCounter::count() const { return g_allocations; }

AllocationFailure::AllocationFailure() { g_failing = true; }
AllocationFailure::~AllocationFailure() { g_failing = false; }

}  // namespace kutil::test
