#include "ReferenceObjWriter.h"

#include <sstream>
#include <vector>

#include "OSGChunkMaterial.h"
#include "OSGGeometryIterators.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGNode.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitch.h"
#include "OSGTextureObjChunk.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
namespace
{
class Writer
{
  public:
    Writer()
    {
        scene << "o Geometry\n";
        library << std::fixed;
    }

    void node(Node *node)
    {
        NodeCore *const core = node->getCore();
        if(auto const *const group = dynamic_cast<MaterialGroup *>(core))
        {
            _materials.push_back(group->getMaterial());
            children(node);
            _materials.pop_back();
        }
        else if(auto const *const over = dynamic_cast<MaterialChunkOverrideGroup *>(core))
        {
            ++_overrides;
            (void)over;
            children(node);
            --_overrides;
        }
        else if(auto const *const shape = dynamic_cast<Geometry *>(core))
            geometry(node, *shape);
        else if(auto const *const visit = dynamic_cast<VisitSubTree *>(core))
        {
            if(visit->getSubTreeRoot() == nullptr)
                return;
            _transforms.push_back(node->getToWorld());
            this->node(visit->getSubTreeRoot());
            _transforms.pop_back();
        }
        else if(auto const *const some = dynamic_cast<MultiSwitch *>(core))
        {
            if(some->getSwitchMode() == -3)
                children(node);
            for(UInt32 i = 0; some->getSwitchMode() == -1 && i < some->getMFChoices()->size(); ++i)
            {
                if((*some->getMFChoices())[i] < node->getNChildren())
                    this->node(node->getChild((*some->getMFChoices())[i]));
            }
        }
        else if(auto const *const one = dynamic_cast<Switch *>(core))
        {
            if(one->getChoice() == -2)
                children(node);
            else if(one->getChoice() >= 0 && one->getChoice() < Int32(node->getNChildren()))
                this->node(node->getChild(static_cast<UInt32>(one->getChoice())));
        }
        else if(dynamic_cast<Group *>(core) != nullptr)
            children(node);
    }

    std::ostringstream scene;
    std::ostringstream library;

  private:
    void children(Node *node)
    {
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            this->node(node->getChild(i));
    }

    void geometry(Node *node, Geometry const &geometry)
    {
        std::string const name = "Geometry" + std::to_string(++_geometries);
        Material const *const material = geometry.getMaterial() != nullptr ? geometry.getMaterial()
                                         : !_materials.empty()             ? _materials.back()
                                                                           : nullptr;
        if(geometry.getMaterial() != nullptr || !_materials.empty())
            entry(name, material);
        scene << "g " << name << "\ns 1\n";
        if(!_materials.empty() || _overrides > 0)
            scene << "usemtl " << name << "\n";
        Matrix matrix = node->getToWorld();
        for(auto above = _transforms.rbegin(); above != _transforms.rend(); ++above)
            matrix.multLeft(*above);
        vertices(geometry, matrix);
        faces(geometry);
    }

    static UInt32 sizeOf(GeoVectorProperty const *property)
    {
        return property != nullptr ? property->size() : 0;
    }

    void vertices(Geometry const &geometry, Matrix const &matrix)
    {
        Real32 p[4] = {};
        for(UInt32 i = 0; i < sizeOf(geometry.getPositions()); ++i)
        {
            geometry.getPositions()->getValue(p, i);
            Pnt3f const at = matrix * Pnt3f(p[0], p[1], p[2]);
            scene << "v " << at[0] << " " << at[1] << " " << at[2] << "\n";
        }
        for(UInt32 i = 0; i < sizeOf(geometry.getNormals()); ++i)
        {
            geometry.getNormals()->getValue(p, i);
            Vec3f const at = matrix * Vec3f(p[0], p[1], p[2]);
            scene << "vn " << at[0] << " " << at[1] << " " << at[2] << "\n";
        }
        for(UInt32 i = 0; i < sizeOf(geometry.getTexCoords()); ++i)
        {
            geometry.getTexCoords()->getValue(p, i);
            scene << "vt " << p[0] << " " << p[1] << "\n";
        }
    }

    void faces(Geometry const &geometry)
    {
        UInt32 const normals = sizeOf(geometry.getNormals());
        UInt32 const places = sizeOf(geometry.getTexCoords());
        for(TriangleIterator it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
        {
            scene << "f";
            for(Int32 c = 0; c < 3; ++c)
            {
                scene << " " << it.getPositionIndex(c) + _position;
                if(places != 0 || normals != 0)
                    scene << "/";
                if(places != 0)
                    scene << it.getTexCoordsIndex(c) + _place;
                if(normals != 0)
                    scene << "/" << it.getNormalIndex(c) + _normal;
            }
            scene << "\n";
        }
        _position += sizeOf(geometry.getPositions());
        _normal += normals;
        _place += places;
    }

    void entry(std::string const &name, Material const *material)
    {
        library << "\nnewmtl " << name << "\n";
        if(auto const *const simple = dynamic_cast<SimpleMaterial const *>(material))
        {
            colors(simple->getAmbient(), simple->getDiffuse(), simple->getSpecular());
            numbers(simple->getTransparency(), simple->getShininess());
            if(auto const *const textured = dynamic_cast<SimpleTexturedMaterial const *>(simple))
                image(textured->getImage());
        }
        else if(auto const *const chunks = dynamic_cast<ChunkMaterial const *>(material))
        {
            for(StateChunk const *chunk : *chunks->getMFChunks())
            {
                if(auto const *const plain = dynamic_cast<MaterialChunk const *>(chunk))
                {
                    colors(plain->getAmbient(), plain->getDiffuse(), plain->getSpecular());
                    numbers(1.f - plain->getDiffuse()[3], plain->getShininess());
                }
            }
            for(StateChunk const *chunk : *chunks->getMFChunks())
            {
                if(auto const *const texture = dynamic_cast<TextureObjChunk const *>(chunk))
                    image(texture->getImage());
            }
        }
    }

    template <class Color>
    void colors(Color const &ambient, Color const &diffuse, Color const &specular)
    {
        Color const *const all[] = {&ambient, &diffuse, &specular};
        char const *const words[] = {"Ka", "Kd", "Ks"};
        for(int i = 0; i < 3; ++i)
            library << "    " << words[i] << " " << (*all[i])[0] << " " << (*all[i])[1] << " "
                    << (*all[i])[2] << "\n";
    }

    void numbers(Real32 transparency, Real32 shininess)
    {
        library << "    illum 2\n    d " << 1.0 - transparency << "\n    Ns " << shininess
                << "\n    Ni 1.000000\n";
    }

    void image(Image const *image)
    {
        if(image == nullptr || image->getName().empty())
            return;
        std::string const &name = image->getName();
        library << "    map_Kd " << name.substr(name.find_last_of('/') + 1) << "\n";
    }

    std::vector<Matrix> _transforms;
    std::vector<Material const *> _materials;
    int _overrides = 0;
    int _geometries = 0;
    UInt32 _position = 1;
    UInt32 _normal = 1;
    UInt32 _place = 1;
};
} // namespace

ObjTexts write_obj_slowly(Node *root)
{
    Writer writer;
    writer.node(root);
    return {writer.scene.str(), writer.library.str()};
}
} // namespace OSG::Test
