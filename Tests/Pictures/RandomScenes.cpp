#include "RandomScenes.h"

#include "OSGBillboard.h"
#include "OSGComponentTransform.h"
#include "OSGConstSizeTransform.h"
#include "OSGConstantSizeTransform.h"
#include "OSGDirectionalLight.h"
#include "OSGDistanceLOD.h"
#include "OSGGroupingStage.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiCore.h"
#include "OSGScreenLOD.h"
#include "OSGSpotLight.h"
#include "OSGSwitch.h"
#include "RandomGeometry.h"
#include "RandomMaterial.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 MaxDepth = 2;

template <class Core>
NodePtr node_with(Children const &children)
{
    UnrecordedRefPtr<Core> const core(Core::create());
    return make_node(core, children);
}

template <class Group>
NodePtr material_group(Material *material, Children const &children)
{
    UnrecordedRefPtr<Group> const core(Group::create());
    core->setMaterial(material);
    return make_node(core, children);
}

// Turns, scales, mirrors one time in four.
Matrix random_matrix(RandomNumbers &random, Real32 spread)
{
    Pnt3f const place = random.point(-spread, spread);
    Vec3f const axis = random.vector();
    Real32 const angle = random.real(0, 6);
    Pnt3f const scale = random.point(0.5f, 1.5f);
    Real32 const mirror = random.below(4) == 0 ? -1.f : 1.f;
    Matrix matrix = translation(place[0], place[1], place[2]);
    matrix.mult(rotation(axis, angle));
    matrix.mult(scaling(scale[0] * mirror, scale[1], scale[2]));
    return matrix;
}

class SceneMaker
{
  public:
    SceneMaker(RandomNumbers &random, RandomMaterials materials)
        : _random(random)
        , _materials(materials)
    {
    }

    NodePtr shape()
    {
        GeometryPtr const geometry = random_geometry(_random, true);
        geometry->setMaterial(random_material(_random, _materials));
        return make_node(geometry);
    }

    NodePtr tree(UInt32 depth)
    {
        if(depth == 0 || _random.below(6) == 0)
            return shape();
        Children children;
        for(UInt32 i = 0; i < 2 + _random.below(2); ++i)
            children.push_back(tree(depth - 1));
        NodePtr const node = inner(children);
        if(_random.below(12) == 0)
            node->setTravMask(0);
        return node;
    }

    /// A marker, whose place in the tree knows no transform.
    NodePtr marker()
    {
        UnrecordedRefPtr<ConstSizeTransform> const core(ConstSizeTransform::create());
        core->setDistance(_random.real(10, 40));
        core->setMatrix(random_matrix(_random, 2));
        return make_node(core, {shape()});
    }

  private:
    NodePtr inner(Children const &children)
    {
        switch(_random.below(18))
        {
        case 0:
            return make_group(children);
        case 1:
            return node_with<MultiCore>(children);
        case 2:
            return node_with<GroupingStage>(children);
        case 3:
            return make_node(nullptr, children);
        case 4:
            return lit(children);
        case 5:
            return switched(children);
        case 6:
            return make_multi_switch(-1, {1, 0}, children);
        case 7:
            return visiting(children);
        case 8:
            return node_with<InverseTransform>(children);
        case 9:
            return make_transform(random_matrix(_random, 1), {node_with<Billboard>(children)});
        case 10:
            return pixelSized(children);
        case 11:
            return withMaterial(children);
        case 12:
            return levelsByDistance(children);
        case 13:
            return levelsByCoverage(children);
        default:
            return placed(children);
        }
    }

    NodePtr lit(Children const &children)
    {
        switch(_random.below(3))
        {
        case 0:
        {
            UnrecordedRefPtr<DirectionalLight> const core(DirectionalLight::create());
            core->setDirection(_random.vector());
            return withLight(*core, children);
        }
        case 1:
        {
            UnrecordedRefPtr<PointLight> const core(PointLight::create());
            placeLight(*core);
            return withLight(*core, children);
        }
        default:
        {
            UnrecordedRefPtr<SpotLight> const core(SpotLight::create());
            placeLight(*core);
            core->setSpotDirection(_random.vector());
            core->setSpotCutOff(_random.real(0.5f, 1.5f));
            core->setSpotExponent(_random.real(0, 5));
            return withLight(*core, children);
        }
        }
    }

    void placeLight(PointLight &light)
    {
        light.setPosition(_random.point(-3, 3));
        light.setAttenuation(_random.point(0.1f, 0.5f).subZero());
    }

    // Half of the lights have a beacon of their own.
    NodePtr withLight(Light &light, Children const &children)
    {
        light.setAmbient(Color4f(random_color(_random), 1));
        light.setDiffuse(Color4f(random_color(_random), 1));
        light.setSpecular(Color4f(random_color(_random), 1));
        light.setOn(_random.below(5) != 0);
        NodePtr const node = make_node(&light, children);
        if(_random.below(2) != 0)
            return node;
        NodePtr const beacon = make_transform(random_matrix(_random, 1));
        light.setBeacon(beacon);
        return make_group({node, beacon});
    }

    NodePtr switched(Children const &children)
    {
        UnrecordedRefPtr<Switch> const core(Switch::create());
        core->setChoice(static_cast<Int32>(_random.below(4)) - 2);
        return make_node(core, children);
    }

    // The other tree is shown twice.
    NodePtr visiting(Children const &children)
    {
        NodePtr const other = make_group(children);
        return make_group({make_transform(random_matrix(_random, 1), {make_visit(other)}), other});
    }

    NodePtr pixelSized(Children const &children)
    {
        return make_transform(
            random_matrix(_random, 1),
            {node_with<ConstantSizeTransform>({make_transform(scaling(15, 15, 15), children)})});
    }

    NodePtr withMaterial(Children const &children)
    {
        MaterialPtr const material = random_material(_random, _materials);
        if(_random.below(2) == 0)
            return material_group<MaterialGroup>(material, children);
        return material_group<MaterialChunkOverrideGroup>(material, children);
    }

    NodePtr levelsByDistance(Children const &children)
    {
        UnrecordedRefPtr<DistanceLOD> const core(DistanceLOD::create());
        core->setCenter(_random.point(-1, 1));
        core->editRange().push_back(_random.real(2, 5));
        core->editRange().push_back(_random.real(5, 6));
        return make_node(core, children);
    }

    NodePtr levelsByCoverage(Children const &children)
    {
        UnrecordedRefPtr<ScreenLOD> const core(ScreenLOD::create());
        core->editCoverage().push_back(_random.real(0.1f, 0.6f));
        core->editCoverage().push_back(0.05f);
        return make_node(core, children);
    }

    NodePtr placed(Children const &children)
    {
        Matrix const matrix = random_matrix(_random, 1);
        if(_random.below(3) != 0)
            return make_transform(matrix, children);
        UnrecordedRefPtr<ComponentTransform> const core(ComponentTransform::create());
        core->setMatrix(matrix);
        return make_node(core, children);
    }

    RandomNumbers &_random;
    RandomMaterials _materials;
};

ViewSetup random_view(RandomNumbers &random)
{
    ViewSetup setup;
    setup.from = random.point(-1, 1) + Vec3f(2, 0, 3);
    setup.at = random.point(-0.5f, 0.5f);
    setup.fov = random.below(3) == 0 ? 0 : random.real(30, 70);
    setup.size = random.real(2, 4);
    setup.near = 0.5f;
    setup.far = 20;
    setup.width = 200;
    setup.height = 150;
    return setup;
}
} // namespace

RandomScene random_scene(std::uint64_t seed, RandomMaterials materials)
{
    RandomNumbers random(seed);
    SceneMaker maker(random, materials);
    Children children;
    for(UInt32 i = 0; i < 3; ++i)
        children.push_back(maker.tree(MaxDepth));
    if(random.below(3) == 0)
        children.push_back(maker.marker());
    RandomScene scene{make_group(children), {}};
    scene.view = random_view(random);
    return scene;
}
} // namespace OSG::Test
