// OpenSceneGraph draws the same picture of the same nodes, triangles, normals and materials: in one
// thread, with the view's frustum as the only culling, in a context that is given to it.

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <map>

#include <osg/Geometry>
#include <osg/GraphicsContext>
#include <osg/LightModel>
#include <osg/Material>
#include <osgUtil/SceneView>

#include "FrameDrawer.h"
#include "OSGNodeWalker.h"
#include "OSGOffscreenContext.h"
#include "OSGSimpleMaterial.h"
#include "PeerScene.h"

namespace OSG::Bench
{
namespace
{
osg::Vec4 color_of(Color3f const &color) { return osg::Vec4(color[0], color[1], color[2], 1); }

osg::ref_ptr<osg::StateSet> state_of(SimpleMaterial const &source)
{
    osg::ref_ptr<osg::Material> const material = new osg::Material;
    material->setAmbient(osg::Material::FRONT_AND_BACK, color_of(source.getAmbient()));
    material->setDiffuse(osg::Material::FRONT_AND_BACK, color_of(source.getDiffuse()));
    material->setSpecular(osg::Material::FRONT_AND_BACK, color_of(source.getSpecular()));
    material->setShininess(osg::Material::FRONT_AND_BACK, source.getShininess());
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    state->setAttributeAndModes(material);
    return state;
}

// The geometries in the order of the walk, as the peer's drawables are numbered.
struct GeometryList
{
    bool enter(Node *node)
    {
        if(auto *const geometry = dynamic_cast<Geometry *>(node->getCore()))
            geometries.push_back(geometry);
        return true;
    }
    void leave(Node *) {}

    std::vector<Geometry *> geometries;
};

osg::ref_ptr<osg::Vec3Array> normals_of(Geometry const &source)
{
    osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    VectorArray const array = source.getNormals()->getArray();
    for(UInt32 i = 0; i < array.size(); ++i)
        normals->push_back(osg::Vec3(array[i][0], array[i][1], array[i][2]));
    return normals;
}

PeerScene drawn_peer_scene(Node *root, bool lists)
{
    PeerScene scene = peer_scene_of(root);
    GeometryList ours;
    walk_children(root, ours);
    std::map<Material const *, osg::ref_ptr<osg::StateSet>> states;
    for(auto const &[drawable, number] : scene.numbers)
    {
        Geometry const &source = *ours.geometries[number];
        auto *const geometry = const_cast<osg::Drawable *>(drawable)->asGeometry();
        geometry->setNormalArray(normals_of(source));
        geometry->setUseDisplayList(lists);
        geometry->setUseVertexBufferObjects(!lists);
        osg::ref_ptr<osg::StateSet> &state = states[source.getMaterial()];
        if(state == nullptr)
            state = state_of(dynamic_cast<SimpleMaterial &>(*source.getMaterial()));
        geometry->setStateSet(state);
    }
    return scene;
}

osg::Vec3d place(Pnt3f const &p) { return osg::Vec3d(p[0], p[1], p[2]); }

class PeerDrawer : public FrameDrawer
{
  public:
    PeerDrawer(Node *root, bool lists)
        : _context(FrameWidth, FrameHeight)
        , _scene(drawn_peer_scene(root, lists))
    {
        if(!_context.makeCurrent())
            return;
        osg::ref_ptr<osg::StateSet> const state = _scene.root->getOrCreateStateSet();
        state->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
        state->setMode(GL_CULL_FACE, osg::StateAttribute::OFF);
        osg::ref_ptr<osg::LightModel> const bothSides = new osg::LightModel;
        bothSides->setTwoSided(true);
        state->setAttribute(bothSides);
        _view->setDefaults(osgUtil::SceneView::STANDARD_SETTINGS);
        _view->getLight()->setDiffuse(osg::Vec4(1, 1, 1, 1));
        _view->setSceneData(_scene.root);
        _view->setViewport(0, 0, FrameWidth, FrameHeight);
        _view->setClearColor(osg::Vec4(1, 1, 1, 1));
        _view->setCullingMode(osg::CullSettings::VIEW_FRUSTUM_CULLING);
        _view->setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
        _view->getState()->setContextID(osg::GraphicsContext::createNewContextID());
        _view->getState()->initializeExtensionProcs();
        _view->getState()->setCheckForGLErrors(osg::State::NEVER_CHECK_GL_ERRORS);
        _view->init();
        _context.release();
    }

    char const *missing() const override { return _context.missing().c_str(); }
    void makeCurrent() override { static_cast<void>(_context.makeCurrent()); }
    void release() override { _context.release(); }
    void draw(FrameView const &view) override
    {
        _view->setProjectionMatrixAsPerspective(view.fieldOfView, double(FrameWidth) / FrameHeight,
                                                view.near, view.far);
        _view->setViewMatrixAsLookAt(place(view.from), place(view.at), osg::Vec3d(0, 1, 0));
        _view->cull();
        _view->draw();
        finish_drawing();
    }
    void moveBox(Real32 height) override
    {
        findBox();
        _box->setMatrix(_start * osg::Matrix::translate(0., height, 0.));
    }
    void showBox(bool isShown) override
    {
        findBox();
        _box->setNodeMask(isShown ? ~0u : 0u);
    }

  private:
    void findBox()
    {
        if(_box != nullptr)
            return;
        osg::Node *node = _scene.root;
        for(UInt32 child : WayToMovingBox)
            node = node->asGroup()->getChild(child);
        _box = node->asTransform()->asMatrixTransform();
        _start = _box->getMatrix();
    }

    OffscreenContext _context;
    PeerScene _scene;
    osg::ref_ptr<osgUtil::SceneView> const _view = new osgUtil::SceneView;
    osg::MatrixTransform *_box = nullptr;
    osg::Matrix _start;
};
} // namespace

std::unique_ptr<FrameDrawer> make_peer_drawer(Node *root, bool lists)
{
    return std::make_unique<PeerDrawer>(root, lists);
}
} // namespace OSG::Bench
#else
#include "FrameDrawer.h"

namespace OSG::Bench
{
std::unique_ptr<FrameDrawer> make_peer_drawer(Node *, bool) { return nullptr; }
} // namespace OSG::Bench
#endif
