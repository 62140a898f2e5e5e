// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "KText.h"
#include "TextDetail.h"

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
  EXPECT_EQ(KUGetError(&code), 0);
  KUSetError(106);
  EXPECT_EQ(KUGetError(&code), 1);
  EXPECT_EQ(code, 106);
  KUSetError(5);
  char out[264] = "";
  ASSERT_EQ(KUGetComment(out), 1);  // the notice line
  EXPECT_GT(std::strlen(out), 0u);
  KUSetComment("");
  EXPECT_EQ(KUGetComment(out), 0);
}

TEST(KUSegments, WritersOverwriteAndReportLength) {
  char out[512] = "garbage";
  int length = 0;
  KUMkFloatSegment(out, "[DTA]", 2.0f, &length);
  EXPECT_STREQ(out, "[DTA][6]2.0000");
  EXPECT_EQ(length, 14);
  KUMkDoubleSegment(out, "[D]", -0.00004, &length);
  EXPECT_STREQ(out, "[D][7]-0.0000");
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
  char a[] = "line\r\nrest";
  EXPECT_EQ(KUNoNewLine(a), 1);
  EXPECT_STREQ(a, "line");
  char q[16] = "abc";
  EXPECT_EQ(KUEncloseInQuotes(q), 1);
  EXPECT_EQ(KUEncloseInQuotes(q), 0);
  EXPECT_STREQ(q, "\"abc\"");
  EXPECT_EQ(KUStripQuotes(q), 1);
  EXPECT_STREQ(q, "abc");
  char open[] = "\"abc", lone[] = "\"";
  EXPECT_EQ(KUStripQuotes(open), 0);
  EXPECT_EQ(KUStripQuotes(lone), 1);
  EXPECT_STREQ(lone, "");

  char text[264] = "c:/dir/x.bmp";  // only a prefix, case- and slash-blind
  EXPECT_EQ(KUSubstitute(text, "C:\\DIR", "?V?"), 1);
  EXPECT_EQ(KUSubstitute(text, "x.bmp", "y"), 0);
  EXPECT_STREQ(text, "?V?/x.bmp");
  char out[64] = "";
  EXPECT_EQ(KUCommandSubstitue("run %1 and %1", "%1", "file.txt", out), 1);
  EXPECT_STREQ(out, "run file.txt and %1");
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
  tagKDATETIME when;
  when.reserved = 4242;
  ASSERT_EQ(KUGetDateTime(&when), 1);
  EXPECT_EQ(when.reserved, 4242);
  EXPECT_EQ(when.extra, -1);
  EXPECT_LE(when.month, 11);
  tagKDATETIME january{2001, 0, 0, 7, 0, 9, 5, 3, -1};
  char out[128];
  kutil::detail::formatTimeStamp(january, out);
  EXPECT_STREQ(out, "DATE:    2001/01/07\nTIME:    09:05:03\nBuild:   1,0,4,401\n");
  kutil::detail::formatSecondStamp(january, out);
  EXPECT_STREQ(out, "090503");
}

TEST(KUNullSafety, NullTextsNeverCrash) {
  char out[16] = "";
  int len = 0;
  EXPECT_EQ(KUMkLineSegment(nullptr, "[A]", "x", &len), 0);
  EXPECT_EQ(KUMkLineSegment(out, nullptr, nullptr, &len), 1);
  EXPECT_STREQ(out, "[0]");
  EXPECT_EQ(KUEncloseInQuotes(nullptr) + KUStripQuotes(nullptr) + KUCutString(nullptr, '|', 0, out), 0);
  EXPECT_EQ(KUGetSimpleArgument(nullptr, out) + KUGetLastPathElement(out, nullptr) + KUGetDateTime(nullptr),
            0);
}

}  // namespace
