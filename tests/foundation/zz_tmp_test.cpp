#include <gtest/gtest.h>
#include "KUtil.h"
TEST(Tmp, Comment) { char b[264]; EXPECT_EQ(KUGetComment(b), 1); }
