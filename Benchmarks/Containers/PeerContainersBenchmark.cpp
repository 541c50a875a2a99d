// The peer's half of the container benchmarks. The peer has one object where we have a node and its
// core. A geometry that our leaves share as their core is a shared child of the peer's leaves.

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <sstream>
#include <vector>

#include <benchmark/benchmark.h>
#include <osg/CopyOp>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <osg/MatrixTransform>
#include <osg/NodeVisitor>
#include <osgDB/ReaderWriter>
#include <osgDB/Registry>

#include "SceneSizes.h"

namespace OSG::Bench
{
namespace
{
using PeerPtr = osg::ref_ptr<osg::Group>;

void count_items(benchmark::State &state, std::size_t perIteration)
{
    state.SetItemsProcessed(static_cast<int64_t>(perIteration) *
                            static_cast<int64_t>(state.iterations()));
}

osg::ref_ptr<osg::Geometry> peer_triangle()
{
    osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
    positions->push_back(osg::Vec3(0, 0, 0));
    positions->push_back(osg::Vec3(1, 0, 0));
    positions->push_back(osg::Vec3(0, 1, 0));
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(positions);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
    return geometry;
}

PeerPtr peer_named_tree(std::size_t count)
{
    std::vector<osg::Group *> nodes;
    nodes.reserve(count);
    PeerPtr root;
    for(std::size_t i = 0; i < count; ++i)
    {
        PeerPtr const node = new osg::Group;
        node->setName(name_of(i));
        if(i == 0)
            root = node;
        else
            nodes[parent_of(i)]->addChild(node);
        nodes.push_back(node.get());
    }
    return root;
}

PeerPtr peer_boxes(std::size_t count)
{
    PeerPtr root = new osg::Group;
    osg::ref_ptr<osg::Geometry> const shared = peer_triangle();
    for(std::size_t i = 0; i < count; ++i)
    {
        osg::ref_ptr<osg::MatrixTransform> const box = new osg::MatrixTransform;
        box->setMatrix(osg::Matrix::translate(static_cast<double>(i), 0., 0.));
        box->addChild(shared);
        root->addChild(box);
    }
    return root;
}

PeerPtr peer_shown_tree(std::size_t count, std::vector<osg::Group *> &leaves)
{
    osg::ref_ptr<osg::Geometry> const shared = peer_triangle();
    std::vector<osg::Group *> nodes;
    PeerPtr root;
    for(std::size_t i = 0; i < count; ++i)
    {
        PeerPtr const node = has_children(i, count) ? new osg::Group : new osg::Geode;
        if(!has_children(i, count))
        {
            node->addChild(shared);
            leaves.push_back(node.get());
        }
        if(i == 0)
            root = node;
        else
            nodes[parent_of(i)]->addChild(node);
        nodes.push_back(node.get());
    }
    return root;
}

void make_named(benchmark::State &state)
{
    for([[maybe_unused]] auto _ : state)
    {
        PeerPtr root = peer_named_tree(TreeNodes);
        state.PauseTiming();
        root = nullptr;
        state.ResumeTiming();
    }
    count_items(state, TreeNodes);
}

void drop_named(benchmark::State &state)
{
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        PeerPtr root = peer_named_tree(TreeNodes);
        state.ResumeTiming();
        root = nullptr;
    }
    count_items(state, TreeNodes);
}

void update_volumes(benchmark::State &state)
{
    std::vector<osg::Group *> leaves;
    PeerPtr const root = peer_shown_tree(TreeNodes, leaves);
    root->getBound();
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        for(osg::Group *leaf : leaves)
            leaf->dirtyBound();
        state.ResumeTiming();
        benchmark::DoNotOptimize(root->getBound().radius());
    }
    count_items(state, TreeNodes);
}

/// Counts nodes. The drawables below the leaves are not counted, like our cores.
struct CountingVisitor : osg::NodeVisitor
{
    CountingVisitor()
        : osg::NodeVisitor(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN)
    {
    }
    void apply(osg::Node &node) override
    {
        ++seen;
        traverse(node);
    }
    void apply(osg::Drawable &) override {}

    std::size_t seen = 0;
};

void traverse_tree(benchmark::State &state)
{
    std::vector<osg::Group *> leaves;
    PeerPtr const root = peer_shown_tree(TreeNodes, leaves);
    std::size_t seen = 0;
    for([[maybe_unused]] auto _ : state)
    {
        CountingVisitor visitor;
        root->accept(visitor);
        seen = visitor.seen;
    }
    if(seen != TreeNodes)
        state.SkipWithError("every node is visited");
    count_items(state, TreeNodes);
}

void clone_scene(benchmark::State &state, PeerPtr const &root, std::size_t items)
{
    for([[maybe_unused]] auto _ : state)
    {
        PeerPtr copy = osg::clone(root.get(), osg::CopyOp(osg::CopyOp::DEEP_COPY_NODES));
        state.PauseTiming();
        if(copy->getNumChildren() != root->getNumChildren() ||
           copy->getChild(0) == root->getChild(0))
            state.SkipWithError("the nodes are copied");
        copy = nullptr;
        state.ResumeTiming();
    }
    count_items(state, items);
}

void clone_named(benchmark::State &state)
{
    clone_scene(state, peer_named_tree(TreeNodes), TreeNodes);
}

void clone_boxes(benchmark::State &state) { clone_scene(state, peer_boxes(Boxes), Boxes); }

osgDB::ReaderWriter *binary_format(benchmark::State &state)
{
    osgDB::ReaderWriter *const format =
        osgDB::Registry::instance()->getReaderWriterForExtension("osgb");
    if(format == nullptr)
        state.SkipWithError("the peer's binary format is installed");
    return format;
}

std::string written(osgDB::ReaderWriter *format, osg::Node const &root)
{
    std::ostringstream out;
    format->writeNode(root, out);
    return out.str();
}

void write_boxes(benchmark::State &state)
{
    PeerPtr const root = peer_boxes(Boxes);
    osgDB::ReaderWriter *const format = binary_format(state);
    for([[maybe_unused]] auto _ : state)
    {
        std::ostringstream out;
        if(!format->writeNode(*root, out).success())
            state.SkipWithError("the scene is written");
    }
    count_items(state, Boxes);
}

void read_boxes(benchmark::State &state)
{
    osgDB::ReaderWriter *const format = binary_format(state);
    std::string const bytes = format != nullptr ? written(format, *peer_boxes(Boxes)) : "";
    for([[maybe_unused]] auto _ : state)
    {
        std::istringstream in(bytes);
        osg::ref_ptr<osg::Node> root = format->readNode(in).getNode();
        state.PauseTiming();
        if(root == nullptr || root->asGroup() == nullptr ||
           root->asGroup()->getNumChildren() != Boxes)
            state.SkipWithError("the scene is read");
        root = nullptr;
        state.ResumeTiming();
    }
    count_items(state, Boxes);
}

void measure_file(benchmark::State &state)
{
    osgDB::ReaderWriter *const format = binary_format(state);
    double const size =
        format != nullptr ? static_cast<double>(written(format, *peer_boxes(Boxes)).size()) : 0;
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(state.iterations());
    state.counters["bytes"] = size / static_cast<double>(Boxes);
}

template <class T>
void measure_object(benchmark::State &state)
{
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(state.iterations());
    state.counters["bytes"] = sizeof(T);
}

BENCHMARK(make_named)->Name("make a named node/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(drop_named)->Name("drop a named node/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(update_volumes)
    ->Name("update the volume of a node/openscenegraph")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(traverse_tree)->Name("traverse a node/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(traverse_tree)->Name("act on a node/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(clone_named)->Name("clone a named node/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(clone_boxes)->Name("clone a box/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(write_boxes)->Name("write a box in binary/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(read_boxes)->Name("read a box in binary/openscenegraph")->Unit(benchmark::kMillisecond);
BENCHMARK(measure_file)->Name("a box in a binary file/openscenegraph")->Iterations(1);
BENCHMARK(measure_object<osg::Node>)->Name("sizeof a node/openscenegraph")->Iterations(1);
BENCHMARK(measure_object<osg::Group>)->Name("sizeof a group/openscenegraph")->Iterations(1);
} // namespace
} // namespace OSG::Bench
#endif
