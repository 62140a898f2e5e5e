// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The shape file: one tagged value a line, from "[VGEN]" to "[NEGV]".
#include <cstdio>
#include <cstring>

#include "KText.h"
#include "KVGen.h"
#include "TextDetail.h"

namespace {

using kutil::detail::writeSegmentLine;

// Lines are read in pieces of at most 291 characters.
constexpr int kReadBuffer = 292;
constexpr int kValueLength = 276;

int writeLine(FILE* f, const char* line) { return std::fprintf(f, "%s\n", line) > 0 ? 1 : 0; }

// The tags the reader recognises, in the order it tests them.
enum Tag {
  kNRM,
  kDTA,
  kDRO,
  kFPT,
  kFTI,
  kBPT,
  kBTI,
  kFST,
  kSTI,
  kFIC,
  kBIC,
  kWIC,
  kSEX,
  kSEY,
  kSEZ,
  kCMD,
  kIVX,
  kIVY,
  kIVZ,
  kIMG,
  kSED,
  kDES,
  kINS,
  kSNI,
  kNone
};
const char* const kTags[kNone] = {"[NRM]", "[DTA]", "[DRO]", "[FPT]", "[FTI]", "[BPT]", "[BTI]", "[FST]",
                                  "[STI]", "[FIC]", "[BIC]", "[WIC]", "[SEX]", "[SEY]", "[SEZ]", "[CMD]",
                                  "[IVX]", "[IVY]", "[IVZ]", "[IMG]", "[SED]", "[DES]", "[INS]", "[SNI]"};

Tag classify(const char* line) {
  for (int t = 0; t < kNone; ++t) {
    if (std::strncmp(line, kTags[t], std::strlen(kTags[t])) == 0) return static_cast<Tag>(t);
  }
  return kNone;
}

// Conversions write the field only when the line holds its segment; a rejected number reads 0.
void readInt(Tag tag, const char* line, int* field) {
  char value[kValueLength + 1];
  if (KUExtractField(kTags[tag], line, value, kValueLength) != 0) KUSafeATOI(value, field);
}

void readFloat(Tag tag, const char* line, float* field) {
  char value[kValueLength + 1];
  if (KUExtractField(kTags[tag], line, value, kValueLength) != 0) KUSafeATOF(value, field);
}

int readText(Tag tag, const char* line, char* value) {
  return KUExtractField(kTags[tag], line, value, kValueLength);
}

}  // namespace

int CKVGen::KVSave(const char* path) {
  if (kutil::detail::isEmpty(path)) return 0;
  FILE* f = std::fopen(path, "w");
  if (f == nullptr) return 0;
  if (writeLine(f, "[VGEN]") == 0) {
    std::fclose(f);
    return 0;
  }
  writeSegmentLine(f, "[NRM]", m_normalDirection);
  writeSegmentLine(f, "[DTA]", m_deltaTranslation);
  writeSegmentLine(f, "[DRO]", m_deltaRotation);
  writeSegmentLine(f, "[FPT]", m_frontPlaneTexture);
  writeSegmentLine(f, "[FTI]", m_frontTiling);
  writeSegmentLine(f, "[BPT]", m_backPlaneTexture);
  writeSegmentLine(f, "[BTI]", m_backTiling);
  writeSegmentLine(f, "[FST]", m_wrapSurfaceTexture);
  writeSegmentLine(f, "[STI]", m_wrapTiling);
  writeSegmentLine(f, "[FIC]", m_frontIconIndex);
  writeSegmentLine(f, "[BIC]", m_backIconIndex);
  writeSegmentLine(f, "[WIC]", m_wrapIconIndex);
  // A generator without a seed plane simply has no seed block.
  for (tagKExtrudeVertex* v = m_seedPlane != nullptr ? m_seedPlane->vertices : nullptr; v != nullptr;
       v = v->next) {
    writeLine(f, "[SED]");
    writeSegmentLine(f, "[SEX]", v->point.position.x);
    writeSegmentLine(f, "[SEY]", v->point.position.y);
    writeSegmentLine(f, "[SEZ]", v->point.position.z);
    writeLine(f, "[DES]");
  }
  for (tagKExtrudeInstruction* ins = m_instructions; ins != nullptr; ins = ins->next) {
    writeLine(f, "[INS]");
    writeSegmentLine(f, "[CMD]", ins->code);
    writeSegmentLine(f, "[IVX]", ins->vector.x);
    writeSegmentLine(f, "[IVY]", ins->vector.y);
    writeSegmentLine(f, "[IVZ]", ins->vector.z);
    writeSegmentLine(f, "[IMG]", ins->magnitude);
    writeLine(f, "[SNI]");
  }
  const int status = writeLine(f, "[NEGV]");
  std::fclose(f);
  return status;
}

int CKVGen::KVRestore(const char* path) {
  KVTerminate();
  KVInitialise();
  if (kutil::detail::isEmpty(path)) return 0;
  FILE* f = std::fopen(path, "r");
  if (f == nullptr) return 0;

  enum State { kOutside, kInSeed, kInInstruction, kDead };
  State state = kOutside;
  bool error = false;
  _D3DVECTOR vertex = {0.0f, 0.0f, 0.0f};
  int code = -1;
  _D3DVECTOR vector = {0.0f, 0.0f, 0.0f};
  float magnitude = 1.0f;
  char line[kReadBuffer];
  char text[kValueLength + 1];

  while (std::fgets(line, kReadBuffer, f) != nullptr) {
    const Tag tag = classify(line);
    if (tag == kNone || state == kDead) continue;  // unknown lines are skipped wherever they stand
    switch (state) {
      case kOutside:
        switch (tag) {
          case kNRM:
            readInt(tag, line, &m_normalDirection);
            break;
          case kFTI:
            readInt(tag, line, &m_frontTiling);
            break;
          case kBTI:
            readInt(tag, line, &m_backTiling);
            break;
          case kSTI:
            readInt(tag, line, &m_wrapTiling);
            break;
          case kDTA:
            readFloat(tag, line, &m_deltaTranslation);
            break;
          case kDRO:
            readFloat(tag, line, &m_deltaRotation);
            break;
          case kFPT:
            if (readText(tag, line, text)) KVSetFrontPlaneTexture(text);
            break;
          case kBPT:
            if (readText(tag, line, text)) KVSetBackPlaneTexture(text);
            break;
          case kFST:
            if (readText(tag, line, text)) KVSetWrapSurfaceTexture(text);
            break;
          case kFIC:
            if (readText(tag, line, text)) KVSetFrontIconIndex(text);
            break;
          case kBIC:
            if (readText(tag, line, text)) KVSetBackIconIndex(text);
            break;
          case kWIC:
            if (readText(tag, line, text)) KVSetWrapIconIndex(text);
            break;
          case kSED:
            state = kInSeed;
            break;
          case kINS:
            state = kInInstruction;
            break;
          // Deliberately: a stray closing tag ends the useful part of the file without an error.
          case kDES:
          case kSNI:
            state = kDead;
            break;
          default:
            break;
        }
        break;
      case kInSeed:
        switch (tag) {
          case kSEX:
            readFloat(tag, line, &vertex.x);
            break;
          case kSEY:
            readFloat(tag, line, &vertex.y);
            break;
          case kSEZ:
            readFloat(tag, line, &vertex.z);
            break;
          case kDES:
            KVAddSeedVertex(&vertex);
            vertex = {0.0f, 0.0f, 0.0f};
            state = kOutside;
            break;
          default:
            error = true;
            break;
        }
        break;
      case kInInstruction:
        switch (tag) {
          case kCMD:
            readInt(tag, line, &code);
            break;
          case kIVX:
            readFloat(tag, line, &vector.x);
            break;
          case kIVY:
            readFloat(tag, line, &vector.y);
            break;
          case kIVZ:
            readFloat(tag, line, &vector.z);
            break;
          case kIMG:
            readFloat(tag, line, &magnitude);
            break;
          case kSNI:
            KVAddInstruction(code, &vector, magnitude);
            code = -1;
            vector = {0.0f, 0.0f, 0.0f};
            magnitude = 1.0f;
            state = kOutside;
            break;
          default:
            error = true;
            break;
        }
        break;
      case kDead:
        break;
    }
  }
  std::fclose(f);
  // An open block at the end of the file is dropped.
  if (error || m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  return KVUpdateVertexDependencies();
}
