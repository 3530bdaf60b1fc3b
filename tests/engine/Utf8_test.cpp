#include "engine/Utf8.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

TEST(Utf8, BothWaysGiveTheSameText) {
    const std::u16string texto = u"a ñ € \uFFFD 😀 \U0010FFFF";
    EXPECT_EQ(EnUtf8(texto), "a ñ € \uFFFD 😀 \U0010FFFF");
    EXPECT_EQ(DeUtf8(EnUtf8(texto)), texto);
}

TEST(Utf8, EachByteThatIsNoneIsReplaced) {
    EXPECT_EQ(DeUtf8("a\xFF\xC3 b\xE2\x82"), u"a\uFFFD\uFFFD b\uFFFD\uFFFD");
    EXPECT_EQ(DeUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");            // no shortest form
    EXPECT_EQ(DeUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // half a pair
}

TEST(Utf8, HalfASurrogatePairIsReplaced) {
    const std::u16string mitades{u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(EnUtf8(mitades), "a\uFFFDb\uFFFD");
    EXPECT_EQ(EnUtf8(std::u16string{0xD83D}), "\uFFFD");
}

}  // namespace
}  // namespace ondalis
