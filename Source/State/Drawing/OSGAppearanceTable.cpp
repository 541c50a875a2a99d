#include "OSGAppearanceTable.h"

#include <atomic>

#include "OSGLog.h"

namespace OSG
{
namespace
{
UInt64 next_number()
{
    static constinit std::atomic<UInt64> last = 0;
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}
} // namespace

AppearanceTable::AppearanceTable()
    : _number(next_number())
{
}

void AppearanceTable::note() { _number = next_number(); }

AppearanceTable::Row AppearanceTable::rowOf(NodePath const &path) const
{
    auto const known = _rows.find(path);
    return known != _rows.end() ? known->second : Row();
}

void AppearanceTable::put(NodePath const &path, Row const &row)
{
    Node const *const node = path.getNode();
    if(node == nullptr)
    {
        OSG_LOG_WARNING("AppearanceTable: a path of no node has no appearance\n");
        return;
    }
    if(rowOf(path) == row)
        return;
    if(row.appearance().saysAnything())
    {
        UInt32 &numRows = _numRowsOfNode[node];
        if(_rows.insert_or_assign(path, row).second)
            ++numRows;
    }
    else
    {
        auto const numRows = _numRowsOfNode.find(node);
        if(--numRows->second == 0)
            _numRowsOfNode.erase(numRows);
        _rows.erase(path);
    }
    note();
}

void AppearanceTable::set(NodePath const &path, Material *material)
{
    Row row = rowOf(path);
    row.material = material;
    put(path, row);
}

void AppearanceTable::hide(NodePath const &path)
{
    Row row = rowOf(path);
    row.isHidden = true;
    put(path, row);
}

void AppearanceTable::show(NodePath const &path)
{
    Row row = rowOf(path);
    row.isHidden = false;
    put(path, row);
}

void AppearanceTable::erase(NodePath const &path)
{
    Row row;
    row.isIsolated = isIsolated(path);
    put(path, row);
}

void AppearanceTable::clear()
{
    _rows.clear();
    _numRowsOfNode.clear();
    _isIsolating = false;
    note();
}

// --- isolation ---

void AppearanceTable::isolate(std::vector<NodePath> const &paths)
{
    endIsolation();
    _isIsolating = true;
    note();
    for(NodePath const &path : paths)
    {
        Row row = rowOf(path);
        row.isIsolated = true;
        put(path, row);
    }
}

void AppearanceTable::endIsolation()
{
    if(!_isIsolating)
        return;
    _isIsolating = false;
    note();
    std::vector<NodePath> isolated;
    for(auto const &[path, row] : _rows)
    {
        if(row.isIsolated)
            isolated.push_back(path);
    }
    for(NodePath const &path : isolated)
    {
        Row row = rowOf(path);
        row.isIsolated = false;
        put(path, row);
    }
}

// --- questions ---

bool AppearanceTable::isDrawn(Node *node, std::vector<Node *> const &visiting,
                              Node const *root) const
{
    if(isEmpty())
        return true;
    Appearance result;
    for(std::vector<Node *> around = visiting;; around.pop_back())
    {
        Node const *const top = around.empty() ? root : around.back()->getCore()->getOtherTree();
        for(; node != nullptr; node = node == top ? nullptr : node->getParent())
            result = find(node, around).with(result);
        if(around.empty())
            return isDrawn(result);
        node = around.back();
    }
}

Material *AppearanceTable::getMaterial(NodePath const &path) const
{
    return rowOf(path).material.get();
}

bool AppearanceTable::isHidden(NodePath const &path) const { return rowOf(path).isHidden; }
bool AppearanceTable::isIsolated(NodePath const &path) const { return rowOf(path).isIsolated; }

// A path counts references: it is made only where a row may be found.
Appearance AppearanceTable::find(Node *node, std::vector<Node *> const &visiting) const
{
    if(_numRowsOfNode.find(node) == _numRowsOfNode.end())
        return {};
    auto const known = _rows.find(NodePath(node, visiting));
    return known != _rows.end() ? known->second.appearance() : Appearance();
}
} // namespace OSG
