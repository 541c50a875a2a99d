/// \file
/// The OBJ writer beside a slow, obvious one, on random scenes.

#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiCore.h"
#include "ObjWriting.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
class ObjWriterRandom : public ObjWriting
{
};

/// Trees of all cores that the writer tells apart, with visits into trees of their own.
class RandomScenes
{
  public:
    explicit RandomScenes(UInt64 seed)
        : _random(seed)
    {
        for(int i = 0; i < 3; ++i)
            _parts.push_back(make_transform(matrix(), {tree(2)}));
    }

    NodePtr tree(int levels)
    {
        UInt32 const kind = levels == 0 ? 0 : _random.below(10);
        if(kind < 2)
            return geometry();
        Children children;
        for(UInt32 i = _random.below(4); i > 0; --i)
            children.push_back(tree(levels - 1));
        switch(kind)
        {
        case 2:
            return make_material_group<MaterialGroup>(material(), children);
        case 3:
            return make_material_group<MaterialChunkOverrideGroup>(material(), children);
        case 4:
            return make_switch(static_cast<Int32>(_random.below(6)) - 3, children);
        case 5:
            return make_multi_switch(static_cast<Int32>(_random.below(4)) - 3,
                                     {_random.below(4), _random.below(4)}, children);
        case 6:
            return make_visit(_parts.empty() ? nullptr
                                             : _parts[_random.below(UInt32(_parts.size()))].get());
        case 7:
            return make<MultiCore>(children);
        default:
            return make_transform(matrix(), children);
        }
    }

  private:
    Matrix matrix()
    {
        return translation(_random.real(-9, 9), _random.real(-9, 9), 0) *
               rotation(_random.vector(), _random.real(0, 6)) * scaling(_random.real(-2, 2), 1, 3);
    }

    UnrecordedRefPtr<Material> material()
    {
        if(_random.below(4) == 0)
            return nullptr;
        if(_random.below(2) == 0)
        {
            auto const image = make_image(_random.below(2) == 0 ? "a/b.png" : "");
            auto const simple = make_textured(image);
            simple->setDiffuse(Color3f(_random.real(0, 1), 0, 1));
            return simple;
        }
        UnrecordedRefPtr<ChunkMaterial> const chunks(ChunkMaterial::create());
        UnrecordedRefPtr<MaterialChunk> const colors(MaterialChunk::create());
        colors->setDiffuse(Color4f(1, 0, 0, _random.real(0, 1)));
        chunks->addChunk(colors);
        return chunks;
    }

    NodePtr geometry()
    {
        UInt32 const count = 3 + _random.below(9);
        GeometryParts parts{{TrianglesPrimitive + _random.below(6)}, {count}, {}};
        for(UInt32 i = 0; i < count; ++i)
        {
            parts.positions.push_back(_random.point(-1000, 1000));
            if(_random.below(2) == 0)
                parts.normals.push_back(_random.vector());
        }
        if(_random.below(2) == 0)
        {
            for(UInt32 i = 0; i < count; ++i)
                parts.index.push_back(_random.below(count + 1)); // some are out of range
        }
        GeometryPtr const made = make_geometry(parts);
        if(_random.below(2) == 0)
            made->setTexCoords(make_property<GeoVec2fProperty>(
                std::vector<Vec2f>(count, Vec2f(_random.real(0, 1), 0.5f))));
        made->setMaterial(material());
        return make_node(made);
    }

    RandomNumbers _random;
    std::vector<NodePtr> _parts;
};

TEST_F(ObjWriterRandom, WritesWhatASlowWriterWritesForRandomScenes)
{
    LogCapture const log; // indices out of range are warned of
    UInt64 bytes = 0;
    for(UInt64 seed = 0; seed < 1000; ++seed)
    {
        RandomScenes scenes(seed);
        NodePtr const root =
            make_transform(translation(1, 2, 3), {scenes.tree(5), scenes.tree(5), scenes.tree(5)});
        ObjTexts const slow = write_obj_slowly(root);
        ObjTexts const fast = write(root);
        ASSERT_EQ(fast.scene, slow.scene) << seed;
        ASSERT_EQ(fast.library, slow.library) << seed;
        bytes += slow.scene.size();
    }
    EXPECT_GT(bytes, 1000000u); // the scenes are not empty
}
} // namespace
