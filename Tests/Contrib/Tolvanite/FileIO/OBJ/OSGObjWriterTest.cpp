/// \file
/// The text of OBJ files as the file type writes them.

#include <iomanip>

#include "LogCapture.h"
#include "OSGComponentTransform.h"
#include "OSGDistanceLOD.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiCore.h"
#include "ObjWriting.h"

using namespace OSG;
using namespace OSG::Test;
using testing::HasSubstr;

namespace
{
class ObjWriterTest : public ObjWriting
{
};

// --- the text of a scene, character by character ---

TEST_F(ObjWriterTest, WritesAGoldenSceneCharacterByCharacter)
{
    NodePtr const root = make_material_group<MaterialGroup>(
        make_material(), {make_triangle(), make_triangle(Pnt3f(0.1f, -2.5f, 1000000.f))});
    ObjTexts const texts = write(root, "out.two.obj");
    EXPECT_EQ(texts.scene, "o Geometry\n"
                           "g Geometry1\n"
                           "s 1\n"
                           "usemtl Geometry1\n"
                           "v 0 0 0\n"
                           "v 1 0 0\n"
                           "v 0 1 0\n"
                           "vn 0 0 1\n"
                           "vn 0 0 1\n"
                           "vn 0 0 1\n"
                           "f 1//1 2//2 3//3\n"
                           "g Geometry2\n"
                           "s 1\n"
                           "usemtl Geometry2\n"
                           "v 0.1 -2.5 1e+06\n"
                           "v 1.1 -2.5 1e+06\n"
                           "v 0.1 -1.5 1e+06\n"
                           "vn 0 0 1\n"
                           "vn 0 0 1\n"
                           "vn 0 0 1\n"
                           "f 4//4 5//5 6//6\n");
    EXPECT_EQ(texts.library, "\nnewmtl Geometry1\n" + DefaultMaterialLines +
                                 "\nnewmtl Geometry2\n" + DefaultMaterialLines);
}

struct FaceCase
{
    char const *name;
    bool hasNormals;
    bool hasTexCoords;
    char const *face;
};
void PrintTo(FaceCase const &row, std::ostream *out) { *out << row.name; }

class ObjWriterFaces : public ObjWriterTest, public testing::WithParamInterface<FaceCase>
{
};

TEST_P(ObjWriterFaces, NameTheKindsThatTheGeometryHas)
{
    NodePtr const node = make_triangle();
    Geometry &geometry = *core_of<Geometry>(node);
    if(!GetParam().hasNormals)
        geometry.setNormals(nullptr);
    if(GetParam().hasTexCoords)
        geometry.setTexCoords(
            make_property<GeoVec2fProperty>(std::vector<Vec2f>{{0, 0}, {1, 0}, {0, 1}}));
    EXPECT_THAT(write(node).scene, HasSubstr(std::string("\n") + GetParam().face + "\n"));
}

INSTANTIATE_TEST_SUITE_P(ObjWriter, ObjWriterFaces,
                         testing::Values(FaceCase{"Positions", false, false, "f 1 2 3"},
                                         FaceCase{"TexCoords", false, true, "f 1/1 2/2 3/3"},
                                         FaceCase{"Normals", true, false, "f 1//1 2//2 3//3"},
                                         FaceCase{"All", true, true, "f 1/1/1 2/2/2 3/3/3"}),
                         [](auto const &row) { return std::string(row.param.name); });

TEST_F(ObjWriterTest, AnEmptyArrayCountsAsNone)
{
    NodePtr const node = make_triangle();
    core_of<Geometry>(node)->setNormals(make_property<GeoVec3fProperty>(std::vector<Vec3f>()));
    EXPECT_THAT(write(node).scene, HasSubstr("\nf 1 2 3\n"));
}

TEST_F(ObjWriterTest, BreaksAQuadOfAPolygonIntoTwoFaces)
{
    NodePtr const node = make_node(make_geometry(
        one_primitive(PolygonPrimitive, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})));
    EXPECT_THAT(write(node).scene, testing::EndsWith("f 1 2 3\nf 1 3 4\n"));
}

TEST_F(ObjWriterTest, WritesTheVerticesOfLinesAndPointsWithoutFaces)
{
    NodePtr const node =
        make_node(make_geometry(one_primitive(LinesPrimitive, {{0, 0, 0}, {1, 2, 3}})));
    EXPECT_EQ(write(node).scene, "o Geometry\ng Geometry1\ns 1\nv 0 0 0\nv 1 2 3\n");
}

TEST_F(ObjWriterTest, WritesArraysWholeAndOncePerGeometryThatShowsThem)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {3}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {9, 9, 9}}, {}, {0, 1, 2}});
    ObjTexts const texts = write(make_group({make_node(geometry), make_node(geometry)}));
    std::string const vertices = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 9 9 9\n";
    EXPECT_EQ(texts.scene, "o Geometry\ng Geometry1\ns 1\n" + vertices +
                               "f 1 2 3\ng Geometry2\ns 1\n" + vertices + "f 5 6 7\n");
}

TEST_F(ObjWriterTest, AGeometryWithoutPositionsHasNoVertices)
{
    UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
    EXPECT_EQ(write(make_node(geometry)).scene, "o Geometry\ng Geometry1\ns 1\n");
}

TEST_F(ObjWriterTest, WritesNumbersInTheFormatOfTheStream)
{
    std::ostringstream out;
    out << std::fixed << std::setprecision(1);
    OBJSceneFileTypeTN::the().write(make_triangle(), out, folder.path("a.obj").c_str());
    EXPECT_THAT(out.str(), HasSubstr("v 1.0 0.0 0.0\n"));
    EXPECT_THAT(out.str(), HasSubstr("f 1//1 2//2 3//3\n"));
}

// --- transformations ---

TEST_F(ObjWriterTest, TransformsPointsAndTurnsNormalsWithoutScalingThemBack)
{
    Matrix const matrix = translation(10, 0, 0) * scaling(2, 3, 4);
    NodePtr const root = make_transform(matrix, {make_triangle(Pnt3f(1, 1, 1))});
    std::string const scene = write(root).scene;
    EXPECT_THAT(scene, HasSubstr("v 12 3 4\nv 14 3 4\nv 12 6 4\n"));
    EXPECT_THAT(scene, HasSubstr("vn 0 0 4\n"));
}

TEST_F(ObjWriterTest, PutsTheWayOfTheVisitingNodeBeforeTheWayOfTheVisitedTree)
{
    NodePtr const visited = make_transform(scaling(2, 2, 2), {make_triangle(Pnt3f(1, 0, 0))});
    NodePtr const owner = make_transform(translation(0, 100, 0), {visited});
    NodePtr const root = make_transform(translation(0, 0, 5), {make_visit(visited)});
    EXPECT_THAT(write(root).scene, HasSubstr("v 2 100 5\nv 4 100 5\nv 2 102 5\n"));
}

TEST_F(ObjWriterTest, WritesFromANodeWithinATreeInTheSpaceOfTheWholeTree)
{
    NodePtr const part = make_triangle();
    NodePtr const root = make_transform(translation(7, 0, 0), {make_group({part})});
    EXPECT_THAT(write(part).scene, HasSubstr("v 7 0 0\n"));
}

// --- the walk ---

struct WalkCase
{
    char const *name;
    NodePtr (*make)(Children const &children);
    std::vector<int> written; ///< numbers of the children
};
void PrintTo(WalkCase const &row, std::ostream *out) { *out << row.name; }

class ObjWriterWalk : public ObjWriterTest, public testing::WithParamInterface<WalkCase>
{
};

TEST_P(ObjWriterWalk, GoesToTheseChildren)
{
    Children children;
    for(int i = 0; i < 3; ++i)
        children.push_back(make_triangle(Pnt3f(static_cast<Real32>(100 * (i + 1)), 0, 0)));
    std::string const scene = write(GetParam().make(children)).scene;
    std::vector<int> written;
    std::istringstream lines(scene);
    for(std::string line; std::getline(lines, line);)
    {
        if(line.size() == 9 && line.substr(0, 2) == "v " && line.substr(3) == "00 0 0")
            written.push_back(line[2] - '1');
    }
    EXPECT_EQ(written, GetParam().written);
}

WalkCase const WalkCases[] = {
    {"Group", [](Children const &c) { return make_group(c); }, {0, 1, 2}},
    {"ComponentTransform", &make<ComponentTransform>, {0, 1, 2}},
    {"DistanceLOD", &make<DistanceLOD>, {0, 1, 2}},
    {"NoGroup", &make<MultiCore>, {}},
    {"NoCore", [](Children const &c) { return make_node(nullptr, c); }, {}},
    {"BelowAGeometry",
     [](Children const &c) { return make_node(GeometryPtr(Geometry::create()), c); },
     {}},
    {"SwitchToNone", [](Children const &c) { return make_switch(-1, c); }, {}},
    {"SwitchToAll", [](Children const &c) { return make_switch(-2, c); }, {0, 1, 2}},
    {"SwitchToOne", [](Children const &c) { return make_switch(1, c); }, {1}},
    {"SwitchBeyond", [](Children const &c) { return make_switch(3, c); }, {}},
    {"SwitchBelow", [](Children const &c) { return make_switch(-3, c); }, {}},
    {"MultiSwitchAll", [](Children const &c) { return make_multi_switch(-3, {1}, c); }, {0, 1, 2}},
    {"MultiSwitchNone", [](Children const &c) { return make_multi_switch(-2, {1}, c); }, {}},
    {"MultiSwitchOther", [](Children const &c) { return make_multi_switch(1, {1}, c); }, {}},
    {"MultiSwitchChoicesInTheirOrder",
     [](Children const &c) {
         return make_multi_switch(-1, {2, 7, 0, 2}, c);
     },
     {2, 0, 2}},
    {"MultiSwitchWithoutChoices",
     [](Children const &c) { return make_multi_switch(-1, {}, c); },
     {}},
    {"VisitOfNothing", [](Children const &) { return make_visit(nullptr); }, {}},
};
INSTANTIATE_TEST_SUITE_P(ObjWriter, ObjWriterWalk, testing::ValuesIn(WalkCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST_F(ObjWriterTest, ASwitchToNoneGivesTheFirstLinesOnly)
{
    ObjTexts const texts = write(make_switch(-1, {make_triangle()}));
    EXPECT_EQ(texts.scene, "o Geometry\n");
    EXPECT_EQ(texts.library, "");
}

TEST_F(ObjWriterTest, NullIsAnEmptyScene) { EXPECT_EQ(write(nullptr).scene, "o Geometry\n"); }

TEST_F(ObjWriterTest, EndsATreeThatVisitsItselfWithOneWarning)
{
    NodePtr const root = make_group({make_triangle()});
    root->addChild(make_visit(root));
    LogCapture const log;
    EXPECT_THAT(write(root).scene, HasSubstr("g Geometry1\n"));
    EXPECT_EQ(log.messages().size(), 1u);
    root->subChild(1u);
}

TEST_F(ObjWriterTest, WritesAChainOfManyLevelsWithAGeometryInEach)
{
    NodePtr top = make_triangle();
    for(int i = 0; i < 20000; ++i)
        top = make_transform(translation(1, 0, 0), {top, make_triangle()});
    std::string const scene = write(top).scene;
    EXPECT_THAT(scene, HasSubstr("g Geometry20001\n"));
    EXPECT_THAT(scene, HasSubstr("v 20000 0 0\n"));
}
} // namespace
