// Whole selections in random scenes, compared with slow, obvious ones.

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGChildIndex.h"
#include "OSGFastSelectionFunctor.h"
#include "ReferenceSelection.h"

namespace OSG::Test
{
namespace
{
/// Scenes of which shape: deep ones of few children, or flatter ones of many.
enum class Breadth
{
    Narrow,
    Wide
};

/// A tree of random records. Its visits lead to trees with higher numbers.
class RandomScene
{
  public:
    RandomScene(RandomNumbers &random, bool withMirrors, Breadth breadth = Breadth::Narrow)
        : _random(random)
        , _withMirrors(withMirrors)
        , _breadth(breadth)
    {
        for(int i = 0; i < 6; ++i)
            _scene.geometries.push_back(shape());
        for(int tree = 0; tree < 4; ++tree)
        {
            _roots.push_back(static_cast<int>(_scene.nodes.size()));
            add(0);
        }
        for(std::size_t i = 0; i < _scene.nodes.size(); ++i)
            aim(i);
    }

    SceneRecords const &records() const { return _scene; }

  private:
    GeometryParts shape()
    {
        GeometryParts parts;
        parts.types = {TrianglesPrimitive, PolygonPrimitive, LineStripPrimitive, PointsPrimitive};
        parts.lengths = {3 * _random.below(4), _random.below(6), _random.below(4),
                         _random.below(4)};
        Pnt3f const centre = _random.point(-1.f, 1.f);
        Real32 const size = _random.real(0.1f, 1.5f);
        for(int i = 0; i < 30; ++i)
            parts.positions.push_back(centre + _random.vector() * size);
        if(_random.below(2) == 0)
        {
            for(int i = 0; i < 30; ++i)
                parts.normals.push_back(_random.vector());
        }
        return parts;
    }

    Matrix matrix()
    {
        Real32 const mirror = _withMirrors && _random.below(4) == 0 ? -1.f : 1.f;
        Vec3f const by = _random.vector() * 0.7f;
        Vec3f const axis = _random.vector();
        Real32 const length = axis.length();
        return translation(by[0], by[1], by[2]) *
               rotation(axis * (1.f / length), _random.real(-2.f, 2.f)) *
               scaling(mirror * _random.real(0.5f, 1.8f), _random.real(0.5f, 1.8f),
                       _random.real(0.5f, 1.8f));
    }

    int add(int depth)
    {
        int const number = static_cast<int>(_scene.nodes.size());
        _scene.nodes.emplace_back();
        SceneRecord record;
        if(depth > 0)
            record.kind = static_cast<SceneRecord::Kind>(_random.below(6));
        if(depth == deepest())
            record.kind = SceneRecord::Shape;
        record.matrix = matrix();
        record.geometry = static_cast<int>(_random.below(6));
        record.mode = -static_cast<Int32>(_random.below(4));
        for(UInt32 i = 0; i < 4; ++i)
        {
            if(_random.below(2) == 0)
                record.choices.push_back(i);
        }
        record.mask = _random.below(8) == 0 ? 2 : 0xFFFFFFFF;
        if(depth < deepest())
        {
            for(UInt32 i = countOfChildren(depth); i > 0; --i)
                record.children.push_back(add(depth + 1));
        }
        _scene.nodes[static_cast<std::size_t>(number)] = record;
        return number;
    }

    int deepest() const { return _breadth == Breadth::Wide ? 3 : 5; }
    UInt32 countOfChildren(int depth)
    {
        if(_breadth == Breadth::Wide)
            return 6 + _random.below(6);
        return _random.below(3) + (depth == 0 ? 2 : 0);
    }

    // Visits of the last tree show nothing.
    void aim(std::size_t node)
    {
        for(int root : _roots)
        {
            if(root > static_cast<int>(node) && _random.below(2) == 0)
                _scene.nodes[node].target = root;
        }
    }

    RandomNumbers &_random;
    bool _withMirrors;
    Breadth _breadth;
    SceneRecords _scene;
    std::vector<int> _roots;
};

Frustum random_frustum(RandomNumbers &random)
{
    Frustum frustum = box_frustum();
    Matrix project;
    project[2][3] = random.real(-0.6f, 0.6f);
    Vec3f const axis = random.vector();
    Matrix const steps[] = {
        translation(-0.5f, -0.5f, 0.5f), project,
        scaling(random.real(0.3f, 3.f), random.real(0.3f, 3.f), random.real(0.3f, 3.f)),
        rotation(axis * (1.f / axis.length()), random.real(-3.f, 3.f)),
        translation(random.real(-1.f, 1.f), random.real(-1.f, 1.f), random.real(-1.f, 1.f))};
    for(Matrix const &step : steps)
        frustum.multFull(step);
    return frustum;
}

void expect_same(HitT const &hit, HitT const &expected)
{
    ASSERT_EQ(hit.selectionType, expected.selectionType);
    ASSERT_EQ(hit.point, expected.point);
    ASSERT_EQ(hit.normal, expected.normal);
    ASSERT_EQ(hit.node, expected.node);
    ASSERT_EQ(hit.index, expected.index);
    ASSERT_EQ(hit.distance, expected.distance);
    ASSERT_EQ(hit.matrix, expected.matrix);
    ASSERT_EQ(hit.visitSubTreeNodes, expected.visitSubTreeNodes);
}

/// Selects in random scenes, `walks` times in each, and compares the last hits. Counts them.
std::size_t compare_with_slow_walks(UInt64 seed, int rounds, Breadth breadth, int walks)
{
    RandomNumbers random(seed);
    std::size_t hits = 0;
    for(int round = 0; round < rounds && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        SceneRecords const scene = RandomScene(random, true, breadth).records();
        BuiltScene const built = build(scene);
        for(NodePtr const &node : built.nodes)
            node->updateVolume();
        Frustum const frustum = random_frustum(random);
        ReferenceSettings const settings{random.below(8), random.below(6),
                                         random.below(2) == 0 ? 0xFFFFFFFF : 1,
                                         random.below(2) == 0};
        Selection selection(frustum, settings.types,
                            static_cast<SelectionFunctor::PlaneType>(settings.plane));
        selection.action->setTravMask(settings.mask);
        selection.functor.setContinueOnEmptyMultiSwitchChoices(settings.continueOnEmptyChoices);
        for(int walk = 1; walk < walks; ++walk)
            selection.of(built.nodes[0]);
        Hits const &found = selection.of(built.nodes[0]);
        Hits const expected = reference_selection(scene, built, frustum, settings);
        EXPECT_EQ(found.size(), expected.size());
        for(std::size_t i = 0; i < found.size() && i < expected.size(); ++i)
            expect_same(found[i], expected[i]);
        hits += found.size();
    }
    return hits;
}

TEST(SelectionScenes, EveryHitIsTheOneOfTheSlowWalkBitForBit)
{
    EXPECT_GT(compare_with_slow_walks(101, 1500, Breadth::Narrow, 1), 3000u);
}

// From the second walk on, nodes of many children have an index of their boxes.
TEST(SelectionScenes, TheHitsAreTheSameWhereWholeGroupsAreLeftOut)
{
    UInt32 const before = ChildIndex::count();
    EXPECT_GT(compare_with_slow_walks(103, 30, Breadth::Wide, 3), 1500u);
    EXPECT_EQ(ChildIndex::count(), before);
}

// --- in root space ---

DoublePoint carried(Matrix const &matrix, Pnt3f const &p)
{
    double out[3];
    for(std::size_t r = 0; r < 3; ++r)
        out[r] = double(matrix[0][r]) * p[0] + double(matrix[1][r]) * p[1] +
                 double(matrix[2][r]) * p[2] + double(matrix[3][r]);
    return {out[0], out[1], out[2]};
}

/// Area of the part of the geometry's triangles, moved to root space, that lies inside.
double area_inside(GeometryParts const &parts, Matrix const &toRoot, PlaneArray const &planes)
{
    double sum = 0;
    for(std::array<UInt32, 3> const &triangle : expand_parts(parts, triangles_of))
    {
        DoublePolygon corners;
        for(UInt32 vertex : triangle)
            corners.push_back(carried(toRoot, position_of(parts, vertex)));
        sum += area(reference_clip(corners, planes));
    }
    return sum;
}

struct Occurrence
{
    int node;
    Matrix toRoot;
};

void find_occurrences(SceneRecords const &scene, int node, Matrix toRoot,
                      std::vector<Occurrence> &result)
{
    SceneRecord const &entry = scene.nodes[static_cast<std::size_t>(node)];
    if(entry.kind == SceneRecord::Moved || entry.kind == SceneRecord::Rendered)
        toRoot.mult(entry.matrix);
    if(entry.kind == SceneRecord::Shape)
        result.push_back({node, toRoot});
    if(entry.kind == SceneRecord::Visiting)
    {
        if(entry.target >= 0)
            find_occurrences(scene, entry.target, toRoot, result);
        return;
    }
    for(int child : entry.children)
        find_occurrences(scene, child, toRoot, result);
}

TEST(SelectionScenes, TheNodesThatAreHitAreThoseWithAnAreaInsideInRootSpace)
{
    RandomNumbers random(102);
    int inside = 0;
    int outside = 0;
    for(int round = 0; round < 800; ++round)
    {
        SCOPED_TRACE(round);
        SceneRecords scene = RandomScene(random, false).records();
        for(SceneRecord &entry : scene.nodes)
        {
            entry.mode = -3;
            entry.mask = 1;
        }
        BuiltScene const built = build(scene);
        for(NodePtr const &node : built.nodes)
            node->updateVolume();
        Frustum const frustum = random_frustum(random);
        Selection selection(frustum, SelectionFunctor::SelectTriangles);
        std::vector<Node *> const hit =
            nodes(selection.of(built.nodes[0], SelectionFunctor::FrontHits));
        FastSelectionFunctor quick(selection.action);
        selection.action->apply(built.nodes[0]);
        std::vector<Node *> const quickHit = nodes(quick.hits(SelectionFunctor::FrontHits));

        std::map<Node *, double> areas;
        std::vector<Occurrence> occurrences;
        find_occurrences(scene, 0, Matrix(), occurrences);
        PlaneArray const planes = frustum.Volume().getPlanes();
        for(Occurrence const &at : occurrences)
        {
            std::size_t const node = static_cast<std::size_t>(at.node);
            int const geometry = scene.nodes[node].geometry;
            areas[built.nodes[node]] += area_inside(
                scene.geometries[static_cast<std::size_t>(geometry)], at.toRoot, planes);
        }
        for(auto const &[node, size] : areas)
        {
            bool const isHit = std::find(hit.begin(), hit.end(), node) != hit.end();
            ASSERT_EQ(isHit, std::find(quickHit.begin(), quickHit.end(), node) != quickHit.end());
            if(size > 1e-5)
            {
                ASSERT_TRUE(isHit);
                ++inside;
            }
            else if(size == 0.0)
            {
                ASSERT_FALSE(isHit);
                ++outside;
            }
        }
    }
    EXPECT_GT(inside, 1000);
    EXPECT_GT(outside, 1000);
}
} // namespace
} // namespace OSG::Test
