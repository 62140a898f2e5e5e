// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The shape file: one tagged value a line, from "[VGEN]" to "[NEGV]".
#include <cstddef>
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

// Where the value of a tagged line goes: an integer or float field, or a text
// setter of the generator.
struct Field {
  Tag tag;
  int* number;
  float* real;
  int (CKVGen::*text)(const char*);
};

Field numberField(Tag tag, int* field) { return {tag, field, nullptr, nullptr}; }
Field realField(Tag tag, float* field) { return {tag, nullptr, field, nullptr}; }
Field textField(Tag tag, int (CKVGen::*setter)(const char*)) { return {tag, nullptr, nullptr, setter}; }

const Field* findField(const Field* fields, std::size_t count, Tag tag) {
  for (std::size_t i = 0; i < count; ++i)
    if (fields[i].tag == tag) return &fields[i];
  return nullptr;
}

// Takes the value of the line's own segment into the field; a line without it
// leaves the field as it was, and a rejected number reads 0.
void readField(CKVGen& gen, const Field& field, const char* line) {
  char value[kValueLength + 1];
  if (KUExtractField(kTags[field.tag], line, value, kValueLength) == 0) return;
  if (field.number != nullptr) {
    KUSafeATOI(value, field.number);
  } else if (field.real != nullptr) {
    KUSafeATOF(value, field.real);
  } else {
    (gen.*field.text)(value);
  }
}

// The reader of a shape file, line by line. Outside a block, settings lines
// fill their fields and "[SED]" or "[INS]" opens a block; inside a block only
// its own fields and its closing tag are allowed, anything else marks an error.
// A closing tag outside a block ends the useful part of the file: every later
// line is skipped. Lines with no known tag are skipped wherever they stand.
class ShapeReader {
 public:
  template <std::size_t N>
  ShapeReader(CKVGen& gen, const Field (&settings)[N])
      : m_gen(gen), m_settings(settings), m_settingCount(N) {}
  ShapeReader(const ShapeReader&) = delete;
  ShapeReader& operator=(const ShapeReader&) = delete;

  void take(const char* line) {
    const Tag tag = classify(line);
    if (tag == kNone) return;
    switch (m_state) {
      case State::outside:
        outside(tag, line);
        break;
      case State::inSeed:
        if (!inBlock(m_seedFields, tag, kDES, line)) break;
        m_gen.KVAddSeedVertex(&m_vertex);
        m_vertex = {0.0f, 0.0f, 0.0f};
        m_state = State::outside;
        break;
      case State::inInstruction:
        if (!inBlock(m_instructionFields, tag, kSNI, line)) break;
        m_gen.KVAddInstruction(m_code, &m_vector, m_magnitude);
        m_code = -1;
        m_vector = {0.0f, 0.0f, 0.0f};
        m_magnitude = 1.0f;
        m_state = State::outside;
        break;
      case State::dead:
        break;
    }
  }

  /// True once a line inside a block was not one of the block's.
  bool failed() const { return m_error; }

 private:
  enum class State { outside, inSeed, inInstruction, dead };

  void outside(Tag tag, const char* line) {
    if (tag == kSED) {
      m_state = State::inSeed;
    } else if (tag == kINS) {
      m_state = State::inInstruction;
    } else if (tag == kDES || tag == kSNI) {
      m_state = State::dead;  // deliberately without an error
    } else if (const Field* f = findField(m_settings, m_settingCount, tag)) {
      readField(m_gen, *f, line);
    }
  }

  // True for the block's closing tag; a field of the block is read, anything else is an error.
  template <std::size_t N>
  bool inBlock(const Field (&fields)[N], Tag tag, Tag closing, const char* line) {
    if (tag == closing) return true;
    if (const Field* f = findField(fields, N, tag)) {
      readField(m_gen, *f, line);
    } else {
      m_error = true;
    }
    return false;
  }

  CKVGen& m_gen;
  const Field* m_settings;
  std::size_t m_settingCount;
  State m_state = State::outside;
  bool m_error = false;
  _D3DVECTOR m_vertex = {0.0f, 0.0f, 0.0f};  // the seed block being read
  int m_code = -1;                           // the instruction block being read
  _D3DVECTOR m_vector = {0.0f, 0.0f, 0.0f};
  float m_magnitude = 1.0f;
  const Field m_seedFields[3] = {realField(kSEX, &m_vertex.x), realField(kSEY, &m_vertex.y),
                                 realField(kSEZ, &m_vertex.z)};
  const Field m_instructionFields[5] = {numberField(kCMD, &m_code), realField(kIVX, &m_vector.x),
                                        realField(kIVY, &m_vector.y), realField(kIVZ, &m_vector.z),
                                        realField(kIMG, &m_magnitude)};
};

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
  const Field settings[] = {
      numberField(kNRM, &m_normalDirection),
      realField(kDTA, &m_deltaTranslation),
      realField(kDRO, &m_deltaRotation),
      textField(kFPT, &CKVGen::KVSetFrontPlaneTexture),
      numberField(kFTI, &m_frontTiling),
      textField(kBPT, &CKVGen::KVSetBackPlaneTexture),
      numberField(kBTI, &m_backTiling),
      textField(kFST, &CKVGen::KVSetWrapSurfaceTexture),
      numberField(kSTI, &m_wrapTiling),
      textField(kFIC, &CKVGen::KVSetFrontIconIndex),
      textField(kBIC, &CKVGen::KVSetBackIconIndex),
      textField(kWIC, &CKVGen::KVSetWrapIconIndex),
  };
  ShapeReader reader(*this, settings);
  char line[kReadBuffer];
  while (std::fgets(line, kReadBuffer, f) != nullptr) reader.take(line);
  std::fclose(f);
  // An open block at the end of the file is dropped.
  if (reader.failed() || m_seedPlane == nullptr || m_seedPlane->vertices == nullptr) return 0;
  return KVUpdateVertexDependencies();
}
