#include "OSGSafeRecords3DS.h"

#include <algorithm>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include "OSGFaces3DS.h"
#include "OSGLog.h"
#include "OSGSceneFileHandler.h"
#include "OSGShownText.h"

namespace OSG
{
namespace
{
// The loader counts with 16 bits where the records do.
static_assert(std::is_same_v<decltype(Lib3dsMesh::nvertices), unsigned short>);
static_assert(std::is_same_v<decltype(Lib3dsMesh::nfaces), unsigned short>);

template <class Record>
void cut_at_null(Record *const *records, int &count)
{
    if(records == nullptr)
        count = 0;
    count = static_cast<int>(std::find(records, records + std::max(count, 0), nullptr) - records);
}

template <std::size_t N>
void end_name(char (&name)[N])
{
    name[N - 1] = '\0';
}

void make_safe(Lib3dsMaterial &material)
{
    end_name(material.name);
    for(Lib3dsTextureMap *map :
        {&material.texture1_map, &material.texture2_map, &material.bump_map})
        end_name(map->name);
}

void make_safe(Lib3dsMesh &mesh, int materials)
{
    end_name(mesh.name);
    if(mesh.vertices == nullptr)
        mesh.nvertices = 0;
    if(mesh.faces == nullptr)
        mesh.nfaces = 0;
    if(unsigned const dropped = drop_faces_without_vertices(mesh))
    {
        SceneFileHandlerBase::the()->setReadIncomplete();
        OSG_LOG_WARNING("%s\n", dropped_faces_text(shown_text(mesh.name), dropped).c_str());
    }
    for(std::size_t i = 0; i < mesh.nfaces; ++i)
    {
        if(mesh.faces[i].material >= materials)
            mesh.faces[i].material = -1;
        mesh.faces[i].material = std::max(mesh.faces[i].material, -1);
    }
}

void make_names_safe(Lib3dsNode &node)
{
    end_name(node.name);
    if(node.type == LIB3DS_NODE_MESH_INSTANCE)
        end_name(reinterpret_cast<Lib3dsMeshInstanceNode &>(node).instance_name);
}

void make_nodes_safe(Lib3dsFile &file)
{
    std::unordered_set<Lib3dsNode const *> known;
    std::vector<Lib3dsNode **> chains{&file.nodes};
    bool isTree = true;
    while(!chains.empty())
    {
        Lib3dsNode **link = chains.back();
        chains.pop_back();
        for(; *link != nullptr; link = &(*link)->next)
        {
            if(!known.insert(*link).second)
            {
                isTree = false;
                *link = nullptr;
                break;
            }
            make_names_safe(**link);
            chains.push_back(&(*link)->childs);
        }
    }
    if(isTree)
        return;
    SceneFileHandlerBase::the()->setReadIncomplete();
    OSG_LOG_WARNING("Nodes that stand at several places are kept at the first one\n");
}
} // namespace

void make_records_safe(Lib3dsFile &file)
{
    cut_at_null(file.materials, file.nmaterials);
    cut_at_null(file.meshes, file.nmeshes);
    for(int i = 0; i < file.nmaterials; ++i)
        make_safe(*file.materials[i]);
    for(int i = 0; i < file.nmeshes; ++i)
        make_safe(*file.meshes[i], file.nmaterials);
    make_nodes_safe(file);
}
} // namespace OSG
