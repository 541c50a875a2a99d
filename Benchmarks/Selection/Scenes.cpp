#include "Scenes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <vector>

#include "Building.h"
#include "OSGChangeList.h"
#include "OSGQuaternion.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
// --- terrains ---

constexpr Real32 CellSize = 0.25f;

Real32 height(Real32 x, Real32 z)
{
    Real32 const hills = 6 * std::sin(0.05f * x) * std::cos(0.04f * z);
    return hills + 1.5f * std::sin(0.21f * x + 0.13f * z) + 0.2f * std::sin(1.7f * x - 1.1f * z);
}

NodePtr terrain(UInt32 triangles, bool shuffled)
{
    UInt32 const cells = static_cast<UInt32>(std::lround(std::sqrt(triangles / 2.0)));
    UInt32 const side = cells + 1;
    Positions positions;
    for(UInt32 i = 0; i < side * side; ++i)
    {
        Real32 const x = static_cast<Real32>(i % side) * CellSize;
        Real32 const z = -static_cast<Real32>(i / side) * CellSize;
        positions.emplace_back(x, height(x, z), z);
    }
    std::vector<std::array<UInt32, 3>> faces;
    for(UInt32 i = 0; i < cells * cells; ++i)
    {
        UInt32 const corner = i / cells * side + i % cells;
        faces.push_back({corner, corner + 1, corner + side});
        faces.push_back({corner + 1, corner + side + 1, corner + side});
    }
    if(shuffled)
        std::shuffle(faces.begin(), faces.end(), std::mt19937(7));
    Index index;
    for(auto const &face : faces)
        index.insert(index.end(), face.begin(), face.end());
    return shape(positions, index);
}

// --- boxes ---

NodePtr box(std::mt19937 &random)
{
    std::uniform_real_distribution<Real32> extent(0.3f, 0.9f);
    Vec3f const half(extent(random) / 2, extent(random) / 2, extent(random) / 2);
    Positions positions;
    for(UInt32 i = 0; i < 8; ++i)
        positions.emplace_back((i & 1) != 0 ? half[0] : -half[0], (i & 2) != 0 ? half[1] : -half[1],
                               (i & 4) != 0 ? half[2] : -half[2]);
    static Index const faces = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
    return shape(positions, faces);
}

NodePtr placed_box(UInt32 x, UInt32 y, UInt32 z, std::mt19937 &random)
{
    std::uniform_real_distribution<Real32> jitter(-0.3f, 0.3f);
    Matrix matrix;
    matrix.setRotate(Quaternion(Vec3f(0, 1, 0), jitter(random) * 3));
    matrix[3][0] = 2.f * static_cast<Real32>(x) + jitter(random);
    matrix[3][1] = 2.f * static_cast<Real32>(y) + jitter(random);
    matrix[3][2] = -2.f * static_cast<Real32>(z) + jitter(random);
    UnrecordedRefPtr<Transform> const transform(Transform::create());
    transform->setMatrix(matrix);
    NodePtr const placed = node_of(transform);
    placed->addChild(box(random));
    return placed;
}

/// How many groups, groups in a group and boxes in such a group lie beside one another.
struct BoxCounts
{
    UInt32 x, y, z;
    UInt32 all() const { return x * y * z; }
};
constexpr BoxCounts OuterGroups{5, 2, 5};
constexpr BoxCounts InnerGroups{5, 2, 5};
constexpr BoxCounts BoxesInGroup{4, 2, 5};

/// A place in a grid of blocks.
struct Place
{
    UInt32 x = 0;
    UInt32 y = 0;
    UInt32 z = 0;

    /// The place of one of the smaller blocks, `counts` of which make up this one.
    Place within(UInt32 number, BoxCounts const &counts) const
    {
        return {x * counts.x + number % counts.x, y * counts.y + number / counts.x % counts.y,
                z * counts.z + number / counts.x / counts.y};
    }
};

NodePtr boxes()
{
    std::mt19937 random(11);
    NodePtr root = group();
    for(UInt32 i = 0; i < OuterGroups.all(); ++i)
    {
        Place const outerPlace = Place().within(i, OuterGroups);
        NodePtr const outer = group();
        for(UInt32 j = 0; j < InnerGroups.all(); ++j)
        {
            Place const innerPlace = outerPlace.within(j, InnerGroups);
            NodePtr const inner = group();
            for(UInt32 k = 0; k < BoxesInGroup.all(); ++k)
            {
                Place const place = innerPlace.within(k, BoxesInGroup);
                inner->addChild(placed_box(place.x, place.y, place.z, random));
            }
            outer->addChild(inner);
        }
        root->addChild(outer);
    }
    return root;
}

NodePtr make(SceneName name)
{
    switch(name)
    {
    case SceneName::S1:
        return terrain(1000000, false);
    case SceneName::S2:
        return terrain(10000000, false);
    case SceneName::S1r:
        return terrain(1000000, true);
    case SceneName::S3:
        return boxes();
    default:
        return building(200000);
    }
}
} // namespace

char const *text_of(SceneName name)
{
    static constexpr char const *Texts[] = {"S1", "S2", "S1r", "S3", "S4"};
    return Texts[static_cast<int>(name)];
}

Node *scene(SceneName name)
{
    bring_up();
    static std::map<SceneName, NodePtr> scenes;
    NodePtr &root = scenes[name];
    if(root == nullptr)
    {
        root = make(name);
        Thread::getCurrentChangeList()->commitChanges();
        root->updateVolume();
        Thread::getCurrentChangeList()->commitChanges();
    }
    return root;
}

NodeCore *terrain_of(SceneName name) { return scene(name)->getCore(); }
} // namespace OSG::Bench
