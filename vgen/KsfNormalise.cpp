// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Preparing shape files for distribution: texture names in path-variable form,
// referenced files gathered into a package directory.
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "Boundary.h"
#include "KFile.h"
#include "KNormalise.h"
#include "KPathVars.h"
#include "KText.h"
#include "KVGen.h"
#include "LineFile.h"
#include "OsFileSystem.h"
#include "TextDetail.h"

namespace {

using kutil::detail::guarded;
using kutil::detail::isEmpty;

// Name buffers of the path-variable functions hold 264 characters.
constexpr int kNameCapacity = kutil::detail::kScratch;
// A texture name as the generator hands it out.
constexpr int kTextureCapacity = 277;
constexpr const char* kKwqDir = "?KALDOKWQDIR?";

using Getter = int (CKVGen::*)(char*);
using Setter = int (CKVGen::*)(const char*);
struct TextureSlot {
  Getter get;
  Setter set;
};
const TextureSlot kTextures[3] = {
    {&CKVGen::KVGetFrontPlaneTexture, &CKVGen::KVSetFrontPlaneTexture},
    {&CKVGen::KVGetBackPlaneTexture, &CKVGen::KVSetBackPlaneTexture},
    {&CKVGen::KVGetWrapSurfaceTexture, &CKVGen::KVSetWrapSurfaceTexture},
};

// A shape file restored into a generator of its own, which is terminated whatever way the caller
// leaves.
class RestoredShape {
 public:
  /// Restores path; when noted, the comment text first names the file so that a failure can be
  /// reported against it.
  RestoredShape(const char* path, bool noted) {
    if (!m_gen) return;
    m_gen->KVInitialise();
    if (noted) KUSetComment(path);
    m_restored = m_gen->KVRestore(path) != 0;
  }
  ~RestoredShape() {
    if (m_gen) m_gen->KVTerminate();
  }
  RestoredShape(const RestoredShape&) = delete;
  RestoredShape& operator=(const RestoredShape&) = delete;

  /// The generator holding the file; null when it could not be made or the file not restored.
  CKVGen* get() { return m_restored ? m_gen.get() : nullptr; }

 private:
  std::unique_ptr<CKVGen> m_gen{new (std::nothrow) CKVGen()};
  bool m_restored = false;
};

// Copies a texture into a name buffer the path functions may lengthen; 0 when
// it is not set, or too long for the path functions (it is then left whole
// rather than cut).
int textureName(CKVGen& gen, const TextureSlot& slot, char* name) {
  char field[300];
  if ((gen.*slot.get)(field) == 0) return 0;
  if (std::strlen(field) > static_cast<std::size_t>(kNameCapacity - 1)) return 0;
  KUSafeStrncpy(name, field, kNameCapacity - 1);
  return 1;
}

// Saves a shape file through a temporary file; 1 when path holds the new content.
int saveSafely(CKVGen* shape, const char* path) {
  return kutil::detail::writeThroughTemporary(path,
                                              [shape](const char* temp) { return shape->KVSave(temp); });
}

int convertToRelative(const char* path) {
  if (isEmpty(path) || KUIsVariablised(path) != 0) return 1;
  RestoredShape shape(path, true);
  if (shape.get() == nullptr) return 0;
  CKVGen& gen = *shape.get();
  for (const TextureSlot& slot : kTextures) {
    char name[kNameCapacity * 2];
    if (textureName(gen, slot, name) == 0 || KUIsVariablised(name) != 0) continue;
    if (KUConvertANBToRelative(name) == 0) return 0;
    if (KUConvertToRelative(name) == 0) return 0;
    (gen.*slot.set)(name);
  }
  return gen.KVSave(path);
}

int gatherParts(const char* path, const char* target) {
  if (isEmpty(path)) return 1;
  if (target == nullptr) return 0;
  RestoredShape shape(path, true);
  if (shape.get() == nullptr) return 0;
  CKVGen& gen = *shape.get();
  for (const TextureSlot& slot : kTextures) {
    char name[kNameCapacity * 2];
    if (textureName(gen, slot, name) == 0) continue;
    // The copy rewrites the name in place; the source is kept apart so that
    // nothing overlaps.
    char source[kNameCapacity * 2];
    std::strcpy(source, name);
    if (KUCopyToTarget(source, target, name) == 0) return 0;
    if (KUCopyANBFileParts(name, target) == 0) return 0;
    (gen.*slot.set)(name);
  }
  return gen.KVSave(path);
}

int isNormalised(const char* path) {
  RestoredShape shape(path, false);
  if (shape.get() == nullptr) return 0;
  CKVGen& gen = *shape.get();
  for (const TextureSlot& slot : kTextures) {
    char name[kNameCapacity * 2];
    if (textureName(gen, slot, name) == 0) continue;
    if (KUDeRelativiseFileName(path, name) != 0) return 1;
  }
  return 0;
}

int deRelativise(const char* directory, const char* shapeFile) {
  if (directory == nullptr || isEmpty(shapeFile)) return 0;
  RestoredShape restored(shapeFile, false);
  if (restored.get() == nullptr) return 0;
  CKVGen& shape = *restored.get();
  bool changed = false;
  bool allSet = true;
  for (const TextureSlot& texture : kTextures) {
    char name[kTextureCapacity];
    if ((shape.*texture.get)(name) != 1) continue;
    if (!KUSubstitute4Variable(name, kKwqDir, directory)) continue;
    // An animation names its frames the same way; its own result does not count.
    KUDeRelativiseANB(name, kKwqDir, directory);
    if ((shape.*texture.set)(name) != 1) allSet = false;
    changed = true;
  }
  if (!allSet || !changed) return 0;
  return saveSafely(&shape, shapeFile);
}

}  // namespace

// Each call runs through guarded: the temporary name a shape file is saved
// under is a standard-library string, and out of memory is a failure like any
// other.

int KUConvertKSFToRelative(const char* path) {
  return guarded([&] { return convertToRelative(path); });
}

int KUCopyKSFFileParts(const char* path, const char* target) {
  return guarded([&] { return gatherParts(path, target); });
}

int KUIsKSFFileNormalised(const char* path) {
  return guarded([&] { return isNormalised(path); });
}

int KUDeRelativiseKSF(const char* directory, const char* shapeFile) {
  return guarded([&] { return deRelativise(directory, shapeFile); });
}
