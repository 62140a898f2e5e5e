// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
/// @file KMarkerList.h
/// CKMarkerList: marker lists and their file.
#pragma once
#include <cstdio>

#include "KGenList.h"
#include "KUtilBase.h"

/// Capacity of a marker name, terminator included.
#define KMARKER_NAME_SIZE 132

/// A named marker of a room: a viewpoint or place with its orientation.
typedef struct tagMarkerItem {
  char name[KMARKER_NAME_SIZE];  ///< name, always terminated in the list's copies; file tag "[MKN]"
  int indexNumber;               ///< index number, -1 by default; "[MKI]"
  int sector;                    ///< sector, -1 by default; "[MKS]"
  _D3DVECTOR position;           ///< position, (1.5, 1.5, 1.5) by default; "[MKX]", "[MKY]", "[MKZ]"
  _D3DVECTOR direction;          ///< direction, (0, 0, 1) by default; "[MKP]", "[MKQ]", "[MKR]"
  _D3DVECTOR up;                 ///< up, (0, 1, 0) by default; "[MKA]", "[MKB]", "[MKC]"
  int valueV;                    ///< application value V, 0 by default; "[MKV]"
  float valueO;                  ///< application value O, 1.1 by default; "[MKO]"
  float valueF;                  ///< application value F, 1.1 by default; "[MKF]"
} tagMarkerItem;

/// A list of markers that owns copies of them, with a selected marker.
/// Call MLInitialise first; the destructor runs MLTerminate.
class KUTIL_API CKMarkerList {
 public:
  /// Starts with no list and no selection.
  CKMarkerList() : m_list(nullptr), m_selected(nullptr) {}
  /// Frees every marker record and the list.
  ~CKMarkerList();
  CKMarkerList(const CKMarkerList&) = delete;
  CKMarkerList& operator=(const CKMarkerList&) = delete;

  /// No list and no selection (nothing is freed). Returns 1.
  int MLInitialise();
  /// Frees every marker record and the list. Deliberately returns 0 after
  /// freeing a list and 1 when there was none.
  int MLTerminate();
  /// Sets the marker defaults (empty name, index and sector -1, position 1.5 each,
  /// direction +z, up +y, V 0, O and F 1.1). Returns 1, or 0 for a null pointer.
  int MLInitMarker(tagMarkerItem* marker);
  /// Copies src into dst, the name bounded by its capacity and terminated. Returns 1, or 0 for a null
  /// pointer.
  int MLCopyMarker(tagMarkerItem* dst, const tagMarkerItem* src);
  /// Appends a copy of marker (the list never keeps the caller's pointer), then
  /// selects the first marker. Returns 1, or 0 for a null pointer or a failed allocation.
  int MLAddMarker(const tagMarkerItem* marker);
  /// Selects the first marker and hands it out; 0 with no list or an empty list.
  int MLSelectFirstMarker(tagMarkerItem** out);
  /// Selects the next marker and hands it out; 0 (selection kept) at the end or with no list.
  int MLSelectNextMarker(tagMarkerItem** out);
  /// Finds the first marker named exactly name (case-sensitive); every visited
  /// marker becomes the selection in turn. Returns 1 if found.
  int MLFindMarkerByName(tagMarkerItem** out, const char* name);
  /// Finds the first marker with the index number; selection as for MLFindMarkerByName. Returns 1 if found.
  int MLFindMarkerByNumber(tagMarkerItem** out, int number);
  /// Copies marker over the selected record, keeping its index number when
  /// keepIndex is non-zero. Returns 0 with no list or no selection.
  int MLUpdateSelectedMarker(const tagMarkerItem* marker, int keepIndex);
  /// Removes and frees the selected record, then selects the first marker.
  /// Returns 1 if a record was removed.
  int MLDeleteSelectedMarker();
  /// *out = 1 + the largest non-negative index number (1 for an empty list);
  /// selects the first marker. Returns 0 with out untouched when there is no list.
  int MLGetNextIndexNumber(int* out);
  /// Replaces this list by copies of source's markers in order (source and its
  /// selection are left alone). Returns 1 for a null or empty source, else the
  /// result of the last add (stopping at the first failure).
  int MLCreateListFromList(const CKMarkerList* source);
  /// Writes every marker as an empty line then one "[TAG][len]value" line per
  /// field from "[MKJ][5]dummy" to "[MKE][5]dummy"; selects the first marker.
  /// Returns 1 (nothing written) with no list, 0 for a null stream or when a record could not be written.
  int MLSaveToFile(FILE* stream);

 private:
  friend struct kutil::detail::Internals<CKMarkerList>;

  void selectFirst();

  CKGenList* m_list;          ///< the records, created by the first add; null before
  tagMarkerItem* m_selected;  ///< the selected record or null
};
