// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KText.h"
#include "TextDetail.h"

namespace {

TEST(KUStatus, ErrorStartsUnsetAndIsNotClearedByReading) {
  int code = -1;
  EXPECT_EQ(KUGetError(&code), 0);
  EXPECT_EQ(code, -1);
  EXPECT_EQ(KUSetError(106), 1);
  EXPECT_EQ(KUGetError(&code), 1);
  EXPECT_EQ(code, 106);
  code = 0;
  EXPECT_EQ(KUGetError(&code), 1);
  EXPECT_EQ(code, 106);
  KUSetError(5);
  EXPECT_EQ(KUGetError(&code), 0);
}

TEST(KUStatus, CommentHasNoticeLineAndIsKeptWithinItsBuffer) {
  char out[264] = "";
  ASSERT_EQ(KUGetComment(out), 1);
  EXPECT_GT(std::strlen(out), 0u);

  std::string huge(1000, 'x');
  EXPECT_EQ(KUSetComment(huge.c_str()), 1);
  ASSERT_EQ(KUGetComment(out), 1);
  EXPECT_EQ(std::strlen(out), 263u);

  KUSetComment("");
  std::strcpy(out, "keep");
  EXPECT_EQ(KUGetComment(out), 0);
  EXPECT_STREQ(out, "keep");
  KUSetComment("source.bmp");
  EXPECT_EQ(KUGetComment(out), 1);
  EXPECT_STREQ(out, "source.bmp");
}

TEST(KUSegments, WritersOverwriteAndReportLength) {
  char out[512] = "garbage";
  int length = 0;
  EXPECT_EQ(KUMkFloatSegment(out, "[DTA]", 2.0f, &length), 1);
  EXPECT_STREQ(out, "[DTA][6]2.0000");
  EXPECT_EQ(length, 14);
  EXPECT_EQ(KUMkNumSegment(out, "[NRM]", -12, &length), 1);
  EXPECT_STREQ(out, "[NRM][3]-12");
  EXPECT_EQ(length, 11);
  KUMkDoubleSegment(out, "[D]", -0.00004, &length);
  EXPECT_STREQ(out, "[D][7]-0.0000");
  KUMkLineSegment(out, "[TX]", "", &length);
  EXPECT_STREQ(out, "[TX][0]");
}

TEST(KUSegments, ExtractFieldWalksSegments) {
  char out[300] = "";
  const char* line = "[NRM][1]0[FPT][8]C:\\a\\b.x";
  EXPECT_EQ(KUExtractField("[FPT]", line, out, 276), 1);
  EXPECT_STREQ(out, "C:\\a\\b.x");
  EXPECT_EQ(KUExtractField("[FPT]", line, out, 3), 1);
  EXPECT_STREQ(out, "C:\\");
  EXPECT_EQ(KUExtractField("[NRM]", line, out, 276), 1);
  EXPECT_STREQ(out, "0");

  // Values may hold brackets; the length decides where they end.
  EXPECT_EQ(KUExtractField("[B]", "[A][3][x][B][2]ok", out, 10), 1);
  EXPECT_STREQ(out, "ok");
  // The first of two equal tags wins; an empty value is found too.
  EXPECT_EQ(KUExtractField("[A]", "[A][0][A][1]z", out, 10), 1);
  EXPECT_STREQ(out, "");
  // A length running past the line's end is clipped at the terminator.
  EXPECT_EQ(KUExtractField("[A]", "[A][50]abc", out, 276), 1);
  EXPECT_STREQ(out, "abc");
  // A negative length on the wanted segment still finds it, empty.
  EXPECT_EQ(KUExtractField("[A]", "[A][-2]xy", out, 276), 1);
  EXPECT_STREQ(out, "");
}

TEST(KUSegments, ExtractFieldFailsOnBrokenLinesWithoutTouchingOut) {
  char out[64] = "keep";
  EXPECT_EQ(KUExtractField("[FPT]", " [FPT][1]x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "[FPT][1x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "[FPT]1]x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "[NRM][1]0", out, 10), 0);
  // A wrong earlier length derails the walk rather than guessing.
  EXPECT_EQ(KUExtractField("[FPT]", "[NRM][2]0[FPT][1]x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "[NRM][-9]0[FPT][1]x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "[NRM][99999999999]0", out, 10), 0);
  EXPECT_EQ(KUExtractField("[FPT]", "", out, 10), 0);
  EXPECT_EQ(KUExtractField(nullptr, "[A][1]x", out, 10), 0);
  EXPECT_EQ(KUExtractField("[A]", nullptr, out, 10), 0);
  EXPECT_STREQ(out, "keep");
}

TEST(KUCopyCompare, SafeStrncpyReturnRule) {
  char out[8] = "zzzzzzz";
  EXPECT_EQ(KUSafeStrncpy(out, "abcdef", 3), 1);  // truncation is not reported
  EXPECT_STREQ(out, "abc");
  EXPECT_EQ(KUSafeStrncpy(out, "ab", 0), 1);
  EXPECT_STREQ(out, "");
  std::strcpy(out, "xyz");
  EXPECT_EQ(KUSafeStrncpy(out, "ab", -1), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(KUSafeStrncpy(out, nullptr, 4), 1);
  EXPECT_STREQ(out, "");
}

TEST(KUCopyCompare, StrNIcmpOneMeansEqualAndFoldsSlashes) {
  EXPECT_EQ(KUstrNIcmp("C:/Dir", "c:\\dIR", 6), 1);
  EXPECT_EQ(KUstrNIcmp("abc", "abd", 2), 1);
  EXPECT_EQ(KUstrNIcmp("abc", "abd", 3), 0);
  EXPECT_EQ(KUstrNIcmp("ab", "abc", 3), 0);
  EXPECT_EQ(KUstrNIcmp("x", "y", 0), 1);
  EXPECT_EQ(KUstrNIcmp("x", "y", -3), 1);
  // Equal strings shorter than n stop at their common end.
  EXPECT_EQ(KUstrNIcmp("ab", "AB", 50), 1);
  EXPECT_EQ(kutil::detail::samePath("/Home/A/", "\\home\\a\\"), true);
  EXPECT_EQ(kutil::detail::samePath("/home/a", "/home/ab"), false);
}

TEST(KUNumbers, FirstCharacterRule) {
  int i = 99;
  EXPECT_EQ(KUSafeATOI(" 5", &i), 0);
  EXPECT_EQ(i, 0);
  EXPECT_EQ(KUSafeATOI("+7x", &i), 1);
  EXPECT_EQ(i, 7);
  EXPECT_EQ(KUSafeATOI("-", &i), 1);
  EXPECT_EQ(i, 0);
  i = 3;
  EXPECT_EQ(KUSafeATOI("", &i), 0);
  EXPECT_EQ(i, 0);
  EXPECT_EQ(KUSafeATOI("99999999999999", &i), 1);
  EXPECT_EQ(i, 2147483647);
  EXPECT_EQ(KUSafeATOI(nullptr, &i), 0);

  float f = 9.0f;
  EXPECT_EQ(KUSafeATOF(".5", &f), 0);
  EXPECT_EQ(f, 0.0f);
  EXPECT_EQ(KUSafeATOF("-2.25e1z", &f), 1);
  EXPECT_EQ(f, -22.5f);
  EXPECT_EQ(KUSafeATOF("1e300", &f), 1);
  EXPECT_GT(f, 3e38f);
}

TEST(KUShaping, NoNewLineCutsAtFirstBreak) {
  char a[] = "line\r\nrest";
  EXPECT_EQ(KUNoNewLine(a), 1);
  EXPECT_STREQ(a, "line");
  char b[] = "plain";
  EXPECT_EQ(KUNoNewLine(b), 0);
  char c[] = "";
  EXPECT_EQ(KUNoNewLine(c), 0);
  EXPECT_EQ(KUIsAllSpaces(" \t "), 1);
  EXPECT_EQ(KUIsAllSpaces(""), 1);
  EXPECT_EQ(KUIsAllSpaces(" x"), 0);
}

TEST(KUShaping, Quotes) {
  char a[16] = "abc";
  EXPECT_EQ(KUEncloseInQuotes(a), 1);
  EXPECT_STREQ(a, "\"abc\"");
  EXPECT_EQ(KUEncloseInQuotes(a), 0);
  EXPECT_EQ(KUStripQuotes(a), 1);
  EXPECT_STREQ(a, "abc");
  EXPECT_EQ(KUStripQuotes(a), 1);  // nothing to strip
  EXPECT_STREQ(a, "abc");
  char open[] = "\"abc";
  EXPECT_EQ(KUStripQuotes(open), 0);
  EXPECT_STREQ(open, "\"abc");
  char empty[4] = "";
  EXPECT_EQ(KUEncloseInQuotes(empty), 1);
  EXPECT_STREQ(empty, "\"\"");
  EXPECT_EQ(KUStripQuotes(empty), 1);
  EXPECT_STREQ(empty, "");
  char lone[] = "\"";
  EXPECT_EQ(KUStripQuotes(lone), 1);
  EXPECT_STREQ(lone, "");
}

TEST(KUShaping, ReverseKeepsTheEnds) {
  char out[16];
  KUReverse(out, "abcd");
  EXPECT_STREQ(out, "acbd");
  KUReverse(out, "abcde");
  EXPECT_STREQ(out, "adcbe");
  KUReverse(out, "ab");
  EXPECT_STREQ(out, "ab");
  KUReverse(out, "a");
  EXPECT_STREQ(out, "aa");
  std::strcpy(out, "keep");
  EXPECT_EQ(KUReverse(out, ""), 0);
  EXPECT_STREQ(out, "keep");
}

TEST(KUShaping, CutString) {
  char out[300] = "keep";
  EXPECT_EQ(KUCutString("a|b||d", '|', 2, out), 1);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(KUCutString("a|b||d", '|', 3, out), 1);
  EXPECT_STREQ(out, "d");
  EXPECT_EQ(KUCutString("a|b||d", '|', 0, out), 1);
  EXPECT_STREQ(out, "a");
  std::strcpy(out, "keep");
  EXPECT_EQ(KUCutString("a|b||d", '|', 4, out), 0);
  EXPECT_EQ(KUCutString("a|b|", '|', 2, out), 0);
  EXPECT_EQ(KUCutString("", '|', 0, out), 0);
  EXPECT_STREQ(out, "keep");
  // Fields never reach beyond position 260.
  std::string longText(400, 'x');
  EXPECT_EQ(KUCutString(longText.c_str(), '|', 0, out), 1);
  EXPECT_EQ(std::strlen(out), 260u);
}

TEST(KUShaping, SubstituteReplacesOnlyAPrefix) {
  char text[264] = "c:/dir/x.bmp";
  EXPECT_EQ(KUSubstitute(text, "C:\\DIR", "?V?"), 1);
  EXPECT_STREQ(text, "?V?/x.bmp");
  EXPECT_EQ(KUSubstitute(text, "x.bmp", "y"), 0);
  EXPECT_STREQ(text, "?V?/x.bmp");
  EXPECT_EQ(KUSubstitute(text, "", "y"), 0);
  char empty[264] = "";
  EXPECT_EQ(KUSubstitute(empty, "a", "b"), 0);
  // A long replacement is clipped to the 264-byte buffer.
  std::string longReplacement(500, 'r');
  char t[264] = "ab";
  EXPECT_EQ(KUSubstitute(t, "a", longReplacement.c_str()), 1);
  EXPECT_EQ(std::strlen(t), 263u);
}

TEST(KUShaping, CommandSubstitueFirstOccurrence) {
  char out[64] = "";
  EXPECT_EQ(KUCommandSubstitue("run %1 and %1", "%1", "file.txt", out), 1);
  EXPECT_STREQ(out, "run file.txt and %1");
  EXPECT_EQ(KUCommandSubstitue("run", "%1", "x", out), 0);
  EXPECT_STREQ(out, "run");
}

TEST(KUShaping, SimpleArgument) {
  char out[300] = "keep";
  EXPECT_EQ(KUGetSimpleArgument("\"C:\\dir\\app.exe\" -s", out), 1);
  EXPECT_STREQ(out, "-s");
  EXPECT_EQ(KUGetSimpleArgument("app.exe /p 1234", out), 1);
  EXPECT_STREQ(out, "/p 1234");
  EXPECT_EQ(KUGetSimpleArgument("'my app' x", out), 1);
  EXPECT_STREQ(out, "x");
  EXPECT_EQ(KUGetSimpleArgument("app.exe\t  two", out), 1);
  EXPECT_STREQ(out, " two");  // the end character and one blank are skipped
  std::strcpy(out, "keep");
  EXPECT_EQ(KUGetSimpleArgument("app.exe", out), 0);
  EXPECT_EQ(KUGetSimpleArgument("app.exe ", out), 0);
  EXPECT_EQ(KUGetSimpleArgument("\"C:\\no end", out), 0);
  EXPECT_EQ(KUGetSimpleArgument("", out), 0);
  EXPECT_STREQ(out, "keep");
}

TEST(KUShaping, LastPathElement) {
  char out[300] = "";
  EXPECT_EQ(KUGetLastPathElement(out, "C:\\dir\\sub\\"), 1);
  EXPECT_STREQ(out, "sub\\");
  EXPECT_EQ(KUGetLastPathElement(out, "/home/user/file.txt"), 1);
  EXPECT_STREQ(out, "file.txt");
  EXPECT_EQ(KUGetLastPathElement(out, "plain"), 1);
  EXPECT_STREQ(out, "plain");
  EXPECT_EQ(KUGetLastPathElement(out, ""), 0);
  std::string longPath = "/a/" + std::string(400, 'n');
  EXPECT_EQ(KUGetLastPathElement(out, longPath.c_str()), 1);
  EXPECT_EQ(std::strlen(out), 260u);
}

TEST(KUDateTime, RecordAndStamps) {
  tagKDATETIME when;
  when.reserved = 4242;
  ASSERT_EQ(KUGetDateTime(&when), 1);
  EXPECT_EQ(when.reserved, 4242);
  EXPECT_EQ(when.extra, -1);
  EXPECT_GE(when.year, 2000);
  EXPECT_LE(when.month, 11);

  tagKDATETIME january{2001, 0, 0, 7, 0, 9, 5, 3, -1};
  char out[128];
  kutil::detail::formatTimeStamp(january, out);
  EXPECT_STREQ(out, "DATE:    2001/01/07\nTIME:    09:05:03\nBuild:   1,0,4,401\n");
  kutil::detail::formatSecondStamp(january, out);
  EXPECT_STREQ(out, "090503");

  ASSERT_EQ(KUGetTimeStamp(out), 1);
  EXPECT_EQ(std::string(out).rfind("DATE:    ", 0), 0u);
  ASSERT_EQ(KUGetSecondStamp(out), 1);
  EXPECT_EQ(std::strlen(out), 6u);
}

TEST(KUNullSafety, NullTextsNeverCrash) {
  char out[16] = "";
  int len = 0;
  EXPECT_EQ(KUMkLineSegment(nullptr, "[A]", "x", &len), 0);
  EXPECT_EQ(KUMkLineSegment(out, nullptr, nullptr, &len), 1);
  EXPECT_STREQ(out, "[0]");
  EXPECT_EQ(KUNoNewLine(nullptr), 0);
  EXPECT_EQ(KUEncloseInQuotes(nullptr), 0);
  EXPECT_EQ(KUStripQuotes(nullptr), 0);
  EXPECT_EQ(KUCutString(nullptr, '|', 0, out), 0);
  EXPECT_EQ(KUSubstitute(nullptr, "a", "b"), 0);
  EXPECT_EQ(KUGetSimpleArgument(nullptr, out), 0);
  EXPECT_EQ(KUGetLastPathElement(out, nullptr), 0);
  EXPECT_EQ(KUGetDateTime(nullptr), 0);
  EXPECT_EQ(KUGetError(nullptr), 0);
}

}  // namespace
