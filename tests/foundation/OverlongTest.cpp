// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Overlong texts, null texts and junk files against every text-taking entry
// point of the foundation. Output buffers are heap blocks of exactly the
// documented capacity so that the address sanitizer sees any overrun.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "KFile.h"
#include "KNormalise.h"
#include "KText.h"
#include "Overlong.h"
#include "TestSupport.h"

namespace {

using kutil::test::kLong;
using kutil::test::longText;
using kutil::test::OutBuffer;
using kutil::test::readFile;
using kutil::test::TempDir;
using kutil::test::writeFile;

// A 10,000-character line, binary junk with zero bytes and stray brackets.
std::string junkBytes() {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>((i * 131 + 7) & 0xff);
  junk += "[[[]]][999999999999]\r\r\n[A][-5]";
  return junk;
}

TEST(KUOverlongText, CommentKeepsWithinItsBuffer) {
  EXPECT_EQ(KUSetComment(longText('c').c_str()), 1);
  OutBuffer out(264);
  ASSERT_EQ(KUGetComment(out.data()), 1);
  EXPECT_EQ(out.str(), longText('c', 263));
  EXPECT_EQ(KUSetComment(nullptr), 1);
  EXPECT_EQ(KUGetComment(out.data()), 0);
  KUSetComment("restored");
}

TEST(KUOverlongText, SegmentWritersFillExactlyTheCallerSizedBuffer) {
  const std::string value = longText('v');
  const std::string tag = longText('T', 5000);
  // tag + "[10000]" + value + terminator
  OutBuffer out(tag.size() + 7 + value.size() + 1);
  int length = 0;
  ASSERT_EQ(KUMkLineSegment(out.data(), tag.c_str(), value.c_str(), &length), 1);
  EXPECT_EQ(length, static_cast<int>(tag.size() + 7 + value.size()));
  EXPECT_EQ(out.str(), tag + "[10000]" + value);

  // The widest double prints 309 digits before ".0000".
  OutBuffer num(tag.size() + 5 + 315 + 1);
  ASSERT_EQ(KUMkDoubleSegment(num.data(), tag.c_str(), -1.7976931348623157e308, &length), 1);
  EXPECT_EQ(static_cast<std::size_t>(length), tag.size() + 5 + 315);
  ASSERT_EQ(KUMkFloatSegment(num.data(), tag.c_str(), -3.4e38f, &length), 1);
  ASSERT_EQ(KUMkNumSegment(num.data(), tag.c_str(), -2147483647 - 1, &length), 1);
  EXPECT_EQ(num.str(), tag + "[11]-2147483648");
}

TEST(KUOverlongText, ExtractFieldCutsToMaxLength) {
  const std::string line = "[AAA][3]abc[VAL][10000]" + longText('x') + "[ZZZ][1]z";
  OutBuffer out(261);
  ASSERT_EQ(KUExtractField("[VAL]", line.c_str(), out.data(), 260), 1);
  EXPECT_EQ(out.str(), longText('x', 260));
  ASSERT_EQ(KUExtractField("[ZZZ]", line.c_str(), out.data(), 260), 1);
  EXPECT_EQ(out.str(), "z");

  // An overlong tag, a tag that swallows the line, declared lengths far beyond the line.
  OutBuffer small(8);
  EXPECT_EQ(KUExtractField(longText('[').c_str(), line.c_str(), small.data(), 7), 0);
  EXPECT_EQ(KUExtractField("[A]", ("[A" + longText('q')).c_str(), small.data(), 7), 0);
  EXPECT_EQ(KUExtractField("[B]", "[A][99999999999999999999]x[B][1]y", small.data(), 7), 0);
  ASSERT_EQ(KUExtractField("[A]", "[A][99999999999]xy", small.data(), 7), 1);
  EXPECT_EQ(small.str(), "xy");
  EXPECT_EQ(KUExtractField("[A]", junkBytes().c_str(), small.data(), 7), 0);
  EXPECT_EQ(KUExtractField(nullptr, line.c_str(), small.data(), 7), 0);
  EXPECT_EQ(KUExtractField("[A]", nullptr, small.data(), 7), 0);
  EXPECT_TRUE(small.terminated());
}

TEST(KUOverlongText, CopyCompareAndNumbers) {
  const std::string text = longText('k');
  OutBuffer out(261);
  EXPECT_EQ(KUSafeStrncpy(out.data(), text.c_str(), 260), 1);
  EXPECT_EQ(out.str(), longText('k', 260));
  EXPECT_EQ(KUSafeStrncpy(out.data(), nullptr, 260), 1);
  EXPECT_EQ(out.str(), "");

  std::string other = text;
  EXPECT_EQ(KUstrNIcmp(text.c_str(), other.c_str(), 2147483647), 1);
  other[9999] = 'K';
  EXPECT_EQ(KUstrNIcmp(text.c_str(), other.c_str(), 2147483647), 1);
  EXPECT_EQ(KUstrNIcmp(text.c_str(), "kk", 2147483647), 0);
  EXPECT_EQ(KUstrNIcmp(nullptr, text.c_str(), 5), 0);

  EXPECT_EQ(KUStringContains((text + "!").c_str(), text.c_str()), 0);
  EXPECT_EQ(KUStringContains("kk!", (text + "!").c_str()), 1);
  EXPECT_EQ(KUStringContains(nullptr, text.c_str()), 0);

  int i = 7;
  EXPECT_EQ(KUSafeATOI(longText('9').c_str(), &i), 1);
  EXPECT_EQ(i, 2147483647);
  EXPECT_EQ(KUSafeATOI(("-" + longText('9')).c_str(), &i), 1);
  EXPECT_EQ(i, -2147483647 - 1);
  float f = 7.0f;
  EXPECT_EQ(KUSafeATOF(longText('9').c_str(), &f), 1);
  EXPECT_GT(f, 3.4e38f);
  EXPECT_EQ(KUSafeATOF(("0." + longText('0') + "1").c_str(), &f), 1);
  EXPECT_EQ(f, 0.0f);
  EXPECT_EQ(KUSafeATOI(nullptr, &i), 0);
  EXPECT_EQ(KUSafeATOF(nullptr, &f), 0);
}

TEST(KUOverlongText, InPlaceShapingStaysWithinTheText) {
  std::vector<char> line(kLong + 1, 'n');
  line[kLong] = '\0';
  line[kLong - 1] = '\n';
  EXPECT_EQ(KUNoNewLine(line.data()), 1);
  EXPECT_EQ(std::strlen(line.data()), kLong - 1);
  EXPECT_EQ(KUIsAllSpaces(longText(' ').c_str()), 1);
  EXPECT_EQ(KUIsAllSpaces((longText('\t') + "x").c_str()), 0);
  EXPECT_EQ(KUIsAllSpaces(nullptr), 1);

  // Enclosing needs exactly two more bytes than the text.
  std::vector<char> quoted(kLong + 3);
  std::memcpy(quoted.data(), longText('q').c_str(), kLong + 1);
  ASSERT_EQ(KUEncloseInQuotes(quoted.data()), 1);
  EXPECT_EQ(std::string(quoted.data()), "\"" + longText('q') + "\"");
  ASSERT_EQ(KUStripQuotes(quoted.data()), 1);
  EXPECT_EQ(std::string(quoted.data()), longText('q'));

  std::string open = "\"" + longText('q');
  EXPECT_EQ(KUStripQuotes(&open[0]), 0);
  EXPECT_EQ(open, "\"" + longText('q'));

  const std::string in = "<" + longText('r') + ">";
  OutBuffer reversed(in.size() + 1);
  ASSERT_EQ(KUReverse(reversed.data(), in.c_str()), 1);
  EXPECT_EQ(reversed.str(), in);
  EXPECT_EQ(KUReverse(reversed.data(), nullptr), 0);
}

TEST(KUOverlongText, CutStringFieldsFitTheirBuffer) {
  OutBuffer out(261);
  ASSERT_EQ(KUCutString(longText('f').c_str(), '|', 0, out.data()), 1);
  EXPECT_EQ(out.str(), longText('f', 260));

  const std::string fields = "a|" + longText('g') + "|c";
  OutBuffer second(261);
  ASSERT_EQ(KUCutString(fields.c_str(), '|', 1, second.data()), 1);
  EXPECT_TRUE(second.terminated());
  EXPECT_LE(second.str().size(), 260u);

  // The search stops at the working path length: a later field is not there.
  OutBuffer third(261);
  EXPECT_EQ(KUCutString(fields.c_str(), '|', 2, third.data()), 1);
  EXPECT_TRUE(third.terminated());
  OutBuffer absent(261);
  EXPECT_EQ(KUCutString("a|b", '|', 5, absent.data()), 0);
  EXPECT_TRUE(absent.untouched());
}

TEST(KUOverlongText, SubstituteKeepsTheTextWithinItsBuffer) {
  std::vector<char> text(264);
  const std::string start = "C:\\home\\" + longText('s', 255);
  std::memcpy(text.data(), start.c_str(), start.size() + 1);
  ASSERT_EQ(KUSubstitute(text.data(), "c:/HOME/", longText('R').c_str()), 1);
  EXPECT_EQ(std::string(text.data()), longText('R', 263));

  std::memcpy(text.data(), start.c_str(), start.size() + 1);
  EXPECT_EQ(KUSubstitute(text.data(), longText('C').c_str(), "x"), 0);
  EXPECT_EQ(std::string(text.data()), start);
  EXPECT_EQ(KUSubstitute(text.data(), "C:", nullptr), 1);
  EXPECT_EQ(std::string(text.data()), start.substr(2));
}

TEST(KUOverlongText, CommandSubstitueIsCallerSized) {
  const std::string source = longText('s') + "%1" + longText('t');
  const std::string replacement = longText('r');
  OutBuffer out(source.size() - 2 + replacement.size() + 1);
  ASSERT_EQ(KUCommandSubstitue(source.c_str(), "%1", replacement.c_str(), out.data()), 1);
  EXPECT_EQ(out.str(), longText('s') + replacement + longText('t'));
  OutBuffer copy(source.size() + 1);
  EXPECT_EQ(KUCommandSubstitue(source.c_str(), longText('%').c_str(), "x", copy.data()), 0);
  EXPECT_EQ(copy.str(), source);
  OutBuffer none(1);
  EXPECT_EQ(KUCommandSubstitue(nullptr, nullptr, nullptr, none.data()), 0);
  EXPECT_EQ(none.str(), "");
}

TEST(KUOverlongText, ArgumentAndLastElementFit261Bytes) {
  OutBuffer arg(261);
  ASSERT_EQ(KUGetSimpleArgument(("prog.exe " + longText('p')).c_str(), arg.data()), 1);
  EXPECT_EQ(arg.str(), longText('p', 260));
  OutBuffer quoted(261);
  ASSERT_EQ(KUGetSimpleArgument(("\"" + longText('w') + "\" " + longText('z')).c_str(), quoted.data()), 1);
  EXPECT_EQ(quoted.str(), longText('z', 260));
  OutBuffer none(261);
  EXPECT_EQ(KUGetSimpleArgument(longText('w').c_str(), none.data()), 0);
  EXPECT_TRUE(none.untouched());

  OutBuffer last(261);
  ASSERT_EQ(KUGetLastPathElement(last.data(), longText('e').c_str()), 1);
  EXPECT_EQ(last.str(), longText('e', 260));
  ASSERT_EQ(KUGetLastPathElement(last.data(), ("C:\\dir\\" + longText('e') + "\\").c_str()), 1);
  EXPECT_EQ(last.str(), longText('e', 260));
  ASSERT_EQ(KUGetLastPathElement(last.data(), (longText('d') + "/leaf").c_str()), 1);
  EXPECT_TRUE(last.terminated());
}

TEST(KUOverlongText, StampsFitTheirDocumentedBuffers) {
  OutBuffer stamp(80);
  ASSERT_EQ(KUGetTimeStamp(stamp.data()), 1);
  EXPECT_TRUE(stamp.terminated());
  OutBuffer seconds(16);
  ASSERT_EQ(KUGetSecondStamp(seconds.data()), 1);
  EXPECT_EQ(seconds.str().size(), 6u);
}

TEST(KUOverlongFile, NameTestsAcceptAnyLength) {
  const std::string name = longText('n') + ".BMP";
  EXPECT_EQ(KUFileHasEnding(name.c_str(), ".bmp"), 1);
  EXPECT_EQ(KUFileHasEnding(".bmp", name.c_str()), 0);
  EXPECT_EQ(KUFileHasEnding(name.c_str(), name.c_str()), 1);
  EXPECT_EQ(KUGetFileType(name.c_str()), 3);
  EXPECT_EQ(KUGetFileType((longText('n') + ".ico").c_str()), 2);
  EXPECT_EQ(KUFileHasSkyEnding((longText('n') + "_up.anb").c_str()), 1);
  EXPECT_EQ(KUFileHasSkyEnding(nullptr), 0);
  EXPECT_EQ(KUIsADriveName(longText('c').c_str()), 0);
  EXPECT_EQ(KUIsADriveName(nullptr), 0);
}

TEST(KUOverlongFile, OverlongOrNullPathsFailQuietly) {
  const std::string path = longText('p');
  long count = -3;
  EXPECT_EQ(KUIsBitmap(path.c_str()), 0);
  EXPECT_EQ(KUIsFileReadable(path.c_str()), 0);
  EXPECT_EQ(KUTouch(path.c_str()), 0);
  EXPECT_EQ(KUAppendLine(path.c_str(), "x"), 0);
  EXPECT_EQ(KUCountLinesInFile(path.c_str(), &count), 0);
  EXPECT_EQ(count, -3);
  EXPECT_EQ(KUClipFile(path.c_str(), 1, 2), 0);
  EXPECT_EQ(KUIsBitmap(nullptr), 0);
  EXPECT_EQ(KUIsFileReadable(nullptr), 0);
  EXPECT_EQ(KUTouch(nullptr), 0);
  EXPECT_EQ(KUAppendLine(nullptr, "x"), 0);
  EXPECT_EQ(KUCountLinesInFile(nullptr, &count), 0);
  EXPECT_EQ(KUClipFile(nullptr, 1, 2), 0);
}

TEST(KUOverlongFile, LongLinesAndJunkAreReadWithoutLoss) {
  TempDir dir;
  const std::string file = dir.file("log.txt");
  const std::string line = longText('L') + "\n";
  ASSERT_EQ(KUAppendLine(file.c_str(), line.c_str()), 1);
  ASSERT_EQ(KUAppendLine(file.c_str(), nullptr), 1);
  std::string written = readFile(file);
  // Text mode on Windows writes the line feed as CR LF.
  written.erase(std::remove(written.begin(), written.end(), '\r'), written.end());
  EXPECT_EQ(written, line);
  long count = 0;
  ASSERT_EQ(KUCountLinesInFile(file.c_str(), &count), 1);
  // Read 265 characters at a time: 10,001 characters take 38 reads.
  EXPECT_EQ(count, 38);

  const std::string junk = dir.file("junk.txt");
  ASSERT_TRUE(writeFile(junk, junkBytes()));
  EXPECT_EQ(KUCountLinesInFile(junk.c_str(), &count), 1);
  EXPECT_GT(count, 0);
  EXPECT_EQ(KUIsBitmap(junk.c_str()), 0);
  EXPECT_EQ(KUClipFile(file.c_str(), 1, 1), 1);
  EXPECT_EQ(KUClipFile(junk.c_str(), 100000, 100001), 0);
  EXPECT_EQ(readFile(junk), junkBytes());
}

TEST(KUOverlongFile, PathPartsFitTheirBuffers) {
  OutBuffer path(261);
  ASSERT_EQ(KUGetPathFromFile(path.data(), (longText('d') + "\\name.txt").c_str()), 1);
  EXPECT_TRUE(path.terminated());
  ASSERT_EQ(KUGetPathFromFile(path.data(),
                              ("C:\\" + longText('d', 200) + "\\" + longText('e', 200) + "\\x").c_str()),
            1);
  EXPECT_TRUE(path.terminated());
  EXPECT_LE(path.str().size(), 260u);
  ASSERT_EQ(KUGetPathFromFile(path.data(), nullptr), 1);
  EXPECT_EQ(path.str(), "");

  OutBuffer name(261);
  OutBuffer extra(261);
  int index = -1;
  const std::string imageText = longText('i') + "|12|" + longText('x');
  ASSERT_EQ(KUGetImageComponents(imageText.c_str(), name.data(), &index, extra.data()), 1);
  EXPECT_EQ(name.str(), longText('i', 260));
  EXPECT_TRUE(extra.terminated());
  const std::string imageText2 = "pic.bmp|3|" + longText('x');
  ASSERT_EQ(KUGetImageComponents(imageText2.c_str(), name.data(), &index, extra.data()), 1);
  EXPECT_EQ(index, 3);
  EXPECT_TRUE(extra.terminated());
  EXPECT_LE(extra.str().size(), 260u);
  EXPECT_EQ(KUGetImageComponents(nullptr, name.data(), &index, extra.data()), 0);
}

TEST(KUOverlongFile, CopyToTargetRefusesNamesThatWouldNotFit) {
  TempDir dir;
  const std::string target = dir.path() + "/";
  const std::string source = dir.file("src.bmp");
  ASSERT_TRUE(writeFile(source, "BM123456"));

  OutBuffer out(264);
  EXPECT_EQ(KUCopyToTarget(source.c_str(), (target + longText('t') + "/").c_str(), out.data()), 0);
  EXPECT_TRUE(out.untouched());
  OutBuffer out2(264);
  EXPECT_EQ(KUCopyToTarget((target + longText('s') + ".bmp").c_str(), target.c_str(), out2.data()), 0);
  EXPECT_TRUE(out2.terminated());
  OutBuffer out3(264);
  EXPECT_EQ(KUCopyToTarget(nullptr, target.c_str(), out3.data()), 1);
  EXPECT_EQ(KUCopyToTarget(source.c_str(), nullptr, out3.data()), 1);
  EXPECT_TRUE(out3.untouched());
  KUSetComment("restored");
}

}  // namespace
