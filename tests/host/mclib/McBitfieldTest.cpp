#include "McBitfield.h"
#include "McString.h"
#include "McVec3f.h"

#include <gtest/gtest.h>

namespace {

TEST(McBitfield, ResizeInitialisesOnlyNewBits) {
    McBitfield bits;
    bits.resize(70, true);
    EXPECT_EQ(bits.nSetBits(), 70);
    bits.unset(3);
    bits.resize(130, false);
    EXPECT_EQ(bits.nSetBits(), 69);
    EXPECT_FALSE(bits[3]);
    EXPECT_TRUE(bits[69]);
    EXPECT_FALSE(bits[70]);
}

TEST(McBitfield, SetAllNeverSetsBitsPastTheSize) {
    McBitfield bits(65);
    bits.setAll();
    EXPECT_EQ(bits.nSetBits(), 65);
    bits.resize(128, false);  // the tail that setAll must not have touched
    EXPECT_EQ(bits.nSetBits(), 65);
    bits.unsetAll();
    EXPECT_EQ(bits.nSetBits(), 0);
}

TEST(McVec3f, ArithmeticCrossAndNormalise) {
    McVec3f a(1, 2, 3), b(4, 5, 6);
    EXPECT_EQ(a + b, McVec3f(5, 7, 9));
    EXPECT_EQ(b - a, McVec3f(3, 3, 3));
    EXPECT_FLOAT_EQ(a.dot(b), 32);
    EXPECT_EQ(McVec3f(1, 0, 0).cross(McVec3f(0, 1, 0)), McVec3f(0, 0, 1));
    EXPECT_FLOAT_EQ((b - a).length2(), 27);
    McVec3f c(3, 0, 4);
    EXPECT_FLOAT_EQ(c.normalize(), 5);
    EXPECT_FLOAT_EQ(c.length(), 1);
    McVec3f zero;
    zero.normalize();
    EXPECT_EQ(zero, McVec3f(0, 0, 0)) << "a zero vector stays zero, no NaN";
}

TEST(McString, PrintfFormatsAnyLength) {
    McString s;
    s.printf("%s-%d", "node", 42);
    EXPECT_EQ(s, "node-42");
    McString longText = McString::format("%0300d", 7);
    EXPECT_EQ(longText.size(), 300u);
}

}  // namespace
