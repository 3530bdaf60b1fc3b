#include "desktop/RegionImagen.h"

#include <gtest/gtest.h>

#include <string>

namespace ondalis {
namespace {

// "." is transparent, anything else is not.
std::vector<QRect> Region(const std::vector<std::string> &filas) {
    std::vector<std::uint32_t> pixeles;
    for (const std::string &fila : filas)
        for (const char c : fila) pixeles.push_back(c == '.' ? kVerdeTransparente : 0x102030U);
    return GetRegionImg(pixeles, QSize(static_cast<int>(filas.front().size()), static_cast<int>(filas.size())));
}

TEST(RegionImagen, EachRunOfARowIsOneRectangle) {
    EXPECT_EQ(Region({".##.#", ".....", "#...."}), (std::vector<QRect>{{1, 0, 2, 1}, {4, 0, 1, 1}, {0, 2, 1, 1}}));
}

TEST(RegionImagen, AFullyOpaqueRowEndsTheRegionInOneRectangleReachingTheBottom) {
    EXPECT_EQ(Region({".###.", "#####", ".....", "..#.."}), (std::vector<QRect>{{1, 0, 3, 1}, {0, 1, 5, 3}}));
}

TEST(RegionImagen, AWhollyTransparentPictureHasNoRegion) { EXPECT_TRUE(Region({"...", "..."}).empty()); }

TEST(RegionImagen, AnOpaquePictureIsOneRectangle) {
    EXPECT_EQ(Region({"##", "##", "##"}), (std::vector<QRect>{{0, 0, 2, 3}}));
}

TEST(RegionImagen, OnlyTheVeryColourIsTransparent) {
    const std::vector<std::uint32_t> pixeles{0x00FF00, 0x00FE00, 0x00FF00};
    EXPECT_EQ(GetRegionImg(pixeles, {3, 1}), (std::vector<QRect>{{1, 0, 1, 1}}));
}

}  // namespace
}  // namespace ondalis
