#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class NodeCore;

/// "GrpMerge": removes nodes whose core is exactly a `Group`. The children of such a node become
/// children of the node above it, behind the children that stay. Empty groups disappear. One walk
/// removes a whole chain of groups.
///
/// The children of a DistanceLOD, ScreenLOD, Switch, MultiSwitch or MultiCore stay, because their
/// number and order have a meaning. A node without a core stays, unless it is below a group that is
/// removed: then it is lost with the group. A node on the exclude list stays with everything below
/// it. A node on the preserve list stays with its children. The root always stays.
///
/// The time is linear in the number of nodes: a node moves once, however many groups above it are
/// removed. There are no parameters.
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
    /// Always Continue.
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
