#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class ChildEdits;
class NodeCore;

/// "SimplifyRenderEngine": reduces a scene to what rendering without interaction needs.
///
/// It removes the names of nodes. It goes through the children of each node in order and applies to
/// each child the first rule that fits:
///
///   Switch          The child is replaced by a new group with the chosen child. AllChildren gives
///                   all children in reverse order, NoChild gives no group.
///   MultiSwitch     Likewise with its choices, the last one first. A chosen child that is a
///                   GroupingStage is removed. A mode that is neither ShowAll nor ShowChoices gives
///                   no group. A child that is taken leaves the list of children, so choices that
///                   are not ascending take other children than they name.
///   a material      of a MaterialGroup, MaterialChunkOverrideGroup or Geometry. A SwitchMaterial
///                   is replaced by the material that it chooses (one level of them). If the
///                   material is then a ChunkMaterial without chunks, a new group replaces the
///                   core. The child stays.
///   Geometry        without a material: removed unless it has types and lengths, of the same
///                   number, which is not 0.
///   Group           and what derives from it: removed if it has no children, unless it is a
///                   VisitSubTree or a child of a Switch or MultiSwitch, where its place counts.
///
/// New groups come behind the children that stay. They have no names and no attachments. A node on
/// the exclude list stays unchanged with everything below it. A node on the preserve list keeps its
/// place and core, but not its name. The root and nodes without a core always stay.
///
/// A choice beyond the children of a Switch or MultiSwitch, or beyond the materials of a
/// SwitchMaterial, takes nothing. Nested switches move choices, because the operation works from
/// below: where an inner switch gives no group, the children behind it have lower indices when the
/// outer switch is resolved.
///
/// The time is linear in the number of nodes. There are no parameters.
class OSG_CONTRIBTOLVANITE_API SimplifyRenderEngineGraphOp : public GraphOp
{
  public:
    SimplifyRenderEngineGraphOp(SimplifyRenderEngineGraphOp const &source);

    static TransitPtr<SimplifyRenderEngineGraphOp> create();
    static char const *getClassname() { return "SimplifyRenderEngineGraphOp"; }

    TransitPtr<GraphOp> clone() override;
    void setParams(std::string params) override;
    std::string usage() override;
    /// Removes the name of the node and returns Continue. A node on the exclude list keeps its
    /// name, and the result is Skip.
    ResultE traverseEnter(Node *node) override;
    /// Skip for a node on the exclude list, otherwise Continue.
    ResultE traverseLeave(Node *node, ResultE result) override;

  protected:
    explicit SimplifyRenderEngineGraphOp(char const *name);
    ~SimplifyRenderEngineGraphOp() override;

  private:
    static void handleChild(Node *child, NodeCore const *coreAbove, ChildEdits &edits);
};
} // namespace OSG
