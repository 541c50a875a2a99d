#include "DrawnItems.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "FacingMatrices.h"
#include "LevelChoice.h"
#include "OSGBillboard.h"
#include "OSGConstSizeTransform.h"
#include "OSGConstantSizeTransform.h"
#include "OSGDirectionalLight.h"
#include "OSGDistanceLOD.h"
#include "OSGInverseTransform.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGScreenLOD.h"
#include "OSGSpotLight.h"
#include "OSGSwitch.h"
#include "OSGTransform.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
namespace
{
constexpr std::size_t MaxLights = 8;

Vec4d wide(Color4f const &c) { return Vec4d(c[0], c[1], c[2], c[3]); }
template <class Tuple>
Vec3d wide(Tuple const &v)
{
    return Vec3d(v[0], v[1], v[2]);
}
Vec4d with_w(Vec3d const &v, Real64 w) { return Vec4d(v[0], v[1], v[2], w); }

LightSource light_in(Light const &light, Matrix4d const &toEye)
{
    LightSource source;
    source.ambient = wide(light.getAmbient());
    source.diffuse = wide(light.getDiffuse());
    source.specular = wide(light.getSpecular());
    if(auto const *const directional = dynamic_cast<DirectionalLight const *>(&light))
        source.position = toEye * with_w(wide(directional->getDirection()), 0);
    if(auto const *const point = dynamic_cast<PointLight const *>(&light))
    {
        source.position = toEye * with_w(wide(point->getPosition()), 1);
        source.attenuation = wide(point->getAttenuation());
    }
    if(auto const *const spot = dynamic_cast<SpotLight const *>(&light))
    {
        source.isSpot = true;
        source.spotDirection = direction_of(toEye * with_w(wide(spot->getSpotDirection()), 0));
        source.spotCosine = std::cos(spot->getSpotCutOff());
        source.spotExponent = spot->getSpotExponent();
    }
    return source;
}

// In front of the eye.
Real64 centre_depth(Geometry &geometry, Matrix4d const &toEye)
{
    BoxVolume box;
    geometry.adjustVolume(box);
    Pnt3f centre;
    box.getCenter(centre);
    return -(toEye * with_w(wide(centre), 1))[2];
}

// Maps of the surroundings are read by the normals.
bool mirrors_without_normals(Geometry const &geometry, Surface const &surface)
{
    return geometry.getNormals() == nullptr &&
           std::any_of(surface.stages.begin(), surface.stages.end(),
                       [](TextureStage const &stage) { return stage.picture.sphereMap; });
}

// What a node hands down to those below it.
struct Heritage
{
    Matrix4d toEye;
    Material const *group = nullptr;      // of the innermost group of a material
    Material const *overriding = nullptr; // of the outermost group that overrides
    std::vector<LightSource> lights;
};

class ItemCollector
{
  public:
    explicit ItemCollector(SlowView const &view)
        : _view(view)
    {
    }

    void visit(Node *node, Heritage heritage)
    {
        if((node->getTravMask() & _view.travMask) == 0)
            return;
        NodeCore *const core = node->getCore();
        apply(core, heritage);
        if(auto *const geometry = dynamic_cast<Geometry *>(core))
            add(*geometry, heritage);
        if(auto const *const other = dynamic_cast<VisitSubTree *>(core))
        {
            if(other->getSubTreeRoot() != nullptr)
                visit(other->getSubTreeRoot(), heritage);
            return;
        }
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
        {
            if(shows(*node, i, heritage.toEye))
                visit(node->getChild(i), heritage);
        }
    }

    std::vector<DrawnItem> items;

  private:
    void apply(NodeCore *core, Heritage &heritage)
    {
        applyMatrix(core, heritage.toEye);
        if(auto const *const group = dynamic_cast<MaterialGroup *>(core))
        {
            if(group->getMaterial() != nullptr)
                heritage.group = group->getMaterial();
        }
        if(auto const *const group = dynamic_cast<MaterialChunkOverrideGroup *>(core))
        {
            if(heritage.overriding == nullptr)
                heritage.overriding = group->getMaterial();
        }
        if(auto const *const light = dynamic_cast<Light *>(core))
            applyLight(*light, heritage);
    }

    void applyMatrix(NodeCore *core, Matrix4d &toEye) const
    {
        if(auto const *const marker = dynamic_cast<ConstSizeTransform *>(core))
            toEye = constant_sized_matrix(toEye, Matrix4d(marker->getMatrix()),
                                          marker->getDistance(), _view);
        else if(auto const *const transform = dynamic_cast<Transform *>(core))
            toEye = toEye * Matrix4d(transform->getMatrix());
        else if(dynamic_cast<Billboard *>(core) != nullptr)
            toEye = billboard_matrix(toEye, _view);
        else if(dynamic_cast<ConstantSizeTransform *>(core) != nullptr)
            toEye = pixel_sized_matrix(toEye, _view);
        else if(dynamic_cast<InverseTransform *>(core) != nullptr && toEye.determinant() != 0)
            toEye = _view.viewing;
    }

    Matrix4d spaceOf(Node const &node) const
    {
        Matrix4d toEye = node.getParent() != nullptr ? spaceOf(*node.getParent()) : _view.viewing;
        applyMatrix(node.getCore(), toEye);
        return toEye;
    }

    void applyLight(Light const &light, Heritage &heritage)
    {
        if(_view.headlight || !light.getOn() || _lightCount == MaxLights)
            return;
        ++_lightCount;
        Node const *const beacon = light.getBeacon();
        Matrix4d const toEye = beacon != nullptr ? spaceOf(*beacon) : heritage.toEye;
        heritage.lights.push_back(light_in(light, toEye));
    }

    bool shows(Node const &node, UInt32 child, Matrix4d const &toEye) const
    {
        NodeCore const *const core = node.getCore();
        if(auto const *const levels = dynamic_cast<DistanceLOD const *>(core))
            return isLevel(node, child,
                           level_by_distance(levels->getCenter(), *levels->getMFRange(), toEye));
        if(auto const *const levels = dynamic_cast<ScreenLOD const *>(core))
            return isLevel(
                node, child,
                level_by_coverage(node.getVolume(), *levels->getMFCoverage(), toEye, _view));
        if(auto const *const choice = dynamic_cast<Switch const *>(core))
            return choice->getChoice() == Switch::AllChildren ||
                   choice->getChoice() == static_cast<Int32>(child);
        if(auto const *const choice = dynamic_cast<MultiSwitch const *>(core))
        {
            auto const &choices = *choice->getMFChoices();
            if(choice->getSwitchMode() == MultiSwitch::ShowChoices)
                return std::find(choices.begin(), choices.end(), child) != choices.end();
            return choice->getSwitchMode() != MultiSwitch::ShowNone;
        }
        return true;
    }

    static bool isLevel(Node const &node, UInt32 child, UInt32 level)
    {
        return child == std::min(level, node.getNChildren() - 1);
    }

    void add(Geometry &geometry, Heritage const &heritage)
    {
        ChunkSet chunks =
            chunks_of(heritage.group != nullptr ? heritage.group : geometry.getMaterial());
        override_chunks(chunks, chunks_of(heritage.overriding));
        std::vector<LightSource> lights = heritage.lights;
        if(_view.headlight)
            lights.assign(1, LightSource());
        Surface surface = surface_of(chunks);
        bool const doubtful = mirrors_without_normals(geometry, surface);
        items.push_back({&geometry, heritage.toEye, std::move(surface), std::move(lights), doubtful,
                         centre_depth(geometry, heritage.toEye)});
    }

    SlowView const &_view;
    std::size_t _lightCount = 0;
};
} // namespace

std::vector<DrawnItem> drawn_items(Node *root, SlowView const &view)
{
    root->updateVolume();
    ItemCollector collector(view);
    Heritage heritage;
    heritage.toEye = view.viewing;
    collector.visit(root, heritage);
    return std::move(collector.items);
}
} // namespace OSG::Test
