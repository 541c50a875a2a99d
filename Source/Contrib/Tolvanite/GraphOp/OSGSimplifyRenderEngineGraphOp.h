#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class ChildEdits;
class NodeCore;

/// "SimplifyRenderEngine": strips a scene down for rendering without interaction.
///
/// Names of nodes go. The children of each node are looked at in their order, and the first rule
/// that fits is applied to a child:
///
///   Switch          A new group with the chosen child takes its place, behind the children that
///                   stay; all children come in reverse order; no child leaves nothing.
///   MultiSwitch     Likewise, the last choice first, without those that are a GroupingStage. A mode
///                   that shows neither all children nor choices leaves nothing. The children close
///                   up as they are taken, so that choices that are not ascending take others than
///                   they name.
///   a material      of a MaterialGroup, MaterialChunkOverrideGroup or Geometry: the chosen one in
///                   place of a SwitchMaterial (one level of them); where it is then a
///                   ChunkMaterial without chunks, a new group in place of the core. The child
///                   stays.
///   Geometry        without material: goes unless it has types and lengths, as many of the one as
///                   of the other and not none.
///   Group           and what derives from it: goes if it has no children, unless it is a
///                   VisitSubTree or stands below a Switch or MultiSwitch, where its place counts.
///
/// The new groups have neither name nor attachments. Nodes on the exclude list stay as they are
/// with all that is below them; those on the preserve list keep place and core, not their name.
/// The root stays always, and so do nodes without a core.
///
/// A choice beyond the children of a Switch or MultiSwitch, or beyond the materials of a
/// SwitchMaterial, takes nothing. The operation works from below, so that nested switches move
/// choices: a switch that is resolved to nothing leaves the children of the switch above it, and
/// those behind it count one less by then. A new group comes behind the children that stay.
///
/// Time goes with the number of nodes. There are no parameters.
class OSG_CONTRIBTOLVANITE_API SimplifyRenderEngineGraphOp : public GraphOp
{
  public:
    SimplifyRenderEngineGraphOp(SimplifyRenderEngineGraphOp const &source);

    static TransitPtr<SimplifyRenderEngineGraphOp> create();
    static char const *getClassname() { return "SimplifyRenderEngineGraphOp"; }

    TransitPtr<GraphOp> clone() override;
    void setParams(std::string params) override;
    std::string usage() override;
    /// Clears the name; Skip for a node on the exclude list, which keeps it.
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
