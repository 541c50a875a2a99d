#include "PeerReaders.h"

#ifdef BENCHMARK_WITH_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

namespace OSG::Bench
{
std::size_t read_by_assimp(std::string const &bytes, char const *suffix)
{
    Assimp::Importer importer;
    aiScene const *const scene = importer.ReadFileFromMemory(
        bytes.data(), bytes.size(), aiProcess_JoinIdenticalVertices, suffix);
    std::size_t triangles = 0;
    for(unsigned i = 0; scene != nullptr && i < scene->mNumMeshes; ++i)
        triangles += scene->mMeshes[i]->mNumFaces;
    return triangles;
}
} // namespace OSG::Bench
#endif

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/TriangleFunctor>
#include <osgDB/Registry>

#include "TextStream.h"

namespace OSG::Bench
{
namespace
{
struct CountTriangle
{
    std::size_t count = 0;
    void operator()(osg::Vec3 const &, osg::Vec3 const &, osg::Vec3 const &, bool = false)
    {
        ++count;
    }
};

struct CountVisitor : osg::NodeVisitor
{
    std::size_t count = 0;
    CountVisitor()
        : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN)
    {
    }
    void apply(osg::Drawable &drawable) override
    {
        osg::TriangleFunctor<CountTriangle> functor;
        drawable.accept(functor);
        count += functor.count;
    }
};
} // namespace

std::size_t read_by_openscenegraph(std::string const &bytes, char const *suffix)
{
    osgDB::ReaderWriter *const reader =
        osgDB::Registry::instance()->getReaderWriterForExtension(suffix);
    if(reader == nullptr)
        return 0;
    TextStream in(bytes);
    osg::ref_ptr<osg::Node> const node = reader->readNode(in).takeNode();
    if(node == nullptr)
        return 0;
    CountVisitor visitor;
    node->accept(visitor);
    return visitor.count;
}
} // namespace OSG::Bench
#endif
