#include "OSGHelper3DS.h"

#include <istream>
#include <vector>

#include "OSGBytesIo3DS.h"
#include "OSGChangeList.h"
#include "OSGLog.h"
#include "OSGMaterials3DS.h"
#include "OSGMatrix3DS.h"
#include "OSGMeshes3DS.h"
#include "OSGName.h"
#include "OSGSafeRecords3DS.h"
#include "OSGSceneFileHandler.h"
#include "OSGShownText.h"
#include "OSGThread.h"

namespace OSG
{
// --- the stream ---

namespace
{
std::istream &stream_of(void *self) { return *static_cast<std::istream *>(self); }

long seek_stream(void *self, long offset, Lib3dsIoSeek origin)
{
    std::ios::seekdir const from = origin == LIB3DS_SEEK_CUR   ? std::ios::cur
                                   : origin == LIB3DS_SEEK_END ? std::ios::end
                                                               : std::ios::beg;
    std::istream &in = stream_of(self);
    in.seekg(offset, from);
    return in.fail() ? -1 : 0;
}

long tell_stream(void *self) { return static_cast<long>(stream_of(self).tellg()); }

std::size_t read_stream(void *self, void *buffer, std::size_t size)
{
    std::istream &in = stream_of(self);
    in.read(static_cast<char *>(buffer), static_cast<std::streamsize>(size));
    SceneFileHandlerBase::the()->updateReadProgress();
    return static_cast<std::size_t>(in.gcount());
}

void fileio_log_func(void *, Lib3dsLogLevel level, int, char const *text)
{
    switch(level)
    {
    case LIB3DS_LOG_ERROR:
        OSG_LOG_FATAL("%s\n", shown_text(text).c_str());
        break;
    case LIB3DS_LOG_WARN:
        // An installed library also warns of chunks that nobody needs.
        if(!HasInstalledLib3ds)
            SceneFileHandlerBase::the()->setReadIncomplete();
        OSG_LOG_WARNING("%s\n", shown_text(text).c_str());
        break;
    case LIB3DS_LOG_INFO:
        OSG_LOG_PROGRESS("%s\n", shown_text(text).c_str());
        break;
    case LIB3DS_LOG_DEBUG:
        OSG_LOG(LOG_DUMP, "%s\n", shown_text(text).c_str());
        break;
    }
}

// No exception may pass through a library in C.
void log_without_raising(void *self, Lib3dsLogLevel level, int indent, char const *text)
{
    try
    {
        fileio_log_func(self, level, indent, text);
    }
    catch(...)
    {
    }
}
} // namespace

// --- the read ---

Helper3DS::Helper3DS(std::istream &in)
    : file(lib3ds_file_new())
    , io()
{
    io.self = &in;
    io.seek_func = &seek_stream;
    io.tell_func = &tell_stream;
    io.read_func = &read_stream;
    // Without this function an installed library goes on after an error.
    io.log_func = HasInstalledLib3ds ? &log_without_raising : &fileio_log_func;
}

Helper3DS::~Helper3DS() { lib3ds_file_free(file); }

TransitPtr<Node> Helper3DS::operator()()
{
    if(file == nullptr || !readFile())
    {
        OSG_LOG_WARNING("Couldn't read from stream!\n");
        return nullptr;
    }
    NodePtr const root = convertFile();
    Thread::getCurrentChangeList()->commitChanges(0, 0);
    return TransitPtr<Node>(root);
}

bool Helper3DS::readFile()
{
    if constexpr(!HasInstalledLib3ds)
        return lib3ds_file_read(file, &io) != 0;
    BytesIo3DS bytes(stream_of(io.self));
    bytes.connect(io);
    if(lib3ds_file_read(file, &io) == 0)
        return false;
    if(bytes.hasEndedEarly())
    {
        SceneFileHandlerBase::the()->setReadIncomplete();
        OSG_LOG_WARNING("The file ends before its last chunk does\n");
    }
    make_records_safe(*file);
    return true;
}

Helper3DS::NodePtr Helper3DS::convertFile()
{
    Meshes3DS meshes(*file);
    if(!announceMeshes(meshes))
        return nullptr;
    lib3ds_file_eval(file, 0.f);
    convertMaterials(meshes);
    return file->nodes == nullptr ? convertMeshes(meshes) : convertNodes(meshes);
}

// A material that nobody shows is only asked for its pictures, so that the log names those that are
// missing.
void Helper3DS::convertMaterials(Meshes3DS &meshes) const
{
    for(UInt32 i = 0; i < static_cast<UInt32>(file->nmaterials); ++i)
    {
        Lib3dsMaterial const &source = *file->materials[i];
        if(!meshes.usesMaterial(i) && !names_pictures(source))
            continue;
        UnrecordedRefPtr<ChunkMaterial> const material(convert_material(source));
        if(meshes.usesMaterial(i))
            meshes.setMaterial(i, material);
    }
}

// --- the size of the scene ---

namespace
{
/// Calls `look` for each node of the file.
template <class Look>
void for_each_node(Lib3dsFile const &file, Look const &look)
{
    std::vector<Lib3dsNode *> chains{file.nodes};
    while(!chains.empty())
    {
        Lib3dsNode *node = chains.back();
        chains.pop_back();
        for(; node != nullptr; node = node->next)
        {
            look(node);
            if(node->childs != nullptr)
                chains.push_back(node->childs);
        }
    }
}
} // namespace

// False, with a warning, where the scene would be too large: a small file may show large meshes
// very often.
bool Helper3DS::announceMeshes(Meshes3DS &meshes) const
{
    constexpr UInt64 MostNodes = 4000000;
    constexpr UInt64 MostFaces = 20000000;
    UInt64 nodes = 1;
    UInt64 faces = 0;
    auto const show = [&](Lib3dsMesh const *mesh)
    {
        nodes += mesh != nullptr ? meshes.announce(mesh) : 0;
        faces += mesh != nullptr ? mesh->nfaces : 0;
    };
    for(int i = 0; file->nodes == nullptr && i < file->nmeshes; ++i)
        show(file->meshes[i]);
    for_each_node(*file,
                  [&](Lib3dsNode *node)
                  {
                      nodes += node->childs != nullptr ? 1 : 0;
                      show(lib3ds_file_mesh_for_node(file, node));
                  });
    if(nodes <= MostNodes && faces <= MostFaces)
        return true;
    OSG_LOG_WARNING("The file would give %llu nodes and %llu faces, which is too many!\n",
                    static_cast<unsigned long long>(nodes), static_cast<unsigned long long>(faces));
    return false;
}

// --- the tree ---

namespace
{
// Numbers that differ by no more than this are the same.
constexpr Real32 SameEpsilon = 1e-6f;

Lib3dsMeshInstanceNode const *as_instance(Lib3dsNode const *node)
{
    return node->type == LIB3DS_NODE_MESH_INSTANCE
               ? reinterpret_cast<Lib3dsMeshInstanceNode const *>(node)
               : nullptr;
}

/// Zero where the pivot has a component that is NaN or none that counts.
Vec3f pivot_of(Lib3dsMeshInstanceNode const &node)
{
    Vec3f const pivot(node.pivot[0], node.pivot[1], node.pivot[2]);
    bool const isNumber = pivot == pivot;
    return isNumber && !pivot.equals(Vec3f(), SameEpsilon) ? pivot : Vec3f();
}

/// A mesh that a node shows, and where.
struct ShownMesh
{
    Lib3dsMesh *mesh;
    Matrix place; ///< of the vertices in the file

    UnrecordedRefPtr<Node> convert(Meshes3DS &meshes) const
    {
        bool const stays = place.equals(Matrix(), SameEpsilon);
        return meshes.convert(mesh, stays ? nullptr : &place);
    }
};

// The vertices in the file are in world space. The inverse of the mesh's matrix takes them to the
// mesh's own space, and the node's matrix to their place at the frame.
ShownMesh mesh_shown_by(Lib3dsFile *file, Lib3dsNode *node)
{
    ShownMesh shown{lib3ds_file_mesh_for_node(file, node), Matrix()};
    if(shown.mesh == nullptr)
        return shown;
    Matrix toMesh;
    toMesh.invertFrom(as_matrix(shown.mesh->matrix));
    shown.place = as_matrix(matrix_of(*node));
    Vec3f const pivot = pivot_of(*as_instance(node));
    if(pivot != Vec3f())
    {
        Matrix fromPivot;
        fromPivot.setTranslate(-pivot[0], -pivot[1], -pivot[2]);
        shown.place.mult(fromPivot);
    }
    shown.place.mult(toMesh);
    return shown;
}

char const *name_of(Lib3dsNode const *node)
{
    Lib3dsMeshInstanceNode const *const instance = as_instance(node);
    return instance != nullptr ? instance->instance_name : node->name;
}

/// A chain of nodes that is being converted.
struct OpenChain
{
    Lib3dsNode *next;
    UnrecordedRefPtr<Node> parent; ///< null for a root of its own
    ShownMesh own;                 ///< what the parent itself shows: its last child
};
} // namespace

Helper3DS::NodePtr Helper3DS::convertMeshes(Meshes3DS &meshes) const
{
    NodePtr root = make_group_node();
    for(int i = 0; i < file->nmeshes; ++i)
        root->addChild(meshes.convert(file->meshes[i], nullptr));
    return root;
}

// A node without children gives only its mesh; one that shows none gives nothing.
Helper3DS::NodePtr Helper3DS::convertNodes(Meshes3DS &meshes) const
{
    NodePtr root;
    if(file->nodes->next != nullptr)
        root = make_group_node();
    auto const add = [&root](NodePtr const &parent, NodePtr const &node)
    {
        if(parent != nullptr)
            parent->addChild(node);
        else
            root = node;
    };
    std::vector<OpenChain> chains;
    chains.push_back({file->nodes, root, {nullptr, Matrix()}});
    while(!chains.empty())
    {
        OpenChain &chain = chains.back();
        Lib3dsNode *const node = chain.next;
        if(node == nullptr)
        {
            if(chain.own.mesh != nullptr)
                add(chain.parent, chain.own.convert(meshes));
            chains.pop_back();
            continue;
        }
        chain.next = node->next;
        ShownMesh const shown = mesh_shown_by(file, node);
        if(node->childs == nullptr)
        {
            if(shown.mesh != nullptr)
                add(chain.parent, shown.convert(meshes));
            continue;
        }
        NodePtr const group = make_group_node();
        setName(group, name_of(node));
        add(chain.parent, group);
        chains.push_back({node->childs, group, shown});
    }
    return root;
}
} // namespace OSG
