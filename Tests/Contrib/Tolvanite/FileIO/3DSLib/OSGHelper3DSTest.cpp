/// \file
/// The conversion of 3DS files: what it leaves alone, and what is as ever behind it.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "Chunks3DS.h"
#include "MathPrinters.h"
#include "OSGChangeList.h"
#include "OSGImage.h"
#include "OSGTextureObjChunk.h"
#include "OSGThread.h"
#include "Scene3DS.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// The first corner, at the origin in the file, of a triangle that a node with these parts shows.
Pnt3f first_corner(std::string const &nodeParts)
{
    Scene3DS const scene =
        read_3ds(file_3ds(triangle_3ds("t"), instance_3ds(0, "t", NoParent3DS, nodeParts)));
    return positions_of(*scene.geometries().at(0)).at(0);
}

TEST(Helper3DS, APivotCountsBeyondAMillionthOfAUnitAlone)
{
    EXPECT_EQ(first_corner(pivot_3ds({9e-7f, -9e-7f, 0})), Pnt3f(0, 0, 0));
    EXPECT_EQ(first_corner(pivot_3ds({0, 2e-6f, 0})), Pnt3f(0, -2e-6f, 0));
}

TEST(Helper3DS, APlaceCountsBeyondAMillionthOfAUnitAlone)
{
    EXPECT_EQ(first_corner(track_3ds(0xB020, {{0, {9e-7f, 0, -9e-7f}}})), Pnt3f(0, 0, 0));
    EXPECT_EQ(first_corner(track_3ds(0xB020, {{0, {2e-6f, 0, 0}}})), Pnt3f(2e-6f, 0, 0));
}

// A matrix would make an infinite corner one that is not a number.
TEST(Helper3DS, WhereTheNodeMovesNothingCornersPassAsTheyAre)
{
    Real32 const infinite = std::numeric_limits<Real32>::infinity();
    std::string const mesh =
        mesh_3ds("m", points_3ds({infinite, 0, -0.f, 1, 0, 0, 0, 1, 0}) + faces_3ds({{{0, 1, 2}}}));
    Scene3DS const scene = read_3ds(file_3ds(mesh, instance_3ds(0, "m", NoParent3DS)));
    Pnt3f const corner = positions_of(*scene.geometries().at(0)).at(0);
    EXPECT_EQ(corner, Pnt3f(infinite, 0, 0));
    EXPECT_TRUE(std::signbit(corner[2]));
}

TEST(Helper3DS, WhatWasReadIsCommitted)
{
    Scene3DS const scene = read_3ds(file_3ds(triangle_3ds("t")));
    EXPECT_FALSE(Thread::getCurrentChangeList()->hasOpenEdits());
    EXPECT_EQ(scene.root->getChangeMask(), 0u);
    EXPECT_EQ(scene.geometries().at(0)->getChangeMask(), 0u);
}

TEST(Helper3DS, WhetherAlphaIsBinaryIsTakenFromThePicture)
{
    TempFolder const folder;
    for(UInt8 const alpha : {255, 100})
    {
        UInt8 const pixels[] = {1, 2, 3, alpha};
        UnrecordedRefPtr<Image> const image(Image::create());
        image->set(1, 1, 4, pixels);
        std::string const path = folder.path("a.png");
        ASSERT_TRUE(image->write(path.c_str()));
        for(unsigned const map : {0xA200u, 0xA33Au, 0xA230u})
        {
            Scene3DS const scene =
                read_3ds(file_3ds(material_3ds("m", map_3ds(map, path)) +
                                  triangle_3ds("t", 0, "", face_material_3ds("m", {0}))));
            auto *const texture = chunk_of<TextureObjChunk>(*chunks_of(*scene.geometries().at(0)));
            ASSERT_NE(texture, nullptr);
            EXPECT_EQ(texture->getImage()->getForceAlphaBinary(), alpha == 255);
        }
    }
}
} // namespace
