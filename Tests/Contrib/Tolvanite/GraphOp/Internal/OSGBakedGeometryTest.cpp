// What a transform does to the arrays of a geometry, seen through the operation and its parameters.

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGMrgGraphOp.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

struct Shape
{
    std::vector<Pnt3f> positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    std::vector<Vec3f> normals = {};
};

NodePtr make_shape(Shape const &shape)
{
    return make_node(
        make_geometry(one_primitive(TrianglesPrimitive, shape.positions, shape.normals)));
}

/// Moves `shape` up through a transform of that matrix and gives its new core.
Geometry &bake(Node *shape, Matrix const &matrix, char const *params = "color_is_vector=0")
{
    NodePtr const root = make_group({make_transform(matrix, {NodePtr(shape)})});
    UnrecordedRefPtr<MrgGraphOp> const operation(MrgGraphOp::create());
    operation->setParams(params);
    operation->traverse(root);
    return *core_of<Geometry>(shape);
}

template <class Property>
auto const &values_of(GeoVectorProperty *property)
{
    return dynamic_cast<Property &>(*property).getValues();
}

TEST(BakedGeometry, PositionsAreDividedByTheirOwnW)
{
    Matrix matrix = translation(1, 2, 3);
    matrix[0][3] = 1;
    NodePtr const shape = make_shape({{{0, 0, 0}, {1, 0, 0}, {3, 2, 5}}});
    auto const &points = values_of<GeoPnt3fProperty>(bake(shape, matrix).getPositions());
    EXPECT_EQ(points[0], Pnt3f(1, 2, 3));
    EXPECT_EQ(points[1], Pnt3f(1, 1, 1.5f));
    EXPECT_EQ(points[2], Pnt3f(1, 1, 2));
}

TEST(BakedGeometry, AtWZeroAPositionStaysUndividedWithAWarning)
{
    Matrix matrix = translation(1, 2, 3);
    matrix[3][3] = 0;
    NodePtr const shape = make_shape({{{4, 0, 0}, {0, 0, 0}, {0, 0, 0}}});
    LogCapture const log;
    auto const &points = values_of<GeoPnt3fProperty>(bake(shape, matrix).getPositions());
    EXPECT_EQ(points[0], Pnt3f(5, 2, 3));
    EXPECT_EQ(log.count("TransformationMatrix<>::multFull(Pnt3, Pnt3): w == 0.0\n"), 3u);
}

TEST(BakedGeometry, NormalsAreTurnedByTheMatrixItselfAndNormalised)
{
    Matrix matrix = scaling(2, 1, 1);
    matrix[3] = {7, 8, 9, 1};
    NodePtr const shape = make_shape({.normals = {{1, 1, 0}, {0, 0, 5}, {0, 0, 0}}});
    auto const &normals = values_of<GeoVec3fProperty>(bake(shape, matrix).getNormals());
    Vec3f expected(2, 1, 0);
    expected.normalize();
    EXPECT_EQ(normals[0], expected);
    EXPECT_EQ(normals[1], Vec3f(0, 0, 1));
    EXPECT_EQ(normals[2], Vec3f(0, 0, 0)) << "shorter than 1e-6";
}

TEST(BakedGeometry, ANormalShorterThanAMillionthIsTurnedOnly)
{
    NodePtr const shape = make_shape({.normals = {{5e-7f, 0, 0}, {0, 0, 1}, {0, 0, 1}}});
    auto const &normals =
        values_of<GeoVec3fProperty>(bake(shape, scaling(1.5f, 1, 1)).getNormals());
    EXPECT_EQ(normals[0], Vec3f(5e-7f * 1.5f, 0, 0));
}

TEST(BakedGeometry, ANotANumberInTheMatrixStaysInTheArrays)
{
    Matrix matrix;
    matrix[3][0] = std::numeric_limits<Real32>::quiet_NaN();
    NodePtr const shape = make_shape({.normals = {{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}});
    Geometry const &baked = bake(shape, matrix);
    auto const &points = values_of<GeoPnt3fProperty>(baked.getPositions());
    EXPECT_TRUE(std::isnan(points[0][0]));
    EXPECT_EQ(points[1][1], 0);
    EXPECT_EQ(values_of<GeoVec3fProperty>(baked.getNormals())[0], Vec3f(1, 0, 0));
}

TEST(BakedGeometry, IndicesTypesAndLengthsAreCopied)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {3}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {2, 1, 0}});
    NodePtr const shape = make_node(geometry);
    Geometry const &baked = bake(shape, translation(1, 0, 0));
    EXPECT_NE(&baked, geometry);
    EXPECT_NE(baked.getTypes(), geometry->getTypes());
    EXPECT_NE(baked.getIndex(0), geometry->getIndex(0));
    EXPECT_EQ(baked.getIndex(0)->getValue(0), 2u);
    EXPECT_EQ(baked.beginTriangles().getPosition(0), Pnt3f(1, 1, 0));
}

// --- which arrays turn ---

struct ArrayCase
{
    char const *name;
    UInt16 slot;
    char const *params;
    bool turns;
};

void PrintTo(ArrayCase const &row, std::ostream *out) { *out << row.name; }

class Arrays : public testing::TestWithParam<ArrayCase>
{
};

TEST_P(Arrays, OfThreeComponentsTurnWhereTheParametersSaySo)
{
    NodePtr const shape = make_shape({});
    Geometry &geometry = *core_of<Geometry>(shape);
    bool const isColor = GetParam().slot < Geometry::TexCoordsSlot;
    if(isColor)
        geometry.setProperty(make_property<GeoColor3fProperty>(std::vector<Color3f>{{3, 0, 0}}),
                             GetParam().slot);
    else
        geometry.setProperty(make_property<GeoVec3fProperty>(std::vector<Vec3f>{{3, 0, 0}}),
                             GetParam().slot);
    Matrix quarter = rotation(Vec3f(0, 0, 1), 0);
    quarter[0] = {0, 1, 0, 0};
    quarter[1] = {-1, 0, 0, 0};
    GeoVectorProperty *const array =
        bake(shape, quarter, GetParam().params).getProperty(GetParam().slot);
    Real32 const *const numbers = array->getArray()[0];
    Vec3f const expected = GetParam().turns ? Vec3f(0, 1, 0) : Vec3f(3, 0, 0);
    EXPECT_EQ(Vec3f(numbers[0], numbers[1], numbers[2]), expected);
}

constexpr UInt16 Colors = Geometry::ColorsSlot;
constexpr UInt16 Secondary = Geometry::SecondaryColorsSlot;
constexpr UInt16 Unit0 = Geometry::TexCoordsSlot;

INSTANTIATE_TEST_SUITE_P(
    Mrg, Arrays,
    testing::Values(ArrayCase{"Colors", Colors, "color_is_vector", true},
                    ArrayCase{"ColorsOff", Colors, "color_is_vector=false", false},
                    ArrayCase{"ColorsNotBySecondary", Colors,
                              "color_is_vector=0 secondary_color_is_vector", false},
                    ArrayCase{"Secondary", Secondary, "secondary_color_is_vector=true", true},
                    ArrayCase{"SecondaryByDefault", Secondary, "", false},
                    ArrayCase{"Unit0", Unit0, "texcoord0_is_vector=1", true},
                    ArrayCase{"Unit0ByItsShortName", Unit0, "texcoord_is_vector=1", true},
                    ArrayCase{"Unit0TheLongNameWins", Unit0,
                              "texcoord0_is_vector=0 texcoord_is_vector=1", false},
                    ArrayCase{"Unit0TheLongNameWinsOn", Unit0,
                              "texcoord0_is_vector=1,texcoord_is_vector=0", true},
                    ArrayCase{"Unit0ByDefault", Unit0, "", false},
                    ArrayCase{"Unit0NotByUnit1", Unit0, "texcoord1_is_vector", false},
                    ArrayCase{"Unit1", Unit0 + 1, "texcoord1_is_vector", true},
                    ArrayCase{"Unit1ByDefault", Unit0 + 1, "texcoord0_is_vector", false},
                    ArrayCase{"Unit2", Unit0 + 2, "texcoord2_is_vector", true},
                    ArrayCase{"Unit2ByDefault", Unit0 + 2, "", false},
                    ArrayCase{"Unit3", Unit0 + 3, "texcoord3_is_vector", true},
                    ArrayCase{"Unit3ByDefault", Unit0 + 3, "", false}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(BakedGeometry, TwoComponentTextureCoordinatesStay)
{
    NodePtr const shape = make_shape({});
    core_of<Geometry>(shape)->setTexCoords(
        make_property<GeoVec2fProperty>(std::vector<Vec2f>{{3, 0}}));
    Geometry const &baked = bake(shape, scaling(5, 5, 5), "texcoord0_is_vector");
    EXPECT_EQ(values_of<GeoVec2fProperty>(baked.getTexCoords())[0], Vec2f(3, 0));
}

TEST(BakedGeometry, NormalsAreVectorsOrNothing)
{
    NodePtr const shape = make_shape({});
    core_of<Geometry>(shape)->setNormals(
        make_property<GeoPnt3fProperty>(std::vector<Pnt3f>{{0, 0, 3}}));
    Geometry const &baked = bake(shape, scaling(5, 5, 5));
    EXPECT_EQ(values_of<GeoPnt3fProperty>(baked.getNormals())[0], Pnt3f(0, 0, 3));
}

TEST(BakedGeometry, ACopiedOperationHasTheParameters)
{
    NodePtr const shape = make_shape({});
    core_of<Geometry>(shape)->setColors(
        make_property<GeoColor3fProperty>(std::vector<Color3f>{{3, 0, 0}}));
    NodePtr const root = make_group({make_transform(scaling(5, 5, 5), {shape})});
    UnrecordedRefPtr<MrgGraphOp> const operation(MrgGraphOp::create());
    operation->setParams("color_is_vector");
    UnrecordedRefPtr<MrgGraphOp> const copy(new MrgGraphOp(*operation));
    copy->traverse(root);
    EXPECT_EQ(values_of<GeoColor3fProperty>(core_of<Geometry>(shape)->getColors())[0],
              Color3f(1, 0, 0));
}
} // namespace
} // namespace OSG::Test
