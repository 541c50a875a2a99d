// The code of the guide to the Kit about drawing and loading, as hosts write it.

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGRenderAction.h"
#include "OSGSceneLoader.h"
#include "OSGSimpleMaterial.h"
#include "OSGSolidBackground.h"
#include "OSGThumbnail.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
NodePtr make_shape()
{
    return make_node(make_geometry(
        one_primitive(TrianglesPrimitive, {Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)})));
}

struct DrawingGuide : testing::Test
{
    NodePtr part = make_shape();
    NodePtr neighbour = make_shape();
    NodePtr cover = make_shape();
    NodePtr visit = make_visit(part);
    NodePtr root = make_group({part, neighbour, cover, visit});
    Node *scene = root;
    UnrecordedRefPtr<SimpleMaterial> highlight{SimpleMaterial::create()};
    ViewportPtr viewport = make_viewport(0, 0, 99, 99);
    UnrecordedRefPtr<RenderAction> action{RenderAction::create()};
    CameraPtr<PerspectiveCamera> camera = make_perspective(1, 0.1f, 100);
    UnrecordedRefPtr<SolidBackground> background{SolidBackground::create()};
    NodePtr beacon = make_transform(translation(0, 0, 5));
    LogCapture log; // there is no context

    DrawingGuide()
    {
        camera->setBeacon(beacon);
        viewport->setCamera(camera);
        viewport->setBackground(background);
        viewport->setRoot(root);
    }

    std::size_t drawn()
    {
        viewport->render(action);
        return action->getDrawList().opaque.size();
    }
};

TEST_F(DrawingGuide, Highlighting)
{
    EXPECT_EQ(drawn(), 4u);
    AppearanceTable &looks = action->editAppearances();
    looks.set(NodePath(part), highlight);
    looks.hide(NodePath(cover));
    viewport->render(action);
    EXPECT_EQ(drawn(), 3u);
    looks.set(NodePath(part, {visit}), highlight);
    EXPECT_EQ(looks.getMaterial(NodePath(part, {visit})), highlight);

    looks.isolate({NodePath(part), NodePath(neighbour)});
    EXPECT_EQ(drawn(), 2u);
    looks.isolate({NodePath(part), NodePath(neighbour)});
    looks.endIsolation();
    looks.show(NodePath(cover));
    looks.erase(NodePath(part));
    EXPECT_EQ(drawn(), 4u);
}

TEST_F(DrawingGuide, Sections)
{
    root->addChild(make_transform(translation(-1, 0, 0), {make_shape()}));
    EXPECT_EQ(drawn(), 5u);
    Plane const halves[] = {Plane(Vec3f(1, 0, 0), Pnt3f(0.5f, 0, 0))};
    action->editDrawEnv().setSections(halves);
    EXPECT_EQ(drawn(), 4u);
}

TEST_F(DrawingGuide, Thumbnails)
{
    std::size_t bytes = 0;
    auto const useIcon = [&bytes](std::vector<UInt8> const &pixels) { bytes = pixels.size(); };
    Picture const thumbnail = thumbnail_of(scene, 96, 64);
    if(thumbnail.missing.empty())
        useIcon(thumbnail.pixels);
    EXPECT_EQ(bytes, thumbnail.missing.empty() ? 96u * 64 * 3 : 0u);
}

TEST_F(DrawingGuide, Loading)
{
    std::string const file = TEST_SOURCE_DIR "/Models/pavilion.obj";
    std::string shown;
    auto const show = [&shown](std::string const &text) { shown = text; };
    auto const drawFrame = [](Real32 progress) { EXPECT_LE(progress, 1); };
    SceneLoader loader(file);
    while(loader.getState() == SceneLoader::State::Running)
        drawFrame(loader.getProgress());
    if(UnrecordedRefPtr<Node> const loaded{loader.take()})
        root->addChild(loaded);
    else
        show(loader.getError());
    EXPECT_EQ(root->getNChildren(), 5u);
    EXPECT_EQ(shown, "");
    loader.cancel();
    EXPECT_EQ(loader.getState(), SceneLoader::State::Taken);
}
} // namespace
