#include <algorithm>
#include <utility>

#include "Chunks.h"

namespace OSG::Lib3ds
{
namespace
{
constexpr unsigned short NoParent = 65535;

struct NodeKind
{
    unsigned chunk;
    Lib3dsNodeType type;
};
constexpr NodeKind NodeKinds[] = {
    {AmbientNodeChunk, LIB3DS_NODE_AMBIENT_COLOR},
    {MeshNodeChunk, LIB3DS_NODE_MESH_INSTANCE},
    {CameraNodeChunk, LIB3DS_NODE_CAMERA},
    {CameraTargetNodeChunk, LIB3DS_NODE_CAMERA_TARGET},
    {OmniLightNodeChunk, LIB3DS_NODE_OMNILIGHT},
    {SpotLightNodeChunk, LIB3DS_NODE_SPOTLIGHT},
    {SpotLightTargetNodeChunk, LIB3DS_NODE_SPOTLIGHT_TARGET},
};

void read_header(Chunk chunk, Node &node)
{
    chunk.name(node.base.name);
    unsigned const low = chunk.word();
    node.base.flags = low | unsigned(chunk.word()) << 16;
    node.parentId = chunk.word();
    node.hasHeader = true;
}

// What only a mesh instance has. False for other chunks.
bool read_instance_part(Chunk &part, Node &node)
{
    switch(part.kind())
    {
    case InstanceNameChunk:
        part.name(node.instance_name);
        return true;
    case PivotChunk:
        part.reals(node.pivot, 3);
        return true;
    case RotationTrackChunk:
        node.rotation.read(part, 4);
        return true;
    case ScaleTrackChunk:
        node.scale.read(part, 3);
        return true;
    default:
        return false;
    }
}

bool read_part(Chunk &part, Node &node)
{
    bool const isAmbient = node.base.type == LIB3DS_NODE_AMBIENT_COLOR;
    bool const isInstance = node.base.type == LIB3DS_NODE_MESH_INSTANCE;
    if(part.kind() == NodeIdChunk)
        node.base.node_id = part.word();
    else if(part.kind() == NodeHeaderChunk)
        read_header(part, node);
    else if(part.kind() == PositionTrackChunk && !isAmbient)
        node.position.read(part, 3);
    else
        return isInstance && read_instance_part(part, node);
    return true;
}

/// The trees that have been put together so far, each known by the node at its top (Galler,
/// Fischer: An improved equivalence algorithm, 1964).
class Trees
{
  public:
    /// The topmost node above `node`.
    Node *topOf(Node *node)
    {
        Node *top = node;
        for(auto above = _above.find(top); above != _above.end(); above = _above.find(top))
            top = above->second;
        while(node != top) // later searches from here are short
            node = std::exchange(_above[node], top);
        return top;
    }
    void join(Node *top, Node *parent) { _above[top] = parent; }

  private:
    Map<Node *, Node *> _above;
};

/// Appends nodes to chains of siblings.
class Chains
{
  public:
    explicit Chains(File &file)
        : _file(file)
    {
    }

    void append(Node &node, Node *parent)
    {
        Lib3dsNode *&last = _last[parent];
        if(last != nullptr)
            last->next = &node.base;
        else if(parent != nullptr)
            parent->base.childs = &node.base;
        else
            _file.nodes = &node.base;
        last = &node.base;
        node.base.parent = parent != nullptr ? &parent->base : nullptr;
    }

  private:
    File &_file;
    Map<Node *, Lib3dsNode *> _last; // by parent
};

// Parents before children, whatever the order of the file is.
void sort_by_level(File &file)
{
    auto const appendChain = [&file](Lib3dsNode *node)
    {
        for(; node != nullptr; node = node->next)
            file.nodesByLevel.push_back(&node_of(node));
    };
    file.nodesByLevel.clear();
    file.nodesByLevel.reserve(file.nodeStore.size());
    appendChain(file.nodes);
    for(std::size_t i = 0; i < file.nodesByLevel.size(); ++i)
        appendChain(file.nodesByLevel[i]->base.childs);
}
} // namespace

void read_keyframer(Chunk chunk, File &file)
{
    chunk.readChildren(
        [&file](Chunk &part)
        {
            auto const *const kind =
                std::find_if(std::begin(NodeKinds), std::end(NodeKinds),
                             [&](NodeKind const &k) { return k.chunk == part.kind(); });
            if(kind == std::end(NodeKinds))
                return false;
            std::size_t const place = file.nodeList.size();
            file.nodeList.push_back({nullptr, kind->type});
            Node &node = file.nodeAt(place);
            if(!part.readChildren([&node](Chunk &p) { return read_part(p, node); }))
                file.dropLastNode();
            return true;
        });
}

namespace
{
/// Finds the node that another one names as its parent.
class Parents
{
  public:
    explicit Parents(File &file)
        : _file(file)
    {
        for(std::size_t i = 0; i < file.nodeList.size(); ++i)
        {
            Node const *const node = file.nodeList[i].record;
            _placesById.emplace(node != nullptr ? node->base.node_id
                                                : static_cast<unsigned short>(i),
                                i); // the first of each id stays
        }
    }

    static bool has(Node const &node) { return node.hasHeader && node.parentId != NoParent; }
    /// Null where there is none of that id. Its record is made where it has none.
    Node *find(Node const &child) const
    {
        auto const found = _placesById.find(child.parentId);
        return found != _placesById.end() ? &_file.nodeAt(found->second) : nullptr;
    }

  private:
    File &_file;
    Map<unsigned short, std::size_t> _placesById;
};

// A node without a record hangs below nothing. It is needed where others hang below it or where it
// shows a mesh. The first two tell that there are nodes, and that they are several.
void make_needed_records(File &file, Parents const &parents)
{
    for(std::size_t i = 0; i < file.nodeList.size(); ++i)
    {
        Node const *const node = file.nodeList[i].record;
        if(node != nullptr && Parents::has(*node))
            parents.find(*node); // makes the record
    }
    bool const showsMesh = file.meshesByName.contains(UnnamedInstance);
    int first = 2;
    for(std::size_t i = 0; i < file.nodeList.size(); ++i)
    {
        FileNode const &node = file.nodeList[i];
        if(node.record != nullptr)
            continue;
        if(first > 0 || (showsMesh && node.type == LIB3DS_NODE_MESH_INSTANCE))
            file.nodeAt(i);
        first -= first > 0 ? 1 : 0;
    }
}
} // namespace

void link_nodes(File &file, Messages const &messages)
{
    Parents const parents(file);
    make_needed_records(file, parents);
    Trees trees;
    Chains chains(file);
    for(FileNode const &entry : file.nodeList)
    {
        if(entry.record == nullptr)
            continue;
        Node &node = *entry.record;
        Node *parent = nullptr;
        if(Parents::has(node))
        {
            parent = parents.find(node);
            if(parent == nullptr || trees.topOf(parent) == &node)
            {
                parent = nullptr;
                messages.warn("Node '" + std::string(node.base.name) +
                              "' has no usable parent and goes to the top");
            }
        }
        if(parent != nullptr)
            trees.join(&node, parent);
        chains.append(node, parent);
    }
    sort_by_level(file);
}
} // namespace OSG::Lib3ds
