// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The path forms of the behaviour file's reader and writer: open, hand the stream on, close.
#pragma once
#include <cstdio>

#include "TextDetail.h"

namespace kutil::detail {

/// Opens the file at path with mode, returns use(stream) and closes the file; 0 for an empty path
/// or a file that cannot be opened.
template <class Use>
int withFile(const char* path, const char* mode, Use use) {
  if (isEmpty(path)) return 0;
  std::FILE* stream = std::fopen(path, mode);
  if (stream == nullptr) return 0;
  const int result = use(stream);
  std::fclose(stream);
  return result;
}

}  // namespace kutil::detail
