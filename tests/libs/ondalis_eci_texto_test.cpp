#include "libs/ondalis_eci_texto.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

TEST(TextoECI, IsUtf8WhereItIsWhollyValid) {
    EXPECT_EQ(u"", TextoDeECI(""));
    EXPECT_EQ(u"año €", TextoDeECI("a\xC3\xB1o \xE2\x82\xAC"));
    EXPECT_EQ(u"\U0001F600", TextoDeECI("\xF0\x9F\x98\x80"));
    EXPECT_EQ(u"", TextoDeECI("\xEF\xBB\xBF"));
}

TEST(TextoECI, IsElseWindows1252AsAWhole) {
    EXPECT_EQ(u"año", TextoDeECI("a\xF1o"));
    EXPECT_EQ(u"\u20AC\u201C\u0081", TextoDeECI("\x80\x93\x81"));
    EXPECT_EQ(u"Ã± \u00F1", TextoDeECI("\xC3\xB1 \xF1"));  // one that isn't makes all of them single ones
}

TEST(TextoECI, FormsThatUtf8ForbidsAreNone) {
    for (const char *mal : {"\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80",
                            "\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC3(", "\xFF"})
        EXPECT_EQ(std::string_view(mal).size(), TextoDeECI(mal).size()) << mal;
}

TEST(TextoECI, BehindAByteOrderMarkWhatIsNoUtf8IsReplaced) {
    EXPECT_EQ(u"ñ\uFFFD\uFFFDa", TextoDeECI("\xEF\xBB\xBF\xC3\xB1\xE2\x82"
                                            "a"));
}

TEST(TextoECI, AnnotationsAtTheEndAreKnown) {
    for (const char16_t *si : {u"`vs170", u"x`l2.0", u"`v1", u"`vs-5", u"`l2.0`v1`vv65000"})
        EXPECT_TRUE(AcabaEnAnotacion(si)) << std::string(si, si + std::u16string_view(si).size());
    for (const char16_t *no : {u"", u"170", u"`", u"`v", u"`vs", u"`vs170 ", u"``170", u"a170", u"`x170"})
        EXPECT_FALSE(AcabaEnAnotacion(no)) << std::string(no, no + std::u16string_view(no).size());
}

TEST(TextoECI, OnlyALanguageWrittenWithADigitAtTheVeryHeadIsTakenAway) {
    EXPECT_EQ(u"`vs170 a", SinLenguaMalEscrita(u"`115.0`vs170 a"));
    EXPECT_EQ(u"`vs170", SinLenguaMalEscrita(u"`19.0`vs170"));
    for (const char16_t *texto : {u"`115.0 a", u" `115.0`vs170", u"`116.0`vs170", u"`115.0", u""})
        EXPECT_EQ(texto, SinLenguaMalEscrita(texto));
}

TEST(TextoECI, ACutFallsBetweenCharacters) {
    EXPECT_EQ("abc", CortaUtf8("abc", 255));
    EXPECT_EQ("ab", CortaUtf8("abc", 2));
    EXPECT_EQ("a", CortaUtf8("a\xC3\xB1", 2));
    EXPECT_EQ("a\xC3\xB1", CortaUtf8("a\xC3\xB1", 3));
    EXPECT_EQ("", CortaUtf8("\xF0\x9F\x98\x80", 3));
    const std::string largo(255, 'a');
    EXPECT_EQ(largo, CortaUtf8(largo + "\xC3\xB1", 255));
    EXPECT_EQ(largo.substr(1), CortaUtf8(largo.substr(1) + "\xC3\xB1", 255));
}

}  // namespace
}  // namespace ondalis
