// The graph operations on deep, bushy and wide scenes of 10,000 and of 1,000,000 nodes.
//
// Times are CPU time per million nodes. The ratio of the two sizes shows how an operation grows; 1
// means linear. A scene consists of cells of nine nodes. Every operation has work in a cell:
//
//   Billboard                    deep:   each cell holds the next one, in one chain
//     Group                      bushy:  each cell holds eight
//       (the inner cells)        wide:   what is below the Billboard, cell after cell, below one
//       node Transform
//         Geometry
//     MaterialGroup
//       Geometry
//     Switch of the first
//       Geometry
//       Geometry
//
// No operation dissolves the Billboard, so the nodes of a cell rise within the cell only.

#include <ctime>

#include <benchmark/benchmark.h>

#include "OSGBillboard.h"
#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGGeometryView.h"
#include "OSGGraphOpFactory.h"
#include "OSGGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitch.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;
constexpr UInt32 CellNodes = 9;

UnrecordedRefPtr<Geometry> make_triangle()
{
    UnrecordedRefPtr<Geometry> geometry(Geometry::create());
    UnrecordedRefPtr<GeoUInt8Property> const types(GeoUInt8Property::create());
    UnrecordedRefPtr<GeoUInt32Property> const lengths(GeoUInt32Property::create());
    UnrecordedRefPtr<GeoPnt3fProperty> const positions(GeoPnt3fProperty::create());
    types->push_back(TrianglesPrimitive);
    lengths->push_back(3);
    positions->editValues().assign({Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)});
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setPositions(positions);
    return geometry;
}

/// Makes cells. Their leaves share one core, as instances do.
class SceneMaker
{
  public:
    NodePtr deep(UInt32 cells)
    {
        NodePtr top = cell({});
        for(UInt32 i = 1; i < cells; ++i)
            top = cell({top});
        return make<Group>({top});
    }

    NodePtr bushy(UInt32 cells)
    {
        std::vector<NodePtr> open;
        for(UInt32 i = 0; i < cells; ++i)
        {
            // The innermost cells come first. Seven of eight cells hold no others.
            std::size_t const taken = i % 8 == 7 ? std::min<std::size_t>(open.size(), 8) : 0;
            std::vector<NodePtr> const inner(open.end() - taken, open.end());
            open.resize(open.size() - taken);
            open.push_back(cell(inner));
        }
        return make<Group>(open);
    }

    NodePtr wide(UInt32 cells)
    {
        NodePtr root = make<Group>({});
        for(UInt32 i = 0; i < cells; ++i)
            fill(*root, {});
        return root;
    }

  private:
    template <class Core>
    NodePtr make(std::vector<NodePtr> const &children)
    {
        UnrecordedRefPtr<Core> const core(Core::create());
        NodePtr node(Node::create());
        node->setCore(core);
        setName(node, "node");
        for(NodePtr const &child : children)
            node->addChild(child);
        return node;
    }

    NodePtr leaf()
    {
        NodePtr node(Node::create());
        node->setCore(_triangle);
        return node;
    }

    void fill(Node &node, std::vector<NodePtr> inner)
    {
        inner.push_back(make<Transform>({leaf()}));
        node.addChild(make<Group>(inner));
        NodePtr const materials = make<MaterialGroup>({leaf()});
        static_cast<MaterialGroup *>(materials->getCore())->setMaterial(_material);
        node.addChild(materials);
        NodePtr const choice = make<Switch>({leaf(), leaf()});
        static_cast<Switch *>(choice->getCore())->setChoice(0);
        node.addChild(choice);
    }

    NodePtr cell(std::vector<NodePtr> const &inner)
    {
        NodePtr node = make<Billboard>({});
        fill(*node, inner);
        return node;
    }

    UnrecordedRefPtr<Geometry> _triangle = make_triangle();
    UnrecordedRefPtr<SimpleMaterial> _material{SimpleMaterial::create()};
};

using MakeScene = NodePtr (SceneMaker::*)(UInt32 cells);

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

void run(benchmark::State &state, char const *name, MakeScene make, UInt32 nodes)
{
    bring_up();
    for([[maybe_unused]] auto _ : state)
    {
        SceneMaker maker;
        NodePtr const scene = (maker.*make)(nodes / CellNodes);
        commit();
        UnrecordedRefPtr<GraphOp> const operation(GraphOpFactoryBase::the()->create(name));
        std::clock_t const start = std::clock();
        bool const through = operation->traverse(scene);
        double const seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        state.SetIterationTime(seconds * 1e6 / nodes);
        if(!through)
            state.SkipWithError("the operation goes through");
        commit();
    }
}

void register_all()
{
    struct Shape
    {
        char const *name;
        MakeScene make;
    };
    for(char const *operation : {"GrpMerge", "Mrg", "SimplifyRenderEngine"})
    {
        for(Shape const &shape : {Shape{"deep", &SceneMaker::deep},
                                  {"bushy", &SceneMaker::bushy},
                                  {"wide", &SceneMaker::wide}})
        {
            std::string const name =
                std::string(operation) + ", " + shape.name + " scene, per million nodes/";
            auto const add = [&](char const *contender, UInt32 nodes, int iterations)
            {
                benchmark::RegisterBenchmark((name + contender).c_str(), run, operation, shape.make,
                                             nodes)
                    ->UseManualTime()
                    ->Iterations(iterations)
                    ->Unit(benchmark::kMillisecond);
            };
            add("ours", 1000000, 1);
            add("of 10,000 nodes", 10000, 20);
        }
    }
}

[[maybe_unused]] bool const Registered = (register_all(), true);
} // namespace
} // namespace OSG::Bench
