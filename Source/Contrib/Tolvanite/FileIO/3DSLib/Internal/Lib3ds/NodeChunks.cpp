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
            Node &node = file.nodeStore.emplace_back(
                kind->type, static_cast<unsigned short>(file.nodeStore.size()));
            part.readChildren([&node](Chunk &p) { return read_part(p, node); });
            return true;
        });
}

void link_nodes(File &file, Messages const &messages)
{
    Map<unsigned short, Node *> nodesById; // the first of each id
    for(Node &node : file.nodeStore)
        nodesById.emplace(node.base.node_id, &node);
    Trees trees;
    Chains chains(file);
    for(Node &node : file.nodeStore)
    {
        Node *parent = nullptr;
        if(node.hasHeader && node.parentId != NoParent)
        {
            auto const found = nodesById.find(node.parentId);
            if(found != nodesById.end() && trees.topOf(found->second) != &node)
                parent = found->second;
            else
                messages.warn("Node '" + std::string(node.base.name) +
                              "' has no usable parent and goes to the top");
        }
        if(parent != nullptr)
            trees.join(&node, parent);
        chains.append(node, parent);
    }
    sort_by_level(file);
}
} // namespace OSG::Lib3ds
