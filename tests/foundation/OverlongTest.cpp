// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The one sweep of hostile input over every exported entry point that takes
// or returns text: 10,000-character texts, null pointers, 10,000-character
// lines and binary junk. Outputs are heap blocks of exactly the documented
// capacity, pre-filled with a marker, so the sanitizers see a one-byte overrun
// and the tests see a write where none is allowed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "../services/ServicesTestSupport.h"
#include "KUtil.h"
#include "Overlong.h"
#include "TestHooks.h"
#include "TestSupport.h"

namespace {

using namespace kutil::test;

#define ROW KUTIL_BUFFER_CASE
const std::string kKeep = kUntouched, kAny = kTerminated;

// n copies of c; Lc(c) is the 10,000-character one as a C string.
std::string L(char c, std::size_t n = kLong) { return longText(c, n); }
const char* Lc(char c) {
  static std::string texts[128];
  return (texts[c & 127].empty() ? texts[c & 127] = L(c) : texts[c & 127]).c_str();
}

std::string junk() {
  std::string j;
  for (int i = 0; i < 4096; ++i) j += static_cast<char>((i * 131 + 7) & 0xff);
  return j + "\n[[[]]][999999999999]\r\r\n[A][-5]\n#\n?KALDOKWQDIR?\n";
}

bool holds(const std::string& path, const std::string& text) {
  return readFile(path).find(text) != std::string::npos;
}
std::size_t tally(const std::string& path, char c) {
  const std::string text = readFile(path);
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

// Every text left in a queue, popped into exact buffers; the pop after the last writes nothing.
std::vector<std::string> popTexts(CKFIFO& fifo) {
  std::vector<std::string> texts;
  int code = 0, flags = 0;
  float magnitude = 0;
  for (OutBuffer text(KFI_TEXT_LEN + 1); fifo.FIPopFIFOCommand(&code, &magnitude, text.data(), &flags) == 1;
       text = OutBuffer(KFI_TEXT_LEN + 1))
    texts.push_back(text.str());
  return texts;
}

// The text data of every row of a table, read into exact buffers.
std::vector<std::string> rowTexts(CKDecide& table) {
  std::vector<std::string> texts;
  CKActionRow* row = nullptr;
  for (int more = table.DESelectFirstActionRow(&row); more; more = table.DESelectNextActionRow(&row)) {
    OutBuffer text(KAR_TEXTDATA_LEN + 1);
    texts.push_back(row->ARGetTextData(text.data()) == 0 ? "" : text.str());
  }
  return texts;
}

// A row made through the interface and added to table.
CKActionRow* addRow(CKDecide& table, int type, const std::string& group, int action,
                    const std::string& text) {
  auto* row = new CKActionRow;
  row->ARInitialise();
  row->ARSetRowType(type);
  row->ARSetEvent(type == KAR_ROW_ON ? KAR_EVENT_SELECT : 0);
  row->ARSetGrouping(group.c_str());
  row->ARSetAction(action);
  row->ARSetTextData(text.c_str());
  table.DEAddActionRow(row);
  return row;
}

// A fresh row's text field after a 10,000-character text (kept, cut) and a null one (refused).
int rowField(int (CKActionRow::*set)(const char*), int (CKActionRow::*get)(char*) const, char* o) {
  CKActionRow row;
  row.ARInitialise();
  return (row.*set)(Lc('t')) == 1 && (row.*set)(nullptr) == 0 ? (row.*get)(o) : -1;
}

// Restores a shape file and builds whatever was read: junk must not crash the generator either.
int restoreAndBuild(CKVGen& gen, const char* path) {
  const int status = gen.KVRestore(path);
  gen.KVTesselateSeedPlane();
  gen.KVGenerate();
  return status;
}

std::vector<std::string> g_heard;  // what the message sink and the sound player were handed
void hear(const char*, const char* text) { g_heard.push_back(text); }
int play(const char* file, unsigned int) { return (g_heard.push_back(file ? file : "<stop>"), 1); }

const char* const kSettings = "Software\\kaldo3d\\Kaldo\\CurrentVersion";
HKEY const hk = HKEY_CURRENT_USER;

class Overlong : public ::testing::Test {
 protected:
  void SetUp() override {
    g_heard.clear();
    kutil::detail::setSoundPlayer(play);
    KUSetMessageSink(hear);
  }
  void TearDown() override {
    kutil::detail::resetPathVariables();
    kutil::detail::resetSpecialFolderCaches();
    kutil::detail::setSoundPlayer(nullptr);
    KUSetMessageSink(nullptr);
    KULoadStringTerminate();
    KUSetComment("restored");
    KUSetError(5);
  }
  std::string file(const char* leaf, const std::string& content) {
    writeFile(m_dir.file(leaf), content);
    return m_dir.file(leaf);
  }
  TempDir m_dir;
  const std::string to = m_dir.path() + "/", missing = to + L('m');
  RegistrySandbox m_registry;
#if !defined(_WIN32)
  ScopedEnv m_data{"XDG_DATA_HOME", m_dir.file("data")}, m_config{"XDG_CONFIG_HOME", m_dir.file("config")};
#endif
};

// Every call that hands text out or takes more than one text, in order on shared objects.
TEST_F(Overlong, EveryTextEntryPointKeepsWithinItsBuffer) {
  const std::string tag = L('T', 5000), d = "/" + L('d'), src = file("src.bmp", "BM123456"),
                    longKvc = file("long.kvc", "IN " + L('g') + " PLAY \"" + L('p') + "\"\n"),
                    list = file("hall.ksl", "/" + L('l') + "\n/short/a.kwq\n"), rec = m_dir.file("in.rec"),
                    full = m_dir.file("full.kvc"), trace = m_dir.file("trace.txt"),
                    sheets = file("lang.kiq", "[iid][1]1[itx][10000]" + L('t') + "\n[iid][1]3[itx][128]" +
                                                  L('u', 128) + "\n"),
                    log = m_dir.file("kaldo.log"), key = "Software\\kaldo3d\\KUtilTest\\" + L('k');
  int i = 7, n = 0;
  unsigned int id = 0;
  float f = 7;
  const std::string shape = m_dir.file("a.ksf"), tex = "/" + L('d', 200) + "/" + L('t', 70) + ".bmp";
  const char* const sc = shape.c_str();
  _D3DVECTOR v = {1, 2, 3};
  const _D3DVECTOR huge = {-FLT_MAX, -FLT_MAX, -FLT_MAX};
  OutBuffer name(261);
  const std::vector<std::string> four = {L('a', 260), L('b', 260), "", ""};
  CKFIFO fifo, copied, moved, in, out;
  for (CKFIFO* q : {&fifo, &copied, &moved, &in, &out}) q->FIInitialise();
  CKActionRow* first = nullptr;
  CKInputRecord recorder;
  CKDecide table, copy, kcv;
  for (CKDecide* t : {&table, &copy, &kcv}) t->DEInitialise();
  // A full-length AT row runs at every tick; the CALL names a group longer than the call stack.
  CKActionRow* at = addRow(table, KAR_ROW_AT, "M" + L('A'), KAR_ACTION_GOTO, L('t'));
  addRow(table, KAR_ROW_ON, "", KAR_ACTION_CALL, L('c', 200));
  addRow(table, KAR_ROW_IN, L('c', 200), KAR_ACTION_RETURN, "");
  at->ARSetRepeatClicks(INT_MAX);
  table.DEAttachInputFIFO(&in);
  table.DEAttachOutputFIFO(&out);
  for (const std::string& t : {"/d/" + L('p'), "?KALDOKWQDIR?" + L('l'), "/r/" + L('r', 240) + ".ksf"})
    addRow(kcv, KAR_ROW_ON, "", KAR_ACTION_LOAD, t);
  CKVGen gen, back;
  gen.KVInitialise();
  back.KVInitialise();
  for (const _D3DVECTOR& c : {v, _D3DVECTOR{4, 2, 3}, _D3DVECTOR{4, 2, 6}}) gen.KVAddSeedVertex(&c);
  CKaldoInfo info, loaded;
  CInfoSheet* loose = nullptr;
  CKSound sound;
  sound.SOInitialise();
  sound.SOEnableSound(1);
  const BufferCase cases[] = {
    // ---- text toolkit ----
    ROW(264, 1, KUSetComment(Lc('c')) == 1 ? KUGetComment(o) : -1, L('c', 263)),
    ROW(264, 0, KUSetComment(nullptr) == 1 ? KUGetComment(o) : -1, kKeep),
    ROW(5000 + 7 + kLong + 1, 1, KUMkLineSegment(o, tag.c_str(), Lc('v'), &i), tag + "[10000]" + L('v')),
    ROW(5000 + 15 + 1, 1, KUMkNumSegment(o, tag.c_str(), INT_MIN, &i), tag + "[11]-2147483648"),
    // The widest double prints 309 digits before ".0000".
    ROW(5000 + 320 + 1, 1, KUMkDoubleSegment(o, tag.c_str(), -DBL_MAX, &i) == 1 && i == 5000 + 320, kAny),
    ROW(261, 1, KUExtractField("[V]", ("[A][1]a[V][10000]" + L('x')).c_str(), o, 260), L('x', 260)),
    ROW(8, 0, KUExtractField(Lc('['), "[A][1]a", o, 7), kKeep),
    ROW(8, 0, KUExtractField("[A]", ("[A" + L('q')).c_str(), o, 7), kKeep),
    ROW(8, 0, KUExtractField("[B]", "[A][99999999999999999999]x[B][1]y", o, 7), kKeep),
    ROW(8, 1, KUExtractField("[A]", "[A][99999999999]xy", o, 7), "xy"),
    ROW(8, 0, KUExtractField(nullptr, "[A][1]a", o, 7) + KUExtractField("[A]", nullptr, o, 7), kKeep),
    ROW(261, 1, KUSafeStrncpy(o, Lc('k'), 260), L('k', 260)),
    ROW(0, 1, KUstrNIcmp(Lc('k'), (L('k', 9999) + "K").c_str(), INT_MAX)),
    ROW(0, 1,
        KUSafeATOI(Lc('9'), &i) == 1 && i == INT_MAX && KUSafeATOI(("-" + L('9')).c_str(), &i) && i < 0),
    ROW(0, 1, KUSafeATOF(Lc('9'), &f) == 1 && std::isinf(f) && KUSafeATOF(("0." + L('0')).c_str(), &f) && !f),
    ROW(kLong + 1, 1, KUNoNewLine(put(o, L('n', kLong - 1) + "\n", kLong + 1)), L('n', kLong - 1)),
    ROW(kLong + 3, 1, KUEncloseInQuotes(put(o, L('q'), kLong + 3)), "\"" + L('q') + "\""),
    ROW(kLong + 3, 1, KUStripQuotes(put(o, "\"" + L('q') + "\"", kLong + 3)), L('q')),
    ROW(kLong + 4, 1, KUReverse(o, ("<" + L('r') + "s>").c_str()), "<s" + L('r') + ">"),
    ROW(4, 0, KUReverse(o, nullptr), kKeep),
    ROW(261, 1, KUCutString(Lc('f'), '|', 0, o), L('f', 260)),
    // The search stops at position 260: the second field is cut there.
    ROW(261, 1, KUCutString(("a|" + L('g') + "|c").c_str(), '|', 1, o), L('g', 258)),
    ROW(264, 1, KUSubstitute(put(o, "C:\\home\\" + L('s', 255)), "c:/HOME/", Lc('R')), L('R', 263)),
    ROW(3 * kLong + 1, 1, KUCommandSubstitue((L('s') + "%" + L('t')).c_str(), "%", Lc('r'), o),
        L('s') + L('r') + L('t')),
    ROW(kLong + 1, 0, KUCommandSubstitue(Lc('s'), Lc('%'), "x", o), L('s')),
    ROW(1, 0, KUCommandSubstitue(nullptr, nullptr, nullptr, o), ""),
    ROW(261, 1, KUGetSimpleArgument(("\"" + L('w') + "\" " + L('z')).c_str(), o), L('z', 260)),
    ROW(261, 0, KUGetSimpleArgument(Lc('w'), o), kKeep),
    ROW(261, 1, KUGetLastPathElement(o, ("C:\\d\\" + L('e') + "\\").c_str()), L('e', 260)),
    ROW(80, 1, KUGetTimeStamp(o), kAny),
    ROW(16, 1, KUGetSecondStamp(o) == 1 && std::strlen(o) == 6, kAny),
    // ---- files ----
    ROW(0, 1, KUFileHasEnding((L('n') + ".BMP").c_str(), ".bmp") == 1 && KUFileHasEnding(".b", Lc('n')) == 0),
    ROW(261, 1, KUGetPathFromFile(o, ("C:\\" + L('d', 200) + "\\" + L('e', 200) + "\\x").c_str()), kAny),
    ROW(261, 1, KUGetPathFromFile(o, nullptr), ""),
    ROW(261, 1, KUGetImageComponents((L('i') + "|12|x").c_str(), o, &i, nullptr), L('i', 260)),
    ROW(261, 1, KUGetImageComponents(("p|3|" + L('x')).c_str(), name.data(), &i, o) * (i == 3), L('x', 256)),
    ROW(261, 0, KUGetImageComponents(nullptr, o, &i, o), kKeep),
    ROW(264, 0, KUCopyToTarget(src.c_str(), (to + L('t') + "/").c_str(), o), kKeep),
    ROW(264, 0, KUCopyToTarget((missing + ".bmp").c_str(), to.c_str(), o), kAny),
    ROW(264, 1, KUCopyToTarget(nullptr, to.c_str(), o) * KUCopyToTarget(src.c_str(), nullptr, o), kKeep),
    // ---- command queues, action rows and the recorder ----
    ROW(0, 1,
        fifo.FIPushFIFOCommand(33, 1, Lc('a'), 0) == 1 && fifo.FIPushFIFOCommand(34, 1, &v, Lc('b'), 0)),
    ROW(0, 1,
        fifo.FIPushFIFOCommand(35, 1, nullptr, nullptr, 0) == 1 && fifo.FIPushFIFOCommand(36, 1, nullptr, 0)),
    ROW(261, 1, fifo.FIPeekFIFOCommand(&i, &f, o, &n), L('a', 260)),
    ROW(0, 1, fifo.FIPeekFIFOTo(&copied, KFI_SELECT_ALL, KFI_MODE_KEEP) ? moved.FIUpdateFIFOFrom(&fifo) : -1),
    ROW(0, 1, popTexts(copied) == four && popTexts(moved) == four && popTexts(fifo).empty()),
    ROW(65, 1, rowField(&CKActionRow::ARSetGrouping, &CKActionRow::ARGetGrouping, o), L('t', 64)),
    ROW(73, 1, rowField(&CKActionRow::ARSetCallStack, &CKActionRow::ARGetCallStack, o), L('t', 72)),
    ROW(261, 1, rowField(&CKActionRow::ARSetTextData, &CKActionRow::ARGetTextData, o), L('t', 260)),
    ROW(261, 1, recorder.IRSetFileName(Lc('f'), KIR_MODE_PLAY) ? recorder.IRGetFileName(o) : -1, L('f', 260)),
    ROW(261, 0, recorder.IRGetCommand(&i, &n, o), kKeep),
    // Long texts through a recording: each cut to its field, every line within the reader's.
    ROW(0, 1, recorder.IRSetFileName(rec.c_str(), 0) ? recorder.IRStoreCommand(31, 0, Lc('p'), 0) : -1),
    ROW(0, 1,
        recorder.IRStoreCommand(32, 0, (L('q', 99) + "\n" + L('r')).c_str(), 0) && recorder.IRTerminate()),
    ROW(261, 1, recorder.IRSetFileName(rec.c_str(), 1) ? recorder.IRGetCommand(&i, &n, o) : -1, ""),
    ROW(261, 1, recorder.IRGetCommand(&i, &n, o), L('p', 260)),
    ROW(261, 1, recorder.IRGetCommand(&i, &n, o) == 1 && readFile(rec).size() < 3 * KIR_LINE_LEN, L('q', 99)),
    // ---- behaviour tables, their files and the clock ----
    ROW(KDE_ROW_TEXT_SIZE, 1, table.DEEnableRowNumbering() ? table.DEWriteRow(o, at, INT_MIN) : -1,
        "-2147483648: AT M" + L('A', 63) + " GOTO \"" + L('t', 260) + "\" FOR 2147483647 "),
    ROW(KDE_ROW_TEXT_SIZE, 0, table.DEWriteRow(o, nullptr, 1), kKeep),
    // Full fields make a line longer than the reader takes: the reload keeps one cut row and fails.
    ROW(0, 1, table.DEStoreToFile(full.c_str()) == 1 && copy.DELoadFromFile(full.c_str()) == 0),
    ROW(0, 1, rowTexts(copy).size() == 1 && rowTexts(copy)[0] == L('t', rowTexts(copy)[0].size())),
    ROW(0, 1, copy.DEDeleteAllActionRows() == 1 && copy.DELoadFromFile(longKvc.c_str()) == 0),
    ROW(65, 1, copy.DESelectFirstActionRow(&first) ? first->ARGetGrouping(o) : -1, L('g', 64)),
    ROW(KDE_COMMENT_LEN + 1, 1, copy.DEGetErrorID(&id) * copy.DEGetComment(o) == 1 && std::strlen(o) == 63,
        kAny),
    ROW(0, 1,
        copy.DEMatchAction((L(' ') + "PLAYBACK" + L('x')).c_str(), &(i = 0), &n) == 1 && i == kLong + 8),
    ROW(0, 0, copy.DEMatchAction(Lc(' '), &(i = kLong + 1), &n)),
    ROW(0, 1, table.DEOpenTrace(trace.c_str(), 0) == 1 && in.FIPushFIFOCommand(KAR_EVENT_SELECT, 1) == 1),
    ROW(0, 1,
        table.DEClock() == 1 && table.DEClock() == 1 && table.DEReset() == 1 && table.DECloseTrace() == 1),
    ROW(261, 1, holds(trace, "[" + L('t', 260) + "]") ? out.FIPopFIFOCommand(&i, &f, o, &n) : -1,
        L('t', 260)),
    ROW(0, 1, copy.DECopyFrom(&table) == 1 && rowTexts(copy)[0] == L('t', 260)),
    // ---- path variables and normalisers (in-place names of 264 bytes) ----
    ROW(0, 1, KUSetNormalisationVariables(d.c_str(), d.c_str(), d.c_str(), d.c_str())),
    ROW(264, 1, KUSubstitute4Directory(put(o, d)), "?KALDOHOMEDIR?"),
    ROW(264, 1, KUSubstitute4Variable(put(o, "?KALDOHOMEDIR?/file.exe"), "?X?", "y"), d.substr(0, 263)),
    ROW(0, 1, KUSetNormalisationVariables(nullptr, nullptr, nullptr, nullptr)),
    ROW(264, 0, KUSubstitute4Directory(put(o, "/a/b.exe")), "/a/b.exe"),
    ROW(264, 1, KUSubstitute4Variable(put(o, "?KALDOKWQDIR?" + L('n', 250)), "?KALDOKWQDIR?", Lc('V')),
        L('V', 263)),
    ROW(264, 0, KUSubstitute4Variable(put(o, L('u', 263)), Lc('u'), "x"), L('u', 263)),
    ROW(264, 0, KUSubstitute4Variable(put(o, "?X?abc"), nullptr, nullptr), "?X?abc"),
    ROW(264, 1, KUConvertToRelative(put(o, "/d/" + L('c', 250) + ".kwq")), kAny),
    ROW(264, 1, KUDeRelativiseFileName(d.c_str(), put(o, "?KALDOKWQDIR?" + L('r', 200))), kAny),
    ROW(264, 1, KUDeRelativiseFileName(nullptr, put(o, "?KALDOKWQDIR?name.bmp")), "name.bmp"),
    ROW(0, 0, KUDeRelativiseFileName("/a/b.kvc", nullptr) + KUSubstitute4Variable(nullptr, "?X?", "y")),
    ROW(0, 1, KUCopySkyBoxFaces(("/" + L('s') + "_fw.bmp").c_str(), (to + L('k') + "_up.bmp").c_str())),
    ROW(0, 0, KUCopySkyBoxFaces(nullptr, "a_up.bmp") + KUCopySkyBoxFaces("a_fw.bmp", nullptr)),
    // A long scene-list line arrives in pieces, each a name line of its own: none is lost.
    ROW(0, 1, KUConvertKSLToRelative(list.c_str()) == 1 && readLines(list).back() == "?KALDOKWQDIR?a.kwq"),
    ROW(0, 1, tally(list, 'l') == kLong && KUIsKSLFileNormalised(list.c_str()) == 1),
    ROW(0, 1, KUDeRelativiseKSL(list.c_str(), "?KALDOKWQDIR?", Lc('D'))),
    ROW(0, 1, KUCopyKSLFileParts(list.c_str(), (to + L('t') + "/").c_str())),
    ROW(0, 1, KURelativiseKCV(&kcv) == 1 && KUDeRelativiseKCV(Lc('D'), &kcv) == 1),
    ROW(0, 1,
        KUCopyKCVForNormalise((to + L('t') + "/").c_str(), &kcv) && KUCopyKCVForNormalise(to.c_str(), &kcv)),
    ROW(0, 1, rowTexts(kcv).size() == 3 && rowTexts(kcv)[0] != "<unterminated>"),
    ROW(0, 0,
        KURelativiseKCV(nullptr) + KUDeRelativiseKCV(nullptr, &kcv) + KUCopyKCVForNormalise(nullptr, &kcv)),
    // ---- the vertex generator ----
    ROW(277, 1, gen.KVSetWrapSurfaceTexture(Lc('c')) ? gen.KVGetWrapSurfaceTexture(o) : -1, L('c', 276)),
    ROW(17, 1, gen.KVSetBackIconIndex(Lc('2')) ? gen.KVGetBackIconIndex(o) : -1, L('2', 16)),
    // Full-length fields and extreme numbers survive save and restore.
    ROW(0, 1, gen.KVAddInstruction(INSTR_EXTRUDE, &huge, -FLT_MAX) * gen.KVSave(sc) * back.KVRestore(sc)),
    ROW(277, 1, back.KVGetWrapSurfaceTexture(o), L('c', 276)),
    ROW(17, 1, back.KVGetBackIconIndex(o), L('2', 16)),
    ROW(0, 1, back.KVGetFirstInstruction(&i, &v, &f) == 1 && v.x == -FLT_MAX && f == -FLT_MAX),
    ROW(277, 0, gen.KVSetFrontPlaneTexture(nullptr) ? gen.KVGetFrontPlaneTexture(o) : -1, kKeep),
    ROW(17, kEither, (gen.KVSetWrapIconIndex(nullptr), gen.KVGetWrapIconIndex(o))),
    ROW(0, 0, gen.KVGetBackPlaneTexture(nullptr) + gen.KVGetBackIconIndex(nullptr)),
    // The normaliser keeps whole a texture too long to relativise and relativises one that fits.
    ROW(0, 1,
        gen.KVSetFrontPlaneTexture(tex.c_str()) *
            gen.KVSetWrapSurfaceTexture(("/" + L('d', 150) + "/w.bmp").c_str()) * gen.KVSave(sc) *
            KUConvertKSFToRelative(sc) * back.KVRestore(sc) * KUIsKSFFileNormalised(sc)),
    ROW(277, 1, back.KVGetWrapSurfaceTexture(o), "?KALDOKWQDIR?w.bmp"),
    ROW(277, 1, back.KVGetFrontPlaneTexture(o) && (o == tex || o == "?KALDOKWQDIR?" + L('t', 70) + ".bmp"),
        kAny),
    ROW(0, 0, KUMkVertexSegment(nullptr, &v)),
    ROW(140, 1, KUMkVertexSegment(o, &huge), kAny),
    ROW(0, 1, KUExtractVertexSegment(&v, (L('1') + ",2,3").c_str()) == 1 && std::isinf(v.x)),
    ROW(0, 1, KUExtractVertexSegment(&v, ("1," + L('0') + ".5,3").c_str()) == 1 && v.y == 0.5f),
    ROW(0, 0, KUExtractVertexSegment(&v, ("1,2" + L(' ')).c_str()) + KUExtractVertexSegment(&v, nullptr)),
    ROW(37, 1, gen.KVCheckIntegrity(o, nullptr) ? gen.KVCheckIntegrity(nullptr, nullptr) : -1, kKeep),
    // ---- settings ----
    ROW(261, kEither, (KUSetRegText(hk, kSettings, "L", Lc('v')), KUGetRegText(hk, kSettings, "L", o))),
    ROW(261, kEither,
        (KUSetRegText(hk, key.c_str(), Lc('n'), "y"), KUGetRegText(hk, key.c_str(), Lc('n'), o))),
    ROW(261, 1, KUSetRegGraphics(L('g', 260).c_str()) ? KUGetRegGraphics(o) : -1, L('g', 260)),
    ROW(261, 1, KUSetRegSharedMemory(L('s', 260).c_str()) ? KUGetRegSharedMemory(o) : -1, L('s', 260)),
    ROW(0, kEither, (KUSetRegText(hk, kSettings, "HintNumber", Lc('9')), KUGetRegHintNumber(&id))),
    ROW(0, 0, KUGetRegText(hk, kSettings, "x", nullptr)),
    // ---- info sheets, messages and the log ----
    ROW(261, 1, info.KISetLogFileName(Lc('l')) ? info.KIGetLogFileName(o) : -1, L('l', 260)),
    ROW(259, 1, info.KISetComment(Lc('c')) ? info.KIGetComment(o) : -1, L('c', 258)),
    ROW(259, 1, info.KICatComment(Lc('d')) ? info.KIGetComment(o) : -1, L('c', 258)),
    ROW(259, 1, info.KISetComment("x") && info.KICatComment(Lc('d')) ? info.KIGetComment(o) : -1,
        "x\n         " + L('d', 258 - 11)),
    ROW(259, 0, info.KISetComment(nullptr) ? info.KIGetComment(o) : -1, kKeep),
    ROW(261, 0, info.KISetLogFileName(nullptr) ? info.KIGetLogFileName(o) : -1, kKeep),
    ROW(0, 1, info.KICreateInfoSheet(nullptr, 1, &loose) == 0 && loose == nullptr),
    ROW(261, 1, info.KINewInfoSheet(Lc('m'), 42) ? (info.KISetInfoMessage(42), info.KIGetInfoText(o)) : -1,
        L('m', 260)),
    ROW(0, 1, info.KIFetchStringForID(42) == L('m') && info.KIDisplayInfo() == 0 && g_heard.back() == L('m')),
    ROW(261, 1, info.KISetInfoText(L('n')) ? info.KIGetInfoText(o) : -1, L('n', 260)),
    // The log takes whole texts.
    ROW(0, 1,
        info.KISetLogFileName(log.c_str()) && info.KISetInfoType(1) ? info.KIFlushInfoMessage(Lc('f')) : -1),
    ROW(0, 1, info.KISetInfoMessage(42) == 1 && info.KIFlushInfoMessage(nullptr) == 1),
    ROW(0, 1, holds(log, "MESSAGE: " + L('f')) && holds(log, "MESSAGE: " + L('n'))),
    ROW(0, 0, info.KIWriteAllSheets(nullptr) + info.KIWriteSingleSheet(nullptr, nullptr)),
    ROW(0, 1, loaded.KILoadInfoSheets(sheets.c_str())),
    ROW(261, 1, (loaded.KISetInfoMessage(1), loaded.KIGetInfoText(o)), kAny),
    ROW(261, 1, (loaded.KISetInfoMessage(3), loaded.KIGetInfoText(o)), L('u', 128)),
    ROW(129, 1, KULoadStringInitialise(sheets.c_str()) ? KULoadString(3, o, 129) : -1, L('u', 128)),
  // ---- shell helpers and sound ----
#if !defined(_WIN32)
    // A data folder too long for a path gives no screen-saver folder.
    ROW(261, 0, (ScopedEnv("XDG_DATA_HOME", to + L('x', 300)), KUGetScreenSaverDirectory(o)), kKeep),
    ROW(0, 0, KURawRunSysCmd(nullptr, Lc('v'), missing.c_str(), Lc('p'), Lc('d'))),
#endif
    ROW(0, 1, sound.SORequestSound(Lc('a'), 5) == 1 && sound.SORequestSound(Lc('b'), 1) == 1),
    ROW(0, 1, sound.SOPlaySound() == 1 && g_heard.back() == L('a', 260) && sound.SOPlaySound() == 1),
    ROW(0, 1, g_heard.back() == L('b', 260)),
  };
  for (const BufferCase& c : cases) checkCase(c);

  // Every entry point that takes a single text, most of them a path: a 10,000-character text (a path to
  // nowhere) and a null one give the documented status; files of binary junk, 10,000-character lines and
  // fields of absurd lengths give 0 or 1 and never a crash.
  CKSplash splash;
  splash.SPInitialise();
  int a = 0;
  long lines = -3;
  ITEMIDLIST* items = nullptr;
  struct Taker {
    const char* call;
    int longText, null;  // the documented results for a 10,000-character text and for a null one
    std::function<int(const char*)> run;
  };
  // clang-format off
#define T(longText, null, expr) Taker{#expr, longText, null, [&](const char* t) { return int(expr); }}
  const Taker takers[] = {
      T(1, 1, KUSetComment(t)), T(0, 1, KUIsAllSpaces(t)), T(4, 1, KUGetFileType(t)),
      T(0, 0, KUFileHasSkyEnding(t)), T(0, 0, KUIsADriveName(t)), T(0, 0, KUIsVariablised(t)),
      T(0, 0, KUStringContains(t, "\1") + KUStringContains(Lc('k'), t)), T(0, 0, KUIsBitmap(t)),
      T(0, 0, KUIsFileReadable(t)), T(0, 0, KUTouch(t)), T(0, 0, KUAppendLine(t, Lc('x'))),
      T(0, 0, KUClipFile(t, 1, 2)), T(0, 0, KUCountLinesInFile(t, &lines) == 1 ? 1 : lines == -3 ? 0 : -1),
      T(0, 0, CKActionRow::ARGetEventTypeFromText(&i, t)), T(1, 0, table.DESetDelimitingFileTag(t)),
      T(0, 0, table.DEMatchAction(t, &(i = 0), &a)), T(0, 0, table.DEGetMoveType(&i, t)),
      T(0, 0, table.DELoadFromFile(t)), T(0, 0, table.DEStoreToFile(t)), T(0, 0, table.DEOpenTrace(t, 1)),
      T(1, 0, recorder.IRSetFileName(t, 1)),
      T(1, 1, KUSetNormalisationVariables(t, t, t, t)), T(0, 0, KUIsKSLFileNormalised(t)),
      T(0, 1, KUConvertKSLToRelative(t)), T(0, 1, KUDeRelativiseKSL(t, "?KALDOKWQDIR?", Lc('x'))),
      T(0, 1, KUCopyKSLFileParts(t, to.c_str())), T(0, 1, KUConvertANBToRelative(t)),
      T(0, 1, KUCopyANBFileParts(t, to.c_str())), T(0, 1, KUDeRelativiseANB(t, "?KALDOKWQDIR?", Lc('x'))),
      T(0, 0, KUIsKCVFileNormalised(t)), T(0, 1, KUConvertKCVToRelative(t)), T(0, 0, KUDeRelativiseKCV(t)),
      T(0, 1, KUCopyKCVFileParts(t)), T(0, 0, KUDeRelativiseKSF(Lc('d'), t)),
      T(0, 1, KUConvertKSFToRelative(t)), T(0, 1, KUCopyKSFFileParts(t, to.c_str())),
      T(0, 0, KUIsKSFFileNormalised(t)), T(0, 0, restoreAndBuild(gen, t)), T(0, 0, gen.KVSave(t)),
      T(0, 0, info.KILoadInfoSheets(t)), T(0, 0, info.KIConfigForLanguage(t)),
      T(0, 0, KULoadStringInitialise(t)), T(0, 0, info.KISaveFile(t)), T(1, 0, info.KINewInfoSheet(t, 2)),
      T(1, 1, info.KISetComment(t)), T(1, 1, info.KICatComment(t)), T(1, 1, info.KISetLogFileName(t)),
      T(1, 1, info.KIFlushInfoMessage(t)), T(0, 0, sound.SOLoadBackgroundList(t, 1)),
      T(1, 1, sound.SORequestSound(t, 1)), T(1, 1, splash.SPSetText(t)), T(1, 1, splash.SPSetComment(t)),
      T(1, 1, splash.SPSetExtra(t)), T(1, 0, KUSetRegGraphics(t)), T(1, 0, KUSetRegSharedMemory(t)),
      T(0, 0, KURegDeleteKey(t)), T(0, 0, KUIsRegKeyReadable(hk, t)),
      T(0, 0, KURegDeleteFirstSubSubKey(hk, t)),
      T(kEither, 0, KUPath2ItemList(t, &items) == 1 ? KUFreeItemList(items) : 0)};
  // clang-format on
#undef T
  const std::string contents[] = {
      junk(),
      L('x'),
      L('\n'),
      "[VGEN]\n[FPT][10000]" + L('x') + "\n[FIC][10000]" + L('9') + "\n[SED]\n[SEX][10000]" + L('9') +
          "\n[DES]\n",
      "[VGEN]\n[FPT][99999999999999]x\n[BPT][-5]y\n[INS]\n[CMD][1]3\n[IMG][3]nan\n[SNI]\n" + L('\n') +
          "[SED]\n",
      "[CM][2]31[MG][1]0[TX][10000]" + L('x') + "[RP][1]0\n[CM][2]32[MG][1]0[TX][99999999999]y[RP][1]0\n",
      "[iid][1]1[itx][10000]" + L('t') + "\n[iid][10000]" + L('9') + "[itx][2]ok\n[iid][2]12[itx][-4]\n",
      "ON select PLAY \"/" + L('x', 230) + "/a.kwq\"\nON open LOAD " + L('y') + "\nON " + L('x') +
          "\nON cut BY " + L('9'),
      "/" + L('l') + "\n?KALDOKWQDIR?" + L('j', 600) + "\n#\n" + L(' ') + "\n",
  };
  g_heard.clear();
  for (const Taker& taker : takers) {
    SCOPED_TRACE(taker.call);
    const int longText = taker.run((missing + ".anb").c_str());
    EXPECT_TRUE(taker.longText == kEither ? longText == 0 || longText == 1 : longText == taker.longText)
        << longText;
    EXPECT_EQ(taker.null, taker.run(nullptr));
    for (const std::string& content : contents) {
      const int status = taker.run(file("in.anb", content).c_str());
      EXPECT_TRUE(status == 0 || status == 1 || status == taker.longText) << status;
    }
  }
  for (int k = 0; k < 3; ++k) sound.SOPlaySound();
  for (const std::string& played : g_heard) EXPECT_LE(played.size(), 260u);
}

// Pointer arguments that carry no text: a null one is refused (0) and changes nothing.
TEST_F(Overlong, NullPointersAreRefused) {
  CKFootPrint fp;
  fp.FPInitialise();
  for (float x : {0.0f, 4.0f})
    for (float z : {x, 4.0f - x}) fp.FPAddVertex(x, 0.0f, z);
  ASSERT_TRUE(fp.FPUpdateVertexDependencies() == 1 && fp.FPSelectFirstEdge() == 1);
  const _D3DVECTOR v = {1, 0, 1}, inside = {2, 0, 2}, outside = {9, 0, 2};
  _D3DVECTOR out = {9, 9, 9};
  _D3DRMBOX box = {};
  tagKLineEquation line = {};
  tagKPlaneEquation plane = {};
  float f = 9;
  int count = 0;
  CKMarkerList marks;
  tagMarkerItem* found = nullptr;
  marks.MLInitialise();
  // clang-format off
#define N(call) std::pair<const char*, std::function<int()>>{#call, [&] { return call; }}
  const std::pair<const char*, std::function<int()>> calls[] = {
      N(fp.FPGetType(nullptr)), N(fp.FPSetCentreOfGravity(nullptr)), N(fp.FPGetCentreOfGravity(nullptr)),
      N(fp.FPCalcCentreOfGravity(nullptr)), N(fp.FPGetExternalVertex(nullptr)),
      N(fp.FPSetExternalVertex(nullptr)), N(fp.FPGetClearance(nullptr, &f)), N(fp.FPGetBox(nullptr)),
      N(fp.FPSetBox(&box, nullptr)), N(fp.FPCopyBox(&box, nullptr)), N(fp.FPUpdate3DBoxFromVertex(nullptr)),
      N(fp.FPUpdate3DBoxFromBox(&box, nullptr)), N(fp.FPCopyFrom(nullptr)), N(fp.FPAddVertex(nullptr)),
      N(fp.FPGetEdgeFromVector(nullptr)), N(fp.FPUpdateEdgeFromVector(nullptr)),
      N(fp.FPGetEdgeToVector(nullptr)), N(fp.FPGetThisEdgeResist(nullptr)),
      N(fp.FPGetThisEdgeSectorAccess(nullptr)), N(fp.FPGetThisEdgeItemAccess(nullptr)),
      N(fp.FPGetThisEdgeProperty(nullptr)), N(fp.FPGetThisEdgeLineEquation(nullptr)),
      N(fp.FPGetVertexCount(nullptr)), N(fp.FPMakeLineEquation(&line, nullptr, &v)),
      N(fp.FPCopyLineEquation(&line, nullptr)), N(fp.FPTranslate(nullptr)), N(fp.FPInitPlaneEquation(nullptr)),
      N(fp.FPGetPlaneEquation(nullptr)), N(fp.FPCopyPlaneEquation(nullptr, &plane)),
      N(fp.FPMakePlaneEquation(&plane, &v, &v, &v, nullptr)), N(fp.FPSolvePlaneEquation(nullptr, &v, &out)),
      N(fp.FPSolvePlaneEquationBroadly(&plane, &v, nullptr)), N(fp.FPGetConstYVector(nullptr, &v, &out)),
      N(fp.FPGetClearance(&v, &v, nullptr, &out, 0, 1)), N(fp.FPGetFaceClearance(&v, nullptr, &out, &out, 1)),
      N(fp.FPGetLineIntersection(nullptr, &line)), N(fp.FPIsBoundaryCrossed(&v, nullptr)),
      N(fp.FPIsBoundaryCrossedNoMargin(&v, nullptr)), N(fp.FPDoLinesCross(&v, &v, &v, nullptr)),
      N(fp.FPDoLinesCross(nullptr, &v, &v)), N(fp.FPDoLinesCross(&line, nullptr)),
      N(fp.FPGetCrossingPoint(nullptr)), N(fp.FPGetCoincidenceKind(nullptr)), N(fp.FPIsPointInside(nullptr)),
      N(fp.FPPointsAreOnTheSameSide(nullptr, &v)), N(fp.FPAdjustTranslation(&v, &v, nullptr)),
      N(fp.FPUpdateYFromSelectedEdgeCrossing(nullptr)), N(fp.FPDistanceToEdge(&v, &v, &v, &v, nullptr)),
      N(fp.FPBoxBoundaryCrossingExclusive(&v, nullptr, &box)), N(fp.FPSelectCoincidentEdge(nullptr, &v)),
      N(fp.FPBoxBoundaryCrossingInclusive(&v, &v, nullptr)), N(fp.FPGetEdgeSampleDistance(&v, nullptr)),
      N(fp.FPInitVertex(nullptr)), N(marks.MLInitMarker(nullptr)), N(marks.MLCopyMarker(nullptr, nullptr)),
      N(marks.MLAddMarker(nullptr)), N(marks.MLSelectFirstMarker(nullptr)),
      N(marks.MLFindMarkerByNumber(nullptr, 1)), N(marks.MLUpdateSelectedMarker(nullptr, 0)),
      N(marks.MLGetNextIndexNumber(nullptr)), N(marks.MLFindMarkerByName(&found, nullptr))};
#undef N
  // clang-format on
  for (const auto& [what, call] : calls) EXPECT_EQ(0, call()) << what;
  EXPECT_TRUE(out.x == 9 && f == 9);
  EXPECT_EQ(1, marks.MLCreateListFromList(nullptr));
  EXPECT_EQ(1, marks.MLSaveToFile(nullptr));  // no list: nothing to write
  EXPECT_TRUE(fp.FPGetVertexCount(&count) == 1 && count == 4);
  EXPECT_TRUE(fp.FPIsPointInside(&inside) == 1 && fp.FPIsPointInside(&outside) == 0);
}

// Marker names that fill their field without a terminator are copied, found, updated and saved
// terminated and whole; a longer name finds nothing.
TEST_F(Overlong, MarkerNamesFillingTheirFieldStayTerminated) {
  CKMarkerList list;
  list.MLInitialise();
  tagMarkerItem full, *found = nullptr;
  list.MLInitMarker(&full);
  std::memset(full.name, 'm', sizeof full.name);
  auto name = [](const tagMarkerItem& x) {
    return std::memchr(x.name, '\0', sizeof x.name) ? std::string(x.name) : "<unterminated>";
  };
  const std::string whole = L('m', KMARKER_NAME_SIZE - 1), path = m_dir.file("markers.txt");
  tagMarkerItem copy;
  ASSERT_EQ(1, list.MLCopyMarker(&copy, &full));
  EXPECT_EQ(whole, name(copy));
  ASSERT_EQ(1, list.MLAddMarker(&full));
  EXPECT_EQ(
      0, list.MLFindMarkerByName(&found, (whole + "m").c_str()) + list.MLFindMarkerByName(&found, Lc('m')));
  ASSERT_EQ(1, list.MLFindMarkerByName(&found, whole.c_str()));
  EXPECT_EQ(whole, name(*found));
  std::memset(full.name, 'u', sizeof full.name);
  ASSERT_EQ(1, list.MLSelectFirstMarker(&found) * list.MLUpdateSelectedMarker(&full, 1));
  EXPECT_EQ(L('u', KMARKER_NAME_SIZE - 1), name(*found));
  std::FILE* stream = std::fopen(path.c_str(), "w");
  ASSERT_NE(nullptr, stream);
  EXPECT_EQ(1, list.MLSaveToFile(stream));
  std::fclose(stream);
  EXPECT_EQ(0, list.MLSaveToFile(nullptr));
  const std::vector<std::string> lines = readLines(path);
  EXPECT_EQ(1, std::count(lines.begin(), lines.end(), "[MKN][131]" + L('u', 131)));
}

}  // namespace
