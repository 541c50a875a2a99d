#include "ObjScene.h"

#include <sstream>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGGeometryIterators.h"
#include "OSGSceneFileHandler.h"

namespace OSG::Test
{
namespace
{
template <class Read>
ObjScene captured(Read read)
{
    LogCapture log;
    ObjScene scene;
    scene.root = read();
    for(LogCapture::Message const &message : log.messages())
        scene.log.push_back(std::to_string(message.level) + ": " + message.text);
    return scene;
}

Geometry *geometry_of(Node *node) { return dynamic_cast<Geometry *>(node->getCore()); }
} // namespace

std::vector<Geometry *> ObjScene::geometries() const
{
    std::vector<Geometry *> result;
    if(root == nullptr)
        return result;
    if(geometry_of(root) != nullptr)
        result.push_back(geometry_of(root));
    for(UInt32 i = 0; i < root->getNChildren(); ++i)
        result.push_back(geometry_of(root->getChild(i)));
    return result;
}

ObjScene read_obj_scene(std::string const &text)
{
    std::istringstream in(text);
    return captured([&in] { return SceneFileHandlerBase::the()->read(in, "obj"); });
}

ObjScene read_obj_file(std::string const &path)
{
    return captured([&path] { return SceneFileHandlerBase::the()->read(path.c_str()); });
}

std::string describe_faces(Geometry const &geometry)
{
    std::ostringstream out;
    PrimitiveIterator const end = geometry.endPrimitives();
    for(PrimitiveIterator it = geometry.beginPrimitives(); it != end; ++it)
    {
        out << '(';
        for(UInt32 i = 0; i < it.getLength(); ++i)
            out << (i != 0 ? " " : "") << it.getPositionIndex(static_cast<Int32>(i));
        out << ')';
    }
    return out.str();
}

std::string describe_scene(Node *root)
{
    if(root == nullptr)
        return "null";
    if(Geometry const *const geometry = geometry_of(root))
        return describe_faces(*geometry);
    std::string result = std::string(root->getCore()->getType().getCName()) + "[";
    for(UInt32 i = 0; i < root->getNChildren(); ++i)
        result += (i != 0 ? ", " : "") + describe_scene(root->getChild(i));
    return result + "]";
}

std::vector<UInt32> values_of(GeoIntegralProperty const *property)
{
    std::vector<UInt32> result;
    for(UInt32 i = 0; property != nullptr && i < property->size(); ++i)
        result.push_back(property->getValue(i));
    return result;
}

std::vector<std::vector<Real32>> vertex_values(Geometry const &geometry, UInt16 slot)
{
    std::vector<std::vector<Real32>> result;
    GeoVectorProperty const *const property = geometry.getProperty(slot);
    for(UInt32 element : values_of(geometry.getIndex(slot)))
    {
        result.emplace_back();
        if(property == nullptr || element >= property->size())
            continue;
        result.back().resize(property->getDimension());
        property->getValue(result.back().data(), element);
    }
    return result;
}

UInt64 count_triangles(Geometry const &geometry)
{
    UInt32 const positions = geometry.getPositions()->size();
    UInt64 count = 0;
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it, ++count)
    {
        for(int corner = 0; corner < 3; ++corner)
        {
            if(it.getPositionIndex(corner) >= positions)
                ADD_FAILURE() << "a corner at " << it.getPositionIndex(corner) << " of "
                              << positions;
            Vec3f const normal = it.getNormal(corner);
            if(geometry.getNormals() == nullptr && normal != Vec3f())
                ADD_FAILURE() << "a normal from nowhere";
        }
    }
    return count;
}

UInt64 count_triangles(Node *root)
{
    UInt64 count = 0;
    for(Geometry const *geometry : ObjScene{root, {}}.geometries())
        count += count_triangles(*geometry);
    return count;
}

SimpleTexturedMaterial *material_of(Geometry const &geometry)
{
    return dynamic_cast<SimpleTexturedMaterial *>(geometry.getMaterial());
}
} // namespace OSG::Test
