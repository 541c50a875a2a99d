#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class NodeCore;

/// "GrpMerge": takes out nodes whose core is exactly a `Group`. What is below such a node becomes
/// children of the node above it, behind those that stay; empty groups vanish on the way. A chain
/// of groups goes in one walk, since the walk works from below.
///
/// The children of a DistanceLOD, ScreenLOD, Switch, MultiSwitch or MultiCore stay as they are:
/// their number and order mean something. Nodes without a core stay, but go with a group above them
/// that goes. Nodes on the exclude list stay with all that is below them, those on the preserve
/// list with their children. The root stays always.
///
/// Time goes with the number of nodes: a node moves once, however many groups above it go. There
/// are no parameters.
class OSG_CONTRIBTOLVANITE_API GrpMergeGraphOp : public GraphOp
{
  public:
    GrpMergeGraphOp(GrpMergeGraphOp const &source);

    static TransitPtr<GrpMergeGraphOp> create();
    static char const *getClassname() { return "GrpMergeGraphOp"; }

    TransitPtr<GraphOp> clone() override;
    void setParams(std::string params) override;
    std::string usage() override;
    /// Skip for a node on the exclude list.
    ResultE traverseEnter(Node *node) override;
    /// Continue always.
    ResultE traverseLeave(Node *node, ResultE result) override;

  protected:
    explicit GrpMergeGraphOp(char const *name);
    ~GrpMergeGraphOp() override;

  private:
    void handleChildren(Node *node, NodeCore *core);
    bool mayDissolveChildren(Node const *node) const;
    bool isDissolved(Node const *child) const;
    bool isDissolvedLater(Node const *node) const;
};
} // namespace OSG
