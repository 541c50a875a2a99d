#include "SceneRows.h"

#include <algorithm>

#include "OSGGeometry.h"
#include "OSGName.h"

namespace Viewer
{
namespace
{
OSG::Node *other_tree_of(OSG::Node const &node)
{
    return node.getCore() != nullptr ? node.getCore()->getOtherTree() : nullptr;
}

// Empty for none.
char const *name_of(OSG::Node const &node)
{
    char const *const name = OSG::getName(&node);
    char const *const found = name != nullptr ? name : OSG::getName(node.getCore());
    return found != nullptr ? found : "";
}

char const *type_of(OSG::Node const &node)
{
    OSG::NodeCore const *const core = node.getCore();
    return core != nullptr ? core->getType().getCName() : "no core";
}
} // namespace

std::string label_of(OSG::Node const &node)
{
    char const *const name = name_of(node);
    return *name != '\0' ? name : type_of(node);
}

std::string label_of(OSG::Node const &node, std::optional<OSG::UInt32> number)
{
    char const *const name = name_of(node);
    if(*name != '\0')
        return name;
    std::string label = type_of(node);
    if(number)
        label += ' ' + std::to_string(*number);
    auto const *const geometry = dynamic_cast<OSG::Geometry const *>(node.getCore());
    char const *const material =
        geometry != nullptr ? OSG::getName(geometry->getMaterial()) : nullptr;
    if(material != nullptr && *material != '\0')
        label += std::string(" (") + material + ')';
    return label;
}

std::optional<OSG::UInt32> number_of(OSG::Node const &node)
{
    OSG::Node const *const parent = node.getParent();
    OSG::Int32 const number = parent != nullptr ? parent->findChild(&node) : -1;
    return number >= 0 ? std::optional(static_cast<OSG::UInt32>(number)) : std::nullopt;
}

SceneRows::SceneRows() = default;
SceneRows::~SceneRows() = default;

void SceneRows::update(OSG::Node *scene)
{
    bool const isOther = scene != _scene.get();
    if(isOther)
    {
        _open.clear();
        _scene = scene;
        if(scene != nullptr)
            _open.insert(OSG::NodePath(scene));
    }
    if(_edits.wereEdited(_listed) || isOther)
        list();
}

// Without recursion, since files decide how deep a scene is.
void SceneRows::list()
{
    _rows.clear();
    _listed.clear();
    _ways.assign(1, Way());
    if(_scene == nullptr)
        return;
    std::vector<Row> waiting; // the next one last
    Places met;
    waiting.push_back({_scene, 0, 0});
    while(!waiting.empty())
    {
        Row row = std::move(waiting.back());
        waiting.pop_back();
        OSG::Node *const node = row.node;
        OSG::UInt32 const way = row.way;
        OSG::UInt32 const depth = row.depth;
        row.hasBelow = node->getNChildren() != 0 || other_tree_of(*node) != nullptr;
        OSG::NodePath const path = pathOf(row);
        row.isOpen = row.hasBelow && _open.contains(path);
        _listed.insert(node);
        if(row.isOpen)
            met.insert(path);
        bool const isOpen = row.isOpen;
        _rows.push_back(std::move(row));
        if(isOpen)
            listNode(node, way, depth + 1, waiting);
    }
    _open = std::move(met);
}

void SceneRows::listNode(OSG::Node *node, OSG::UInt32 way, OSG::UInt32 depth,
                         std::vector<Row> &waiting)
{
    if(OSG::Node *const other = other_tree_of(*node))
    {
        waiting.push_back({NodePtr(other), depth, static_cast<OSG::UInt32>(_ways.size())});
        _ways.push_back({node, way});
    }
    for(OSG::UInt32 i = node->getNChildren(); i-- > 0;)
        waiting.push_back({NodePtr(node->getChild(i)), depth, way, i});
}

std::vector<OSG::Node *> SceneRows::visitingOf(OSG::UInt32 way) const
{
    std::vector<OSG::Node *> visiting;
    for(; way != 0; way = _ways[way].outer)
        visiting.insert(visiting.begin(), _ways[way].visiting);
    return visiting;
}

OSG::NodePath SceneRows::pathOf(Row const &row) const
{
    return OSG::NodePath(row.node, visitingOf(row.way));
}

void SceneRows::toggle(std::size_t index)
{
    if(index >= _rows.size() || !_rows[index].hasBelow)
        return;
    OSG::NodePath const path = pathOf(_rows[index]);
    if(_open.erase(path) == 0)
        _open.insert(path);
    list();
}

// Whether one of them was closed.
bool SceneRows::openAround(OSG::NodePath const &path)
{
    std::size_t const numOpen = _open.size();
    std::vector<OSG::Node *> visiting = path.getVisiting();
    OSG::Node *node = path.getNode();
    for(;;)
    {
        for(node = node->getParent(); node != nullptr; node = node->getParent())
            _open.insert(OSG::NodePath(node, visiting));
        if(visiting.empty())
            break;
        node = visiting.back();
        visiting.pop_back();
        _open.insert(OSG::NodePath(node, visiting));
    }
    return _open.size() != numOpen;
}

std::size_t SceneRows::reveal(OSG::NodePath const &path)
{
    if(!path.isIn(_scene))
        return _rows.size();
    if(openAround(path))
        list();
    auto const found = std::find_if(_rows.begin(), _rows.end(),
                                    [&](Row const &row)
                                    { return row.node == path.getNode() && pathOf(row) == path; });
    return static_cast<std::size_t>(found - _rows.begin());
}
} // namespace Viewer
