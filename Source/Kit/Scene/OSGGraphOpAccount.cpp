#include "OSGGraphOpAccount.h"

#include <chrono>
#include <unordered_map>

#include "OSGGeometry.h"
#include "OSGGraphOp.h"
#include "OSGMaterial.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGReachableNodes.h"

namespace OSG
{
namespace
{
// A weak reference: the object may be destroyed, but its address is not used for another object. An
// equal address then means the same object.
template <class T>
using PlaceHold = RefCountPtr<T, WeakRefCountPolicy>;

struct NodeLook
{
    PlaceHold<Node> node;
    Node const *parent;
    PlaceHold<NodeCore> core;
    PlaceHold<Material> material;
    bool isGeometry;
    bool hasName;
};

Material *material_of(NodeCore const *core)
{
    if(auto const *const geometry = dynamic_cast<Geometry const *>(core))
        return geometry->getMaterial();
    if(auto const *const group = dynamic_cast<MaterialGroup const *>(core))
        return group->getMaterial();
    if(auto const *const override = dynamic_cast<MaterialChunkOverrideGroup const *>(core))
        return override->getMaterial();
    return nullptr;
}

bool is_geometry(NodeCore const *core) { return dynamic_cast<Geometry const *>(core) != nullptr; }

/// Remembers the scene before an operation and compares it with the scene after.
class Comparison
{
  public:
    explicit Comparison(Node *root)
    {
        for_each_reachable_node(
            root,
            [this](Node *node)
            {
                NodeCore *const core = node->getCore();
                _before.emplace(node, NodeLook{node, node->getParent(), core, material_of(core),
                                               is_geometry(core), getName(node) != nullptr});
            });
    }

    UInt64 nodesBefore() const { return _before.size(); }

    void finish(Node *root, GraphOpAccount &account)
    {
        UInt64 kept = 0;
        for_each_reachable_node(root,
                                [&](Node *node)
                                {
                                    ++account.nodesAfter;
                                    auto const before = _before.find(node);
                                    if(before == _before.end())
                                        return;
                                    ++kept;
                                    compare(before->second, node, account);
                                });
        account.removed = _before.size() - kept;
        account.materialsReplaced = _coresWithOtherMaterial.size();
    }

  private:
    void compare(NodeLook const &before, Node *node, GraphOpAccount &account)
    {
        NodeCore *const core = node->getCore();
        bool const sameCore = core == before.core.get();
        bool const baked = !sameCore && before.isGeometry && is_geometry(core);
        account.moved += node->getParent() != before.parent ? 1 : 0;
        account.baked += baked ? 1 : 0;
        account.namesCleared += before.hasName && getName(node) == nullptr ? 1 : 0;
        if((sameCore || baked) && material_of(core) != before.material.get())
            _coresWithOtherMaterial.insert(core);
    }

    std::unordered_map<Node *, NodeLook> _before;
    std::unordered_set<NodeCore *> _coresWithOtherMaterial;
};
} // namespace

GraphOpAccount traverse_accounted(GraphOp &operation, Node *root, std::string const &params)
{
    GraphOpAccount account;
    account.name = operation.getName();
    account.params = params;
    Comparison comparison(root);
    account.nodesBefore = comparison.nodesBefore();
    auto const start = std::chrono::steady_clock::now();
    account.wentThrough = operation.traverse(root);
    account.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    comparison.finish(root, account);
    return account;
}
} // namespace OSG
