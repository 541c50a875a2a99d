#include "PeerReaders.h"

#ifdef BENCHMARK_WITH_TINYOBJLOADER
#include <filesystem>

#include <tiny_obj_loader.h>

namespace OSG::Bench
{
std::size_t file_by_tinyobjloader(std::string const &path)
{
    tinyobj::attrib_t arrays;
    std::vector<tinyobj::shape_t> shapes;
    std::vector<tinyobj::material_t> materials;
    std::string warning, error;
    std::string const folder = std::filesystem::path(path).parent_path().string() + '/';
    bool const triangulate = false;
    tinyobj::LoadObj(&arrays, &shapes, &materials, &warning, &error, path.c_str(), folder.c_str(),
                     triangulate);
    std::size_t faces = 0;
    for(tinyobj::shape_t const &shape : shapes)
        faces += shape.mesh.num_face_vertices.size();
    return faces;
}
} // namespace OSG::Bench
#endif

#ifdef BENCHMARK_WITH_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

namespace OSG::Bench
{
namespace
{
std::size_t faces_of(aiScene const *scene)
{
    std::size_t faces = 0;
    for(unsigned i = 0; scene != nullptr && i < scene->mNumMeshes; ++i)
        faces += scene->mMeshes[i]->mNumFaces;
    return faces;
}
} // namespace

std::size_t read_by_assimp(std::string const &bytes, char const *suffix)
{
    Assimp::Importer importer;
    return faces_of(importer.ReadFileFromMemory(bytes.data(), bytes.size(),
                                                aiProcess_JoinIdenticalVertices, suffix));
}

std::size_t file_by_assimp(std::string const &path)
{
    Assimp::Importer importer;
    return faces_of(importer.ReadFile(path, aiProcess_JoinIdenticalVertices));
}
} // namespace OSG::Bench
#endif

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/Notify>
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

std::size_t triangles_of(osg::Node *node)
{
    if(node == nullptr)
        return 0;
    CountVisitor visitor;
    node->accept(visitor);
    return visitor.count;
}
} // namespace

std::size_t read_by_openscenegraph(std::string const &bytes, char const *suffix)
{
    osgDB::ReaderWriter *const reader =
        osgDB::Registry::instance()->getReaderWriterForExtension(suffix);
    if(reader == nullptr)
        return 0;
    TextStream in(bytes);
    osg::ref_ptr<osg::Node> const node = reader->readNode(in).takeNode();
    return triangles_of(node.get());
}

std::size_t file_by_openscenegraph(std::string const &path)
{
    osg::setNotifyLevel(osg::FATAL); // it says of each geometry that faces were reversed
    osgDB::ReaderWriter *const reader =
        osgDB::Registry::instance()->getReaderWriterForExtension("obj");
    if(reader == nullptr)
        return 0;
    osg::ref_ptr<osg::Node> const node = reader->readNode(path, nullptr).takeNode();
    return triangles_of(node.get());
}
} // namespace OSG::Bench
#endif
