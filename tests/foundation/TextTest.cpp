// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "KText.h"
#include "TestSupport.h"
#include "TextDetail.h"

using kutil::test::seq;

namespace {

struct Row {
  const char* a;
  const char* b;
  int n;
  int status;
  const char* out;  // what the output holds afterwards; "keep" when untouched
};

// Runs call(row, out) on an output first holding "keep" and checks status and output.
template <size_t N, class F>
void checkRows(const Row (&rows)[N], F call) {
  for (const Row& r : rows) {
    SCOPED_TRACE(std::string(r.a ? r.a : "null") + " | " + (r.b ? r.b : "null") + " | " +
                 std::to_string(r.n));
    char out[300] = "keep";
    EXPECT_EQ(call(r, out), r.status);
    EXPECT_STREQ(out, r.out);
  }
}

TEST(KUStatus, ErrorStartsUnsetAndCommentHasANoticeLine) {
  int code = -1;
  char notice[264] = "", out[264] = "keep";
  EXPECT_EQ(seq({KUGetError(&code), code, (KUSetError(106), KUGetError(&code)), code}), "0 -1 1 106");
  KUSetError(5);
  ASSERT_EQ(KUGetComment(notice), 1);  // the notice line
  EXPECT_GT(std::strlen(notice), 0u);
  EXPECT_EQ(seq({(KUSetComment(""), KUGetComment(out)), out}), "0 keep");
}

TEST(KUSegments, WritersOverwriteAndReportLength) {
  char out[512] = "garbage";
  int length = 0;
  EXPECT_EQ(seq({KUMkFloatSegment(out, "[DTA]", 2.0f, &length), out, length,
                 KUMkDoubleSegment(out, "[D]", -0.00004, &length), out}),
            "1 [DTA][6]2.0000 14 1 [D][7]-0.0000");
}

TEST(KUSegments, ExtractFieldWalksByLengthAndFailsWithoutWriting) {
  const Row rows[] = {
      {"[FPT]", "[NRM][1]0[FPT][8]C:\\a\\b.x", 276, 1, "C:\\a\\b.x"},
      {"[FPT]", "[NRM][1]0[FPT][8]C:\\a\\b.x", 3, 1, "C:\\"},
      {"[B]", "[A][3][x][B][2]ok", 10, 1, "ok"},  // values may hold brackets
      {"[A]", "[A][0][A][1]z", 10, 1, ""},        // the first equal tag wins
      {"[A]", "[A][50]abc", 276, 1, "abc"},       // clipped at the terminator
      {"[A]", "[A][-2]xy", 276, 1, ""},
      {"[FPT]", " [FPT][1]x", 10, 0, "keep"},
      {"[FPT]", "[FPT][1x", 10, 0, "keep"},
      {"[FPT]", "[NRM][2]0[FPT][1]x", 10, 0, "keep"},  // a wrong length derails the walk
      {"[FPT]", "[NRM][-9]0[FPT][1]x", 10, 0, "keep"},
  };
  checkRows(rows, [](const Row& r, char* out) { return KUExtractField(r.a, r.b, out, r.n); });
}

TEST(KUCopyCompare, SafeStrncpyIgnoresTruncationAndStrNIcmpOneMeansEqual) {
  const Row copies[] = {
      {"abcdef", "", 3, 1, "abc"}, {"ab", "", 0, 1, ""}, {"ab", "", -1, 0, ""}, {nullptr, "", 4, 1, ""}};
  checkRows(copies, [](const Row& r, char* out) { return KUSafeStrncpy(out, r.a, r.n); });
  const Row compares[] = {{"C:/Dir", "c:\\dIR", 6, 1, "keep"}, {"abc", "abd", 2, 1, "keep"},
                          {"abc", "abd", 3, 0, "keep"},        {"ab", "abc", 3, 0, "keep"},
                          {"x", "y", -3, 1, "keep"},           {"ab", "AB", 50, 1, "keep"}};
  checkRows(compares, [](const Row& r, char*) { return KUstrNIcmp(r.a, r.b, r.n); });
}

TEST(KUNumbers, FirstCharacterRuleAndClamping) {
  const Row ints[] = {{" 5", "", 0, 0, "0"},
                      {"+7x", "", 0, 1, "7"},
                      {"-", "", 0, 1, "0"},
                      {"", "", 0, 0, "0"},
                      {"99999999999999", "", 0, 1, "2147483647"}};
  checkRows(ints, [](const Row& r, char* out) {
    int i = 99;
    const int status = KUSafeATOI(r.a, &i);
    std::snprintf(out, 300, "%d", i);
    return status;
  });
  float f = 9.0f;
  EXPECT_EQ(KUSafeATOF(".5", &f), 0);
  EXPECT_EQ(f, 0.0f);
  EXPECT_EQ(KUSafeATOF("-2.25e1z", &f), 1);
  EXPECT_EQ(f, -22.5f);
}

TEST(KUShaping, InPlaceShapers) {
  char a[] = "line\r\nrest", q[16] = "abc", open[] = "\"abc", lone[] = "\"";
  EXPECT_EQ(seq({KUNoNewLine(a), a, KUEncloseInQuotes(q), KUEncloseInQuotes(q), q, KUStripQuotes(q), q,
                 KUStripQuotes(open), KUStripQuotes(lone), lone}),
            "1 line 1 0 \"abc\" 1 abc 0 1 ");
  char text[264] = "c:/dir/x.bmp", out[64] = "";  // only a prefix, case- and slash-blind
  EXPECT_EQ(seq({KUSubstitute(text, "C:\\DIR", "?V?"), KUSubstitute(text, "x.bmp", "y"), text,
                 KUCommandSubstitue("run %1 and %1", "%1", "file.txt", out), out}),
            "1 0 ?V?/x.bmp 1 run file.txt and %1");
}

TEST(KUShaping, ReverseKeepsTheEndsAndCutStringCountsEmptyFields) {
  const Row reversed[] = {{"abcd", "", 0, 1, "acbd"},
                          {"abcde", "", 0, 1, "adcbe"},
                          {"a", "", 0, 1, "aa"},
                          {"", "", 0, 0, "keep"}};
  checkRows(reversed, [](const Row& r, char* out) { return KUReverse(out, r.a); });
  const Row cuts[] = {{"a|b||d", "", 2, 1, ""},     {"a|b||d", "", 3, 1, "d"},  {"a|b||d", "", 0, 1, "a"},
                      {"a|b||d", "", 4, 0, "keep"}, {"a|b|", "", 2, 0, "keep"}, {"", "", 0, 0, "keep"}};
  checkRows(cuts, [](const Row& r, char* out) { return KUCutString(r.a, '|', r.n, out); });
}

TEST(KUShaping, SimpleArgumentAndLastPathElement) {
  const Row args[] = {{"\"C:\\dir\\app.exe\" -s", "", 0, 1, "-s"},
                      {"'my app' x", "", 0, 1, "x"},
                      {"app.exe\t  two", "", 0, 1, " two"},  // the end character and one blank are skipped
                      {"app.exe ", "", 0, 0, "keep"},
                      {"\"C:\\no end", "", 0, 0, "keep"}};
  checkRows(args, [](const Row& r, char* out) { return KUGetSimpleArgument(r.a, out); });
  const Row last[] = {{"C:\\dir\\sub\\", "", 0, 1, "sub\\"}, {"/home/user/file.txt", "", 0, 1, "file.txt"}};
  checkRows(last, [](const Row& r, char* out) { return KUGetLastPathElement(out, r.a); });
}

TEST(KUDateTime, RecordAndStamps) {
  tagKDATETIME when, january{2001, 0, 0, 7, 0, 9, 5, 3, -1};
  when.reserved = 4242;
  ASSERT_EQ(KUGetDateTime(&when), 1);
  EXPECT_TRUE(when.reserved == 4242 && when.extra == -1 && when.month <= 11);
  char stamp[128], second[16];
  kutil::detail::formatTimeStamp(january, stamp);
  kutil::detail::formatSecondStamp(january, second);
  EXPECT_EQ(seq({stamp, second}), "DATE:    2001/01/07\nTIME:    09:05:03\nBuild:   1,0,4,401\n 090503");
}

TEST(KUNullSafety, NullTextsNeverCrash) {
  char out[16] = "";
  int len = 0;
  EXPECT_EQ(
      seq({KUMkLineSegment(nullptr, "[A]", "x", &len), KUMkLineSegment(out, nullptr, nullptr, &len), out,
           KUEncloseInQuotes(nullptr), KUStripQuotes(nullptr), KUCutString(nullptr, '|', 0, out),
           KUGetSimpleArgument(nullptr, out), KUGetLastPathElement(out, nullptr), KUGetDateTime(nullptr)}),
      "0 1 [0] 0 0 0 0 0 0");
}

}  // namespace
