#include "OutlineGraphOp.h"

#include "OSGGraphOpFactory.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGSystemHooks.h"

namespace
{
// The factory keeps the prototype and returns clones of it.
bool register_outline()
{
    OSG::UnrecordedRefPtr<OutlineGraphOp> const prototype(OutlineGraphOp::create());
    OSG::GraphOpFactoryBase::the()->registerOp(prototype);
    return true;
}

// Runs when the scene graph starts.
OSG::StaticInitFuncWrapper const RegisterAtStart(&register_outline);
} // namespace

OutlineGraphOp::OutlineGraphOp()
    : GraphOp("Outline")
{
}

OSG::TransitPtr<OutlineGraphOp> OutlineGraphOp::create()
{
    return OSG::TransitPtr<OutlineGraphOp>(new OutlineGraphOp);
}

void OutlineGraphOp::setParams(std::string params)
{
    ParamSet set(params);
    set("names", _names);
    warnUnused(set, "OutlineGraphOp"); // warns about unknown words
}

std::string OutlineGraphOp::usage()
{
    return "Outline: cuts a scene below its first level\n"
           "Params: name (type, default)\n"
           "  names  (bool, false): name the nodes that were cut\n";
}

bool OutlineGraphOp::traverse(OSG::Node *root)
{
    _depth = 0;
    return GraphOp::traverse(root); // the walk, with the two functions below
}

OSG::GraphOp::ResultE OutlineGraphOp::traverseEnter(OSG::Node *node)
{
    if(isInExcludeList(node))
        return OSG::ActionBase::Skip; // traverseLeave is not called after Skip
    ++_depth;
    return OSG::ActionBase::Continue;
}

// The children have been handled, so their node may lose them.
OSG::GraphOp::ResultE OutlineGraphOp::traverseLeave(OSG::Node *node, ResultE result)
{
    --_depth;
    if(_depth < Levels || node->getNChildren() == 0)
        return result;
    while(node->getNChildren() != 0)
        node->subChild(node->getNChildren() - 1);
    if(_names)
        OSG::setName(node, "cut");
    return result;
}
