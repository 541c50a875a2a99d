// The hand-over of a scene of 1,000,000 nodes from the aspect that read it to that of the host: how
// long the host's thread stands still. The time is that of one whole hand-over. The scene is a tree
// of transforms and geometries; the geometries share their arrays.

#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"
#include "OSGSceneLoader.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;
constexpr UInt32 Nodes = 1000000;
constexpr UInt32 Parts = 10; // geometries below a transform

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

/// A triangle; the geometries share its arrays.
class Triangle
{
  public:
    Triangle()
    {
        _types->push_back(TrianglesPrimitive);
        _lengths->push_back(3);
        _positions->editValues().assign({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)});
    }

    NodePtr make() const
    {
        UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
        geometry->setTypes(_types);
        geometry->setLengths(_lengths);
        geometry->setPositions(_positions);
        NodePtr node(Node::create());
        node->setCore(geometry);
        return node;
    }

  private:
    UnrecordedRefPtr<GeoUInt8Property> _types{GeoUInt8Property::create()};
    UnrecordedRefPtr<GeoUInt32Property> _lengths{GeoUInt32Property::create()};
    UnrecordedRefPtr<GeoPnt3fProperty> _positions{GeoPnt3fProperty::create()};
};

NodePtr make_transform()
{
    UnrecordedRefPtr<Transform> const core(Transform::create());
    NodePtr node(Node::create());
    node->setCore(core);
    return node;
}

NodePtr make_scene()
{
    Triangle const triangle;
    NodePtr root = make_transform();
    for(UInt32 count = 1; count < Nodes; count += Parts + 1)
    {
        NodePtr const part = make_transform();
        for(UInt32 i = 0; i < Parts; ++i)
            part->addChild(triangle.make());
        root->addChild(part);
    }
    commit();
    return root;
}

/// The file of the scene, removed at the end of the program.
class SceneFile
{
  public:
    SceneFile()
        : _name(std::filesystem::temp_directory_path() /
                ("tolvanite-hand-over-" + std::to_string(getpid()) + ".osb"))
    {
        SceneFileHandlerBase::the()->write(make_scene(), _name.c_str());
        commit();
    }
    ~SceneFile()
    {
        std::error_code error;
        std::filesystem::remove(_name, error);
    }
    SceneFile(SceneFile const &) = delete;
    SceneFile &operator=(SceneFile const &) = delete;

    std::string name() const { return _name.string(); }

  private:
    std::filesystem::path _name;
};

void hand_over(benchmark::State &state)
{
    bring_up();
    static SceneFile const file;
    for([[maybe_unused]] auto _ : state)
    {
        SceneLoader loader(file.name());
        loader.wait();
        NodePtr const scene(loader.take());
        if(scene == nullptr)
            state.SkipWithError("there is no scene");
        state.SetIterationTime(loader.getHandOverSeconds());
        commit();
    }
}
BENCHMARK(hand_over)
    ->Name("hand-over of 1,000,000 nodes/ours")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
} // namespace
} // namespace OSG::Bench
