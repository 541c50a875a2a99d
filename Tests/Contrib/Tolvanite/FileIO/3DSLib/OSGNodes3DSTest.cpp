/// \file
/// The trees and the places that come of the keyframer of 3DS files.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "Chunks3DS.h"
#include "MathPrinters.h"
#include "Scene3DS.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr unsigned Position = 0xB020;
constexpr unsigned Rotation = 0xB021;
constexpr unsigned Scale = 0xB022;
std::string const Singular =
    "2: TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n";

std::string const Triangle = triangle_3ds("t", 1);

/// The place of the triangle's right angle where one node with these parts shows it.
Pnt3f place_of_corner(std::string const &nodeParts, std::string const &mesh = Triangle)
{
    Scene3DS const scene = read_3ds(file_3ds(mesh, instance_3ds(0, "t", NoParent3DS, nodeParts)));
    return positions_of(*scene.geometries().at(0)).at(0);
}

std::string key_of(unsigned kind, std::vector<float> const &value)
{
    return track_3ds(kind, {{0, value}});
}

// --- trees ---

TEST(Nodes3DS, ASingleNodeGivesItsMeshAlone)
{
    EXPECT_EQ(read_3ds(file_3ds(Triangle, instance_3ds(0, "t", NoParent3DS))).describe(), "[[t1]]");
}

TEST(Nodes3DS, ASingleNodeThatShowsNothingGivesNull)
{
    EXPECT_EQ(read_3ds(file_3ds(Triangle, camera_3ds(0, "c", NoParent3DS))).describe(), "null");
    EXPECT_EQ(read_3ds(file_3ds(Triangle, instance_3ds(0, "other", NoParent3DS))).describe(),
              "null");
}

TEST(Nodes3DS, SeveralNodesAtTheTopComeInAGroupInTheOrderOfTheFile)
{
    std::string const nodes = instance_3ds(4, "b", NoParent3DS) + camera_3ds(5, "c", NoParent3DS) +
                              instance_3ds(6, "a", NoParent3DS);
    EXPECT_EQ(read_3ds(file_3ds(triangle_3ds("a") + triangle_3ds("b"), nodes)).describe(),
              "[[[b1]] [[a1]]]");
}

TEST(Nodes3DS, ANodeWithChildrenIsAGroupWithItsOwnMeshLast)
{
    std::string const nodes =
        instance_3ds(0, "t", NoParent3DS, chunk(0xB011, Bytes().text("top"))) +
        instance_3ds(1, "t", 0) + camera_3ds(2, "camera", 0) + camera_3ds(3, "group", 0) +
        instance_3ds(4, "t", 3);
    EXPECT_EQ(read_3ds(file_3ds(Triangle, nodes)).describe(), "top[[[t1]] group[[[t1]]] [[t1]]]");
}

TEST(Nodes3DS, AGroupWhoseChildrenShowNothingStays)
{
    std::string const nodes = instance_3ds(0, "none", NoParent3DS) + camera_3ds(1, "c", 0);
    Scene3DS const scene = read_3ds(file_3ds(Triangle, nodes));
    EXPECT_EQ(scene.describe(), "[]");
    EXPECT_STREQ(getName(scene.root), ""); // an instance without a name of its own
}

TEST(Nodes3DS, AParentMayStandBehindItsChildren)
{
    std::string const nodes =
        instance_3ds(1, "t", 9) + instance_3ds(2, "t", 9) + camera_3ds(9, "late", NoParent3DS);
    EXPECT_EQ(read_3ds(file_3ds(Triangle, nodes)).describe(), "late[[[t1]] [[t1]]]");
}

TEST(Nodes3DS, WithoutAnIdANodeHasItsRunningNumberOverAllKinds)
{
    std::string const nodes =
        chunk(0xB001) + chunk(0xB003, header_3ds("c", NoParent3DS)) + instance_3ds(7, "t", 1);
    EXPECT_EQ(read_3ds(file_3ds(Triangle, nodes)).describe(), "[c[[[t1]]]]");
}

// --- nodes of which the file says nothing ---

TEST(Nodes3DS, NodesOfWhichTheFileSaysNothingStillTellThatThereAreNodesAndHowMany)
{
    EXPECT_EQ(read_3ds(file_3ds(Triangle, chunk(0xB002))).describe(), "null");
    EXPECT_EQ(read_3ds(file_3ds(Triangle, chunk(0xB002) + chunk(0xB003))).describe(), "[]");
    std::string const shown = instance_3ds(5, "t", NoParent3DS);
    EXPECT_EQ(read_3ds(file_3ds(Triangle, chunk(0xB002) + shown)).describe(), "[[[t1]]]");
    EXPECT_EQ(read_3ds(file_3ds(Triangle, shown + chunk(0xB005))).describe(), "[[[t1]]]");
}

TEST(Nodes3DS, ANodeOfWhichTheFileSaysNothingMayHaveChildren)
{
    std::string nodes;
    for(int i = 0; i < 5; ++i)
        nodes += chunk(0xB002);
    nodes +=
        instance_3ds(7, "t", 3) + instance_3ds(8, "t", 3) + chunk(0xB001) + instance_3ds(9, "t", 7);
    Scene3DS const scene = read_3ds(file_3ds(Triangle, nodes + camera_3ds(10, "c", 6)));
    // The second instance is the sixth node, but its id is 8.
    EXPECT_EQ(scene.describe(), "[[[[[t1]] [[t1]]] [[t1]]]]");
    EXPECT_THAT(scene.log, ElementsAre("2: Node 'c' has no usable parent and goes to the top\n"));
}

TEST(Nodes3DS, InstancesWithoutANameShowTheMeshThatHasTheirs)
{
    std::string const nodes = chunk(0xB003) + chunk(0xB002) + chunk(0xB005) + chunk(0xB002);
    std::string const mesh = triangle_3ds("$$$DUMMY");
    EXPECT_EQ(read_3ds(file_3ds(mesh, nodes)).describe(), "[[[$$$DUMMY1]] [[$$$DUMMY1]]]");
    EXPECT_EQ(read_3ds(chunk(0x4D4D, chunk(0xB000, nodes) + chunk(0x3D3D, mesh))).describe(),
              "[[[$$$DUMMY1]] [[$$$DUMMY1]]]");
}

TEST(Nodes3DS, OfEqualIdsTheFirstIsTheParent)
{
    std::string const nodes = camera_3ds(3, "first", NoParent3DS) +
                              camera_3ds(3, "second", NoParent3DS) + instance_3ds(4, "t", 3);
    EXPECT_EQ(read_3ds(file_3ds(Triangle, nodes)).describe(), "[first[[[t1]]]]");
}

struct ParentCase
{
    char const *name;
    std::string nodes;
    char const *scene;
    std::size_t warnings;
};
void PrintTo(ParentCase const &row, std::ostream *out) { *out << row.name; }

class UnusableParents3DS : public testing::TestWithParam<ParentCase>
{
};

TEST_P(UnusableParents3DS, LeaveTheNodeAtTheTopWithAWarning)
{
    Scene3DS const scene = read_3ds(file_3ds(Triangle, GetParam().nodes));
    EXPECT_EQ(scene.describe(), GetParam().scene);
    EXPECT_EQ(scene.log.size(), GetParam().warnings);
    for(std::string const &line : scene.log)
        EXPECT_THAT(line, testing::HasSubstr("has no usable parent and goes to the top\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Nodes3DS, UnusableParents3DS,
    testing::Values(
        ParentCase{"Unknown", instance_3ds(0, "t", 77), "[[t1]]", 1},
        ParentCase{"Itself", instance_3ds(0, "t", 0), "[[t1]]", 1},
        ParentCase{"EachOther", instance_3ds(0, "t", 1) + instance_3ds(1, "t", 0),
                   "[[[t1]] [[t1]]]", 1},
        ParentCase{"NoHeader", chunk(0xB002), "null", 0},
        ParentCase{"Circle", camera_3ds(0, "a", 1) + camera_3ds(1, "b", 2) + camera_3ds(2, "c", 0),
                   "c[b[]]", 1}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(Nodes3DS, AChainOfManyNodesIsReadInLinearTime)
{
    std::string nodes;
    for(unsigned i = 0; i < 60000; ++i)
        nodes += instance_3ds(i, "t", i == 0 ? NoParent3DS : i - 1);
    Scene3DS const scene = read_3ds(file_3ds(triangle_3ds("other"), nodes));
    UInt32 depth = 0;
    for(Node *node = scene.root; node != nullptr && node->getNChildren() > 0;
        node = node->getChild(0))
        ++depth;
    EXPECT_EQ(depth, 59998u); // the last node is a leaf that shows nothing
}

// --- places ---

TEST(Nodes3DS, AMeshGoesFromItsOwnSpaceToThePlaceOfItsNode)
{
    EXPECT_EQ(place_of_corner(""), Pnt3f(1, 0, 0));
    EXPECT_EQ(place_of_corner(key_of(Position, {10, 20, 30})), Pnt3f(11, 20, 30));
    std::string const moved =
        triangle_3ds("t", 1, matrix_3ds({1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3}));
    EXPECT_EQ(place_of_corner("", moved), Pnt3f(0, -2, -3));
    EXPECT_EQ(place_of_corner(key_of(Position, {1, 2, 3}), moved), Pnt3f(1, 0, 0));
}

TEST(Nodes3DS, APivotMovesBeforeTheNodeDoes)
{
    EXPECT_EQ(place_of_corner(pivot_3ds({1, 2, 3})), Pnt3f(0, -2, -3));
    EXPECT_EQ(place_of_corner(pivot_3ds({1, 0, 0}) + key_of(Scale, {5, 5, 5})), Pnt3f(0, 0, 0));
    EXPECT_EQ(place_of_corner(pivot_3ds({1e-7f, 0, 0})), Pnt3f(1, 0, 0));
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_EQ(place_of_corner(pivot_3ds({nan, 4, 4})), Pnt3f(1, 0, 0));
}

TEST(Nodes3DS, ARotationTurnsByTheNegativeAngleAboutItsAxisOfAnyLength)
{
    Real32 const quarter = 1.57079633f;
    Pnt3f const turned = place_of_corner(key_of(Rotation, {quarter, 0, 0, 5}));
    EXPECT_TRUE(turned.equals(Pnt3f(0, -1, 0), 1e-6f)) << turned[0] << " " << turned[1];
    EXPECT_EQ(place_of_corner(key_of(Rotation, {quarter, 0, 0, 1e-6f})), Pnt3f(1, 0, 0));
}

TEST(Nodes3DS, ScalesThenTurnsThenMoves)
{
    Pnt3f const place =
        place_of_corner(key_of(Position, {0, 0, 7}) + key_of(Rotation, {1.57079633f, 0, 0, 1}) +
                        key_of(Scale, {3, 1, 1}));
    EXPECT_TRUE(place.equals(Pnt3f(0, -3, 7), 1e-5f));
}

TEST(Nodes3DS, AChildMovesWithItsParentAndACameraOnlyMoves)
{
    std::string const nodes =
        camera_3ds(0, "c", NoParent3DS, key_of(Position, {0, 0, 100}) + key_of(Rotation, {9})) +
        instance_3ds(1, "t", 0, key_of(Position, {5, 0, 0}));
    Scene3DS const scene = read_3ds(file_3ds(Triangle, nodes));
    EXPECT_EQ(positions_of(*scene.geometries().at(0))[0], Pnt3f(6, 0, 100));
}

TEST(Nodes3DS, NormalsTurnWithTheMeshAndHaveUnitLength)
{
    std::string const node = instance_3ds(
        0, "t", NoParent3DS, key_of(Rotation, {1.57079633f, 1, 0, 0}) + key_of(Scale, {1, 1, 9}));
    Scene3DS const scene = read_3ds(file_3ds(Triangle, node));
    EXPECT_TRUE(normal_of(*scene.geometries()[0], 0).equals(Vec3f(0, 1, 0), 1e-6f));
}

TEST(Nodes3DS, ASingularMatrixOfAMeshIsOneLineForEachNodeThatShowsIt)
{
    std::string const flat = triangle_3ds("t", 1, matrix_3ds({0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}));
    std::string const nodes = instance_3ds(0, "t", NoParent3DS) + instance_3ds(1, "t", 0);
    Scene3DS const scene = read_3ds(file_3ds(flat, nodes));
    EXPECT_THAT(scene.log, ElementsAre(Singular, Singular));
    EXPECT_EQ(positions_of(*scene.geometries()[0])[0], Pnt3f(1, 0, 0));
}

TEST(Nodes3DS, ASingularParentIsNoReasonForALine)
{
    std::string const nodes =
        instance_3ds(0, "none", NoParent3DS, key_of(Scale, {0, 0, 0})) + instance_3ds(1, "t", 0);
    Scene3DS const scene = read_3ds(file_3ds(Triangle, nodes));
    EXPECT_THAT(scene.log, IsEmpty());
    EXPECT_EQ(positions_of(*scene.geometries()[0])[0], Pnt3f(0, 0, 0));
}

// --- keys ---

Real32 x_at_frame_0(std::vector<Key3DS> const &keys, unsigned flags = 0)
{
    return place_of_corner(track_3ds(Position, keys, flags))[0] - 1;
}

TEST(Nodes3DS, BeforeTheFirstKeyCountsTheFirstAndFromTheLastOnTheLast)
{
    EXPECT_EQ(x_at_frame_0({{10, {7, 0, 0}}, {20, {9, 0, 0}}}), 7);
    EXPECT_EQ(x_at_frame_0({{UInt32(-20), {7, 0, 0}}, {UInt32(-10), {9, 0, 0}}}), 9);
    EXPECT_EQ(x_at_frame_0({{UInt32(-20), {7, 0, 0}}, {0, {9, 0, 0}}}), 9);
    EXPECT_EQ(x_at_frame_0({{0, {7, 0, 0}}, {0, {9, 0, 0}}}), 7);
    EXPECT_EQ(x_at_frame_0({}), 0);
}

TEST(Nodes3DS, BetweenTwoKeysTheWayIsStraightAndAtTheFrameOfAKeyItsValueIsExact)
{
    EXPECT_FLOAT_EQ(x_at_frame_0({{UInt32(-1), {0, 0, 0}}, {3, {8, 0, 0}}}), 2);
    EXPECT_FLOAT_EQ(x_at_frame_0({{UInt32(-5), {1, 0, 0}}, {0, {4, 0, 0}}, {9, {8, 0, 0}}}), 4);
}

TEST(Nodes3DS, NeighboursBendTheWayAndTensionStraightensIt)
{
    auto const keys = [](float tension)
    {
        return std::vector<Key3DS>{{UInt32(-6), {0, 0, 0}},
                                   {UInt32(-2), {0, 0, 0}, 1, {tension}},
                                   {2, {8, 0, 0}, 1, {tension}},
                                   {6, {8, 0, 0}}};
    };
    EXPECT_FLOAT_EQ(x_at_frame_0(keys(0)), 4);
    EXPECT_FLOAT_EQ(x_at_frame_0(keys(1)), 4); // the middle of a symmetrical way
    std::vector<Key3DS> oneSided = keys(0);
    oneSided[3].value[0] = 16;                     // the tangent at the third key is 8, not 4
    EXPECT_FLOAT_EQ(x_at_frame_0(oneSided), 3.5f); // (0 + 8) / 2 + (4 - 8) / 8
}

TEST(Nodes3DS, ARepeatingTrackWraps)
{
    std::vector<Key3DS> const keys = {{UInt32(-30), {0, 0, 0}}, {UInt32(-10), {20, 0, 0}}};
    EXPECT_EQ(x_at_frame_0(keys), 20);
    EXPECT_FLOAT_EQ(x_at_frame_0(keys, 1), 10); // frame 0 is frame -20 of the next round
    EXPECT_EQ(x_at_frame_0({{5, {3, 0, 0}}, {5, {4, 0, 0}}}, 1), 3);
}

TEST(Nodes3DS, ASmoothTrackTakesTheNeighboursOfItsEndsFromTheOtherEnd)
{
    std::vector<Key3DS> const keys = {
        {UInt32(-4), {0, 0, 0}}, {4, {8, 0, 0}}, {12, {4, 0, 0}}, {20, {0, 0, 0}}};
    EXPECT_FLOAT_EQ(x_at_frame_0(keys), 4.75f); // tangents 8 and 2: 4 + (8 - 2) / 8
    EXPECT_FLOAT_EQ(x_at_frame_0(keys, 2), 4);  // tangents 2 and 2
}

TEST(Nodes3DS, RotationsAddUpFromKeyToKey)
{
    std::vector<Key3DS> const keys = {{UInt32(-2), {0.5f, 0, 0, 1}},
                                      {UInt32(-1), {1.07079633f, 0, 0, 1}}};
    EXPECT_TRUE(place_of_corner(track_3ds(Rotation, keys)).equals(Pnt3f(0, -1, 0), 1e-6f));
}

TEST(Nodes3DS, HalfWayBetweenTwoRotationsIsHalfTheTurn)
{
    std::vector<Key3DS> const keys = {{UInt32(-1), {0, 0, 0, 1}}, {1, {1.57079633f, 0, 0, 1}}};
    Real32 const half = std::sqrt(0.5f);
    EXPECT_TRUE(place_of_corner(track_3ds(Rotation, keys)).equals(Pnt3f(half, -half, 0), 1e-6f));
}

TEST(Nodes3DS, KeysOutOfOrderKeepTheMeshAtAFinitePlace)
{
    std::vector<Key3DS> const keys{
        {UInt32(-9), {1, 0, 0}}, {50, {2, 0, 0}}, {UInt32(-5), {3, 0, 0}}, {7, {4, 0, 0}}};
    for(unsigned const kind : {Position, Scale})
    {
        Pnt3f const place = place_of_corner(track_3ds(kind, keys));
        EXPECT_TRUE(std::isfinite(place[0]) && place[0] >= 1 && place[0] <= 5) << place[0];
        EXPECT_EQ(place[1], 0);
        EXPECT_EQ(place[2], 0);
    }
}

TEST(Nodes3DS, ShapesThatAreNotANumberMoveCornersAndLoseNone)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    std::vector<float> const shape(5, nan);
    std::vector<Key3DS> const keys{{UInt32(-9), {1, 0, 0}, 31, shape},
                                   {UInt32(-2), {1, 0, 0}, 31, shape},
                                   {9, {4, 0, 0}, 31, shape},
                                   {19, {4, 0, 0}}};
    for(unsigned const kind : {Position, Scale})
    {
        Scene3DS const scene =
            read_3ds(file_3ds(Triangle, instance_3ds(0, "t", NoParent3DS, track_3ds(kind, keys))));
        ASSERT_EQ(scene.describe(), "[[t1]]");
        EXPECT_EQ(positions_of(*scene.geometries().at(0)).size(), 3u);
    }
}
} // namespace
