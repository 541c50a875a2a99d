#include "OSGViewCube.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
WindowView const Start{{3, 4, 12}, {1, -2, 5}, {0.1f, 1, 0.2f}, 45, 640, 480};
Pnt2f const Centre(580, 60);
constexpr Real32 Size = 100;
/// Half of a side of the cube in pixels.
Real32 const Half = Size / (2 * std::sqrt(3.f));

constexpr StandardView Faces[] = {StandardView::Front, StandardView::Back, StandardView::Left,
                                  StandardView::Right, StandardView::Top,  StandardView::Bottom};

ViewCube cube_of(WindowView const &view, SceneUp up = SceneUp::Y)
{
    return ViewCube(view, Centre, Size, up);
}

Pnt2f beside_centre(Real32 x, Real32 y) { return Pnt2f(Centre[0] + x, Centre[1] + y); }

TEST(ViewCube, AFaceThatIsLookedAtStraightIsSeenAlone)
{
    for(SceneUp const up : {SceneUp::Y, SceneUp::Z})
    {
        for(StandardView const standard : Faces)
        {
            ViewCube const cube = cube_of(standard_view(Start, standard, up), up);
            ASSERT_EQ(cube.getFaces().size(), 1u);
            ViewCube::Face const &face = cube.getFaces()[0];
            EXPECT_EQ(face.standard, standard);
            EXPECT_NEAR(face.shade, 1, 1e-5);
            Pnt2f const expected[] = {beside_centre(-Half, Half), beside_centre(Half, Half),
                                      beside_centre(Half, -Half), beside_centre(-Half, -Half)};
            for(std::size_t i = 0; i < 4; ++i)
                EXPECT_LT((face.corners[i] - expected[i]).length(), 1e-3) << i;
        }
    }
}

TEST(ViewCube, AFaceThatIsClickedGivesItsStandardView)
{
    for(SceneUp const up : {SceneUp::Y, SceneUp::Z})
    {
        for(StandardView const standard : Faces)
        {
            WindowView const view = standard_view(Start, standard, up);
            ViewCube const cube = cube_of(view, up);
            std::optional<CubePart> const part = cube.partAt(Centre);
            ASSERT_TRUE(part.has_value());
            EXPECT_EQ(part->kind(), CubePart::Kind::Face);
            EXPECT_EQ(part->direction, standard_direction(standard, up));
            EXPECT_EQ(cube.viewFrom(Start, *part), view);
        }
    }
}

TEST(ViewCube, IsometricViewsComeFromTheCornerOfFrontRightAndTop)
{
    for(SceneUp const up : {SceneUp::Y, SceneUp::Z})
    {
        ViewCube const cube = cube_of(Start, up);
        Vec3f const corner = up == SceneUp::Y ? Vec3f(1, 1, 1) : Vec3f(1, -1, 1);
        WindowView const isometric = standard_view(Start, StandardView::Isometric, up);
        EXPECT_EQ(cube.viewFrom(Start, {corner}), isometric);
        ViewCube const seen = cube_of(isometric, up);
        ASSERT_EQ(seen.getFaces().size(), 3u);
        for(ViewCube::Face const &face : seen.getFaces())
        {
            EXPECT_NEAR(face.shade, 1 / std::sqrt(3.), 1e-5);
            EXPECT_TRUE(face.standard == StandardView::Front ||
                        face.standard == StandardView::Right || face.standard == StandardView::Top);
        }
        EXPECT_EQ(seen.partAt(Centre).value().direction, corner);
        EXPECT_EQ(seen.partAt(Centre).value().kind(), CubePart::Kind::Corner);
    }
}

TEST(ViewCube, OfAFaceTheMiddleTheBordersAndTheCornersAreParts)
{
    ViewCube const cube = cube_of(standard_view(Start, StandardView::Front, SceneUp::Y));
    Real32 const edge = 0.85f * Half;
    Real32 const inside = 0.69f * Half;
    struct
    {
        Real32 x, y;
        Vec3f direction;
    } const cases[] = {{0, 0, {0, 0, 1}},        {inside, -inside, {0, 0, 1}},
                       {edge, 0, {1, 0, 1}},     {-edge, 0, {-1, 0, 1}},
                       {0, -edge, {0, 1, 1}},    {0, edge, {0, -1, 1}},
                       {edge, -edge, {1, 1, 1}}, {-edge, edge, {-1, -1, 1}}};
    for(auto const &[x, y, direction] : cases)
    {
        std::optional<CubePart> const part = cube.partAt(beside_centre(x, y));
        ASSERT_TRUE(part.has_value());
        EXPECT_EQ(part->direction, direction) << x << ' ' << y;
    }
    EXPECT_FALSE(cube.partAt(beside_centre(Half * 1.01f, 0)).has_value());
    EXPECT_FALSE(cube.partAt(beside_centre(0, -Half * 1.01f)).has_value());
    EXPECT_FALSE(cube.partAt({NAN, 0}).has_value());
}

/// The directions of faces, edges and corners.
std::vector<Vec3f> every_part()
{
    std::vector<Vec3f> directions;
    for(Real32 const x : {-1.f, 0.f, 1.f})
    {
        for(Real32 const y : {-1.f, 0.f, 1.f})
        {
            for(Real32 const z : {-1.f, 0.f, 1.f})
                directions.emplace_back(x, y, z);
        }
    }
    std::erase(directions, Vec3f(0, 0, 0));
    return directions;
}

TEST(ViewCube, EachPartIsSeenInTheMiddleOfTheViewThatItGives)
{
    for(SceneUp const up : {SceneUp::Y, SceneUp::Z})
    {
        for(Vec3f const &direction : every_part())
        {
            WindowView const view = cube_of(Start, up).viewFrom(Start, {direction});
            EXPECT_NE(view, Start);
            EXPECT_EQ(view.at, Start.at);
            EXPECT_NEAR((view.from - view.at).length(), (Start.from - Start.at).length(), 1e-4);
            ViewCube const cube = cube_of(view, up);
            EXPECT_EQ(cube.partAt(Centre).value().direction, direction);
            EXPECT_EQ(cube.getFaces().size(), cube.outlinesOf({direction}).size());
            // The scene stands upright.
            Vec3f const upwards = up == SceneUp::Y ? Vec3f(0, 1, 0) : Vec3f(0, 0, 1);
            Vec3f back = view.from - view.at;
            bool const isFromAboveOrBelow = std::abs(back.dot(upwards)) > 0.99f * back.length();
            EXPECT_EQ(view.up == upwards, !isFromAboveOrBelow);
        }
    }
}

/// The face through which a ray against `back` enters the cube of side 2, and where; the slow way.
std::optional<CubePart> slow_part(WindowView const &view, Real64 x, Real64 y)
{
    Matrix const camera = camera_of(view);
    Vec3d axes[3];
    for(UInt32 i = 0; i < 3; ++i)
        axes[i] = Vec3d(camera[i][0], camera[i][1], camera[i][2]);
    std::optional<CubePart> part;
    Real64 nearest = -1e9;
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        for(Real64 const sign : {-1., 1.})
        {
            // The point x * right + y * up + t * back in the plane of the face.
            Vec3d const start = axes[0] * x + axes[1] * y;
            Real64 const t = (sign - start[axis]) / axes[2][axis];
            Vec3d const point = start + axes[2] * t;
            Vec3f direction;
            bool isInside = true;
            for(UInt32 i = 0; i < 3; ++i)
            {
                Real64 const place = i == axis ? sign : point[i];
                isInside = isInside && std::abs(place) <= 1;
                direction[i] = std::abs(place) <= 0.7 ? 0.f : (place > 0 ? 1.f : -1.f);
            }
            if(isInside && t > nearest)
            {
                nearest = t;
                part = CubePart{direction};
            }
        }
    }
    return part;
}

TEST(ViewCube, TheFirstFaceOnTheWayOfALineIsUnderThePixel)
{
    RandomNumbers random(11);
    int hits = 0;
    int differences = 0; // within the rounding at a border
    for(int i = 0; i < 3000; ++i)
    {
        WindowView view = Start;
        view.from = view.at + random.vector() * 9;
        view.up = random.vector();
        ASSERT_TRUE(is_view(view));
        Real32 const x = random.real(-50, 50);
        Real32 const y = random.real(-50, 50);
        auto const part = cube_of(view).partAt(beside_centre(x, -y));
        auto const expected = slow_part(view, x / Half, y / Half);
        hits += part.has_value() ? 1 : 0;
        differences += part == expected ? 0 : 1;
    }
    EXPECT_GT(hits, 1000);
    EXPECT_LE(differences, 3);
}

TEST(ViewCube, FacesComeFromTheDeepestAndLieWithinTheSquare)
{
    RandomNumbers random(12);
    for(int i = 0; i < 200; ++i)
    {
        WindowView view = Start;
        view.from = view.at + random.vector();
        ViewCube const cube = cube_of(view, SceneUp::Z);
        EXPECT_GE(cube.getFaces().size(), 1u);
        EXPECT_LE(cube.getFaces().size(), 3u);
        Real32 before = 0;
        for(ViewCube::Face const &face : cube.getFaces())
        {
            EXPECT_GE(face.shade, before);
            before = face.shade;
            for(Pnt2f const &corner : face.corners)
                EXPECT_LE((corner - Centre).length(), Size / 2 + 1e-3f);
        }
    }
}

TEST(ViewCube, OfAViewThatIsNoneHasNoFaces)
{
    WindowView none = Start;
    none.at = none.from;
    EXPECT_TRUE(cube_of(none).getFaces().empty());
    EXPECT_FALSE(cube_of(none).partAt(Centre).has_value());
    EXPECT_EQ(cube_of(none).viewFrom(none, {{1, 0, 0}}), none);
    EXPECT_EQ(cube_of(Start).viewFrom(Start, {{0, 0, 0}}), Start);
    EXPECT_TRUE(ViewCube(Start, Centre, 0).getFaces().empty());
    EXPECT_TRUE(ViewCube(Start, {INFINITY, 0}, 10).getFaces().empty());
}

TEST(Triad, ShowsTheAxesFromTheDeepestTip)
{
    WindowView const front = standard_view(Start, StandardView::Front, SceneUp::Y);
    std::array<TriadAxis, 3> const axes = triad_of(front, 40);
    EXPECT_EQ(axes[2].axis, 2u); // z looks at the viewer
    EXPECT_NEAR(axes[2].depth, -40, 1e-3);
    for(TriadAxis const &axis : axes)
    {
        Vec2f const expected = axis.axis == 0   ? Vec2f(40, 0)
                               : axis.axis == 1 ? Vec2f(0, -40)
                                                : Vec2f(0, 0);
        EXPECT_LT((axis.tip - expected).length(), 1e-3) << axis.axis;
    }
    WindowView const back = standard_view(Start, StandardView::Back, SceneUp::Y);
    EXPECT_EQ(triad_of(back, 40)[0].axis, 2u);
    EXPECT_NEAR(triad_of(back, 40)[0].depth, 40, 1e-3);
    WindowView none = Start;
    none.up = none.from - none.at;
    for(TriadAxis const &axis : triad_of(none, 40))
        EXPECT_EQ(axis.tip, Vec2f(0, 0));
}
} // namespace
} // namespace OSG::Test
