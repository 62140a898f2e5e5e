// A program outside the KUtil tree: includes the umbrella header and calls the
// installed shared library.
#include <KUtil.h>

#include <cstdio>

int main() {
  char text[264] = "";
  int ok = KUGetComment(text);
  std::printf("KUtil %s comment=%d\n", KUTIL_VERSION_STRING, ok);
  return ok == 1 ? 0 : 1;
}
