// The version class of the system and the size of the staff screen it gives.

#include "toolkit/項目移動.h"

#include <gtest/gtest.h>

namespace {

TEST(Windows版判定, EveryVersionGivesItsClass) {
    struct Row {
        int major;
        int minor;
        short klass;
    };
    const Row rows[] = {{5, 0, -1}, {5, 1, -1}, {5, 2, -1},  {6, 0, 0},  {6, 1, 0},  {6, 2, 1},
                        {6, 3, -1}, {6, 4, -1}, {10, 0, -1}, {4, 0, -1}, {7, 1, -1}, {0, 0, -1}};
    for (const Row& r : rows)
        EXPECT_EQ(Windows版判定(true, r.major, r.minor), r.klass) << r.major << "." << r.minor;
}

TEST(Windows版判定, AFailedCallGivesZero) {
    EXPECT_EQ(Windows版判定(false, 0, 0), 0);
    EXPECT_EQ(Windows版判定(false, 6, 2), 0);
    EXPECT_EQ(Windows版判定(false, 10, 0), 0);
}

TEST(Windows版get, ThisPlatformAnswersAsAnyOtherVersion) { EXPECT_EQ(Windows版get(), -1); }

// A status line 600 by 24 pixels at the top 400: the width gains 90 twips
// (6 pixels), the height its bottom plus 380, 420 or 440 twips.
TEST(画面枠get, EachVersionClassHasItsMargin) {
    const QRect line(10, 400, 600, 24);
    EXPECT_EQ(画面枠get(-1, line), QSize(606, 424 + 25));
    EXPECT_EQ(画面枠get(0, line), QSize(606, 424 + 28));
    EXPECT_EQ(画面枠get(1, line), QSize(606, 424 + 29));
}

TEST(画面枠get, OnVersion63And10TheMarginIs380Twips) {
    const QRect line(0, 300, 450, 30);
    EXPECT_EQ(画面枠get(Windows版判定(true, 6, 3), line), QSize(456, 330 + 25));
    EXPECT_EQ(画面枠get(Windows版判定(true, 10, 0), line), QSize(456, 330 + 25));
    EXPECT_EQ(画面枠get(Windows版get(), line), QSize(456, 330 + 25));
}

} // namespace
