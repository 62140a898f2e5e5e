// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Viewpoints: the marker list beside the scene, read back, jumped to and added to.
#pragma once
#include <string>

#include "KUtil.h"
#include "Walker.h"

namespace kview {

/// The scene's viewpoints as a marker list.
class Viewpoints {
 public:
  /// Reads a marker file; records without their closing line are dropped. The number of markers read
  /// (0 also for a missing file, which is no problem: a scene need not have viewpoints).
  int load(const std::string& path);
  /// Writes every marker to path (replacing it); false when it cannot be written.
  bool save(const std::string& path);
  /// The number of markers.
  int count() const { return m_count; }
  /// Copies the n-th marker (0-based, in list order); false when there is none.
  bool get(int n, tagMarkerItem* out);
  /// Adds the viewer's state as a new marker "View <index>"; false when out of memory.
  bool add(const ViewerState& state, tagMarkerItem* made);
  /// Finds a marker by its exact name.
  bool find(const std::string& name, tagMarkerItem* out);

  /// The viewer state a marker stands for (the zoom is not part of a marker).
  static ViewerState stateOf(const tagMarkerItem& marker, double zoom);

 private:
  CKMarkerList m_list;
  int m_count = 0;
};

}  // namespace kview
