// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Marker lists: owned copies of markers kept in a generic list, and their file.

#include <cstring>
#include <new>

#include "GenListInternals.h"
#include "KMarkerList.h"
#include "TextDetail.h"

namespace {

tagMarkerItem* recordOf(void* object) { return static_cast<tagMarkerItem*>(object); }

// A record opens with an empty line. Only the record's final line feed
// decides whether it was written; a refused write before it is not checked.
bool writeRecord(FILE* stream, const tagMarkerItem& m) {
  using kutil::detail::writeSegmentLine;
  std::fputc('\n', stream);
  writeSegmentLine(stream, "[MKJ]", "dummy");
  writeSegmentLine(stream, "[MKN]", m.name);
  writeSegmentLine(stream, "[MKI]", m.indexNumber);
  writeSegmentLine(stream, "[MKS]", m.sector);
  writeSegmentLine(stream, "[MKX]", m.position.x);
  writeSegmentLine(stream, "[MKY]", m.position.y);
  writeSegmentLine(stream, "[MKZ]", m.position.z);
  writeSegmentLine(stream, "[MKP]", m.direction.x);
  writeSegmentLine(stream, "[MKQ]", m.direction.y);
  writeSegmentLine(stream, "[MKR]", m.direction.z);
  writeSegmentLine(stream, "[MKA]", m.up.x);
  writeSegmentLine(stream, "[MKB]", m.up.y);
  writeSegmentLine(stream, "[MKC]", m.up.z);
  writeSegmentLine(stream, "[MKV]", m.valueV);
  writeSegmentLine(stream, "[MKO]", m.valueO);
  writeSegmentLine(stream, "[MKF]", m.valueF);
  return writeSegmentLine(stream, "[MKE]", "dummy");
}

// Walks the list from its first marker, each visited one becoming the
// selection, and hands out the first that matches.
template <class Match>
int findMarker(CKMarkerList& list, tagMarkerItem** out, Match matches) {
  tagMarkerItem* m = nullptr;
  for (int more = list.MLSelectFirstMarker(&m); more; more = list.MLSelectNextMarker(&m)) {
    if (matches(*m)) {
      *out = m;
      return 1;
    }
  }
  return 0;
}

}  // namespace

CKMarkerList::~CKMarkerList() { MLTerminate(); }

int CKMarkerList::MLInitialise() {
  m_list = nullptr;
  m_selected = nullptr;
  return 1;
}

int CKMarkerList::MLTerminate() {
  m_selected = nullptr;
  if (!m_list) return 1;
  void* object = nullptr;
  void* companion = nullptr;
  for (int more = m_list->GLSelectFirstObject(&object, &companion); more;
       more = m_list->GLSelectNextObject(&object, &companion))
    delete recordOf(object);
  delete m_list;  // frees the nodes
  m_list = nullptr;
  // Callers have always seen 0 after a list was freed.
  return 0;
}

int CKMarkerList::MLInitMarker(tagMarkerItem* marker) {
  if (!marker) return 0;
  std::memset(marker->name, 0, sizeof marker->name);
  marker->indexNumber = -1;
  marker->sector = -1;
  marker->position.x = marker->position.y = marker->position.z = 1.5f;
  marker->direction.x = 0.0f;
  marker->direction.y = 0.0f;
  marker->direction.z = 1.0f;
  marker->up.x = 0.0f;
  marker->up.y = 1.0f;
  marker->up.z = 0.0f;
  marker->valueV = 0;
  marker->valueO = 1.1f;
  marker->valueF = 1.1f;
  return 1;
}

int CKMarkerList::MLCopyMarker(tagMarkerItem* dst, const tagMarkerItem* src) {
  if (!dst || !src) return 0;
  if (dst == src) return 1;
  // The name up to its terminator, bounded by the field and always terminated.
  size_t n = 0;
  while (n < sizeof dst->name - 1 && src->name[n] != '\0') ++n;
  std::memcpy(dst->name, src->name, n);
  dst->name[n] = '\0';
  dst->indexNumber = src->indexNumber;
  dst->sector = src->sector;
  dst->position = src->position;
  dst->direction = src->direction;
  dst->up = src->up;
  dst->valueV = src->valueV;
  dst->valueO = src->valueO;
  dst->valueF = src->valueF;
  return 1;
}

void CKMarkerList::selectFirst() {
  tagMarkerItem* first = nullptr;
  if (!MLSelectFirstMarker(&first)) m_selected = nullptr;
}

int CKMarkerList::MLAddMarker(const tagMarkerItem* marker) {
  if (!marker) return 0;
  int ok = 0;
  if (!m_list) {
    m_list = new (std::nothrow) CKGenList;
    if (m_list) m_list->GLInitialise();
  }
  if (m_list) {
    tagMarkerItem* record = new (std::nothrow) tagMarkerItem;
    if (record) {
      MLInitMarker(record);
      MLCopyMarker(record, marker);
      ok = m_list->GLAdd(record, nullptr);
      if (!ok) delete record;
    }
  }
  selectFirst();
  return ok;
}

int CKMarkerList::MLSelectFirstMarker(tagMarkerItem** out) {
  if (!out || !m_list) return 0;
  void* object = nullptr;
  void* companion = nullptr;
  if (!m_list->GLSelectFirstObject(&object, &companion)) return 0;
  m_selected = recordOf(object);
  *out = m_selected;
  return 1;
}

int CKMarkerList::MLSelectNextMarker(tagMarkerItem** out) {
  if (!out || !m_list) return 0;
  void* object = nullptr;
  void* companion = nullptr;
  if (!m_list->GLSelectNextObject(&object, &companion)) return 0;
  m_selected = recordOf(object);
  *out = m_selected;
  return 1;
}

int CKMarkerList::MLFindMarkerByName(tagMarkerItem** out, const char* name) {
  if (!out || !name) return 0;
  return findMarker(
      *this, out, [name](const tagMarkerItem& m) { return std::strncmp(m.name, name, sizeof m.name) == 0; });
}

int CKMarkerList::MLFindMarkerByNumber(tagMarkerItem** out, int number) {
  if (!out) return 0;
  return findMarker(*this, out, [number](const tagMarkerItem& m) { return m.indexNumber == number; });
}

int CKMarkerList::MLUpdateSelectedMarker(const tagMarkerItem* marker, int keepIndex) {
  if (!marker || !m_list || !m_selected) return 0;
  const int previous = m_selected->indexNumber;
  MLCopyMarker(m_selected, marker);
  if (keepIndex) m_selected->indexNumber = previous;
  return 1;
}

int CKMarkerList::MLDeleteSelectedMarker() {
  if (!m_list || !m_selected) return 0;
  tagMarkerItem* doomed = m_selected;
  const int removed = m_list->GLRemoveFromList(doomed);
  if (removed) {
    delete doomed;
    m_selected = nullptr;  // never left dangling, even when the list is now empty
  }
  selectFirst();
  return removed;
}

int CKMarkerList::MLGetNextIndexNumber(int* out) {
  if (!out || !m_list) return 0;
  int largest = 0;  // negative numbers (unset markers) never count
  void* object = nullptr;
  void* companion = nullptr;
  for (int more = m_list->GLSelectFirstObject(&object, &companion); more;
       more = m_list->GLSelectNextObject(&object, &companion))
    if (recordOf(object)->indexNumber > largest) largest = recordOf(object)->indexNumber;
  *out = largest + 1;
  selectFirst();
  return 1;
}

int CKMarkerList::MLCreateListFromList(const CKMarkerList* source) {
  MLTerminate();
  // Read the source's nodes directly so its cursor and selection stay put.
  // (With source == this the list was just emptied: an empty copy.)
  if (!source || !source->m_list) return 1;
  int ok = 1;
  for (const tagHolder* node = kutil::detail::Internals<CKGenList>::head(*source->m_list); node;
       node = node->next) {
    ok = MLAddMarker(recordOf(node->object));
    if (!ok) break;
  }
  return ok;
}

int CKMarkerList::MLSaveToFile(FILE* stream) {
  if (!m_list) return 1;
  if (!stream) return 0;
  int ok = 1;
  void* object = nullptr;
  void* companion = nullptr;
  for (int more = m_list->GLSelectFirstObject(&object, &companion); more;
       more = m_list->GLSelectNextObject(&object, &companion)) {
    if (!writeRecord(stream, *recordOf(object))) {
      ok = 0;
      break;
    }
  }
  selectFirst();
  return ok;
}
