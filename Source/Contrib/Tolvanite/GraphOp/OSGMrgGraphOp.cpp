#include "OSGMrgGraphOp.h"

#include "OSGCoreKind.h"
#include "OSGLight.h"
#include "OSGLog.h"
#include "OSGMrgLevels.h"
#include "OSGTraverse.h"

namespace OSG
{
namespace
{
constexpr char const *OperationName = "Mrg";

UInt32 count_nodes(Node *root)
{
    UInt32 count = 0;
    traverse(root,
             [&count](Node *)
             {
                 ++count;
                 return ActionBase::Continue;
             });
    return count;
}

/// Replaces the caller's exclude list by an empty one while it lives.
class ListSetAside
{
  public:
    explicit ListSetAside(NodeSet &list)
        : _list(list)
    {
        _list.swap(_aside);
    }
    ListSetAside(ListSetAside const &) = delete;
    ListSetAside &operator=(ListSetAside const &) = delete;
    ~ListSetAside() { _list.swap(_aside); }

  private:
    NodeSet &_list;
    NodeSet _aside;
};
} // namespace

// The interface leaves the first flag undefined until it is set. It is set here, so that results do
// not depend on the memory.
MrgGraphOp::MrgGraphOp(char const *name)
    : GraphOp(name)
    , _colorIsVector(false)
    , _secondaryColorIsVector(false)
    , _texCoord0IsVector(false)
    , _texCoord1IsVector(false)
    , _texCoord2IsVector(false)
    , _texCoord3IsVector(false)
{
}

MrgGraphOp::MrgGraphOp(MrgGraphOp const &source)
    : GraphOp(source)
    , _colorIsVector(source._colorIsVector)
    , _secondaryColorIsVector(source._secondaryColorIsVector)
    , _texCoord0IsVector(source._texCoord0IsVector)
    , _texCoord1IsVector(source._texCoord1IsVector)
    , _texCoord2IsVector(source._texCoord2IsVector)
    , _texCoord3IsVector(source._texCoord3IsVector)
{
}

MrgGraphOp::~MrgGraphOp() = default;

TransitPtr<MrgGraphOp> MrgGraphOp::create()
{
    return TransitPtr<MrgGraphOp>(new MrgGraphOp(OperationName));
}

TransitPtr<GraphOp> MrgGraphOp::clone() { return create(); }

void MrgGraphOp::setParams(std::string params)
{
    ParamSet set(params);
    set("color_is_vector", _colorIsVector);
    set("secondary_color_is_vector", _secondaryColorIsVector);
    set("texcoord_is_vector", _texCoord0IsVector);
    set("texcoord0_is_vector", _texCoord0IsVector);
    set("texcoord1_is_vector", _texCoord1IsVector);
    set("texcoord2_is_vector", _texCoord2IsVector);
    set("texcoord3_is_vector", _texCoord3IsVector);
    warnUnused(set, getClassname());
}

std::string MrgGraphOp::usage()
{
    return "Merge: merge all geometries in a subtree\n"
           "  Tries to merge all Geometries in a subtree into the minimal number.\n"
           "  of Nodes. Flattens Transformations and transforms indices on the way.\n"
           "Params: name (type, default)\n"
           " (The following params are useful for transforming tangent space vectors.)\n"
           "  color_is_vector  (bool, false): transform color as if it were a normal\n"
           "  secondary_color_is_vector  (bool, false): transform secondary color as if it were a "
           "normal\n"
           "  texcoord_is_vector  (bool, false): transform texcoord0 as if it were a normal\n"
           "  texcoord0_is_vector  (bool, false): transform texcoord0 as if it were a normal\n"
           "  texcoord1_is_vector  (bool, false): transform texcoord1 as if it were a normal\n"
           "  texcoord2_is_vector  (bool, false): transform texcoord2 as if it were a normal\n"
           "  texcoord3_is_vector  (bool, false): transform texcoord3 as if it were a normal\n";
}

// --- passes ---

bool MrgGraphOp::traverse(Node *root)
{
    // The levels describe the scene during this call only; the host may edit it afterwards.
    struct Forget
    {
        std::unique_ptr<MrgLevels> &levels;
        ~Forget() { levels.reset(); }
    } const forget{_levels};
    UInt32 count = count_nodes(root);
    OSG_LOG_PROGRESS("MrgGraphOp::traverse: Number of nodes before merge: %u\n", count);
    UInt32 last = 0;
    bool wentThrough = true;
    // A transform that has gone may leave its parent a group that can dissolve now, so passes
    // repeat until one changes nothing. Each pass but the last removes a node, so the loop ends.
    do
    {
        last = count;
        wentThrough = mergeOnce(root);
        if(wentThrough)
            count = count_nodes(root);
    } while(wentThrough && count < last);
    OSG_LOG_PROGRESS("MrgGraphOp::traverse: Number of nodes after merge: %u\n", last);
    return wentThrough;
}

bool MrgGraphOp::mergeOnce(Node *root)
{
    ListSetAside const caller(_excludeList);
    makeExcludeList(root);
    return GraphOp::traverse(root);
}

void MrgGraphOp::makeExcludeList(Node *root)
{
    OSG::traverse(root, &MrgGraphOp::excludeListEnter,
                  [this](Node *node, ResultE result) { return excludeListLeave(node, result); });
}

GraphOp::ResultE MrgGraphOp::excludeListEnter(Node *) { return ActionBase::Continue; }

GraphOp::ResultE MrgGraphOp::excludeListLeave(Node *node, ResultE result)
{
    if(core_derives_from<Light>(node))
    {
        addToExcludeList(node);
        addToExcludeList(static_cast<Light *>(node->getCore())->getBeacon());
    }
    return result;
}

GraphOp::ResultE MrgGraphOp::traverseEnter(Node *node)
{
    if(node == getWalkedRoot())
    {
        if(_levels == nullptr)
            _levels.reset(makeLevels());
        _levels->begin();
    }
    return MrgLevels::isLeft(node) || node->getNChildren() == 0 ? ActionBase::Skip
                                                                : ActionBase::Continue;
}

GraphOp::ResultE MrgGraphOp::traverseLeave(Node *node, ResultE result)
{
    if(getWalkedRoot() == nullptr)
        std::unique_ptr<MrgLevels>(makeLevels())->process(node);
    else if(node != getWalkedRoot() && _levels->isLevel(node))
        _levels->note(node); // the node above takes its children up
    else
        _levels->process(node);
    return result;
}

MrgLevels *MrgGraphOp::makeLevels() const
{
    return new MrgLevels(_excludeList, {_colorIsVector,
                                        _secondaryColorIsVector,
                                        {_texCoord0IsVector, _texCoord1IsVector, _texCoord2IsVector,
                                         _texCoord3IsVector}});
}
} // namespace OSG
