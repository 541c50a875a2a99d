#pragma once

#include "OSGGraphOp.h"

/// "Outline": removes all nodes that are more than one level below the root, to give an overview of
/// a deep scene. A node on the exclude list that stays keeps everything below it.
///
/// With the parameter `names`, nodes that lose children get the name "cut".
class OutlineGraphOp : public OSG::GraphOp
{
  public:
    static OSG::TransitPtr<OutlineGraphOp> create();

    OSG::TransitPtr<OSG::GraphOp> clone() override { return create(); }
    void setParams(std::string params) override;
    std::string usage() override;
    bool traverse(OSG::Node *root) override;
    ResultE traverseEnter(OSG::Node *node) override;
    ResultE traverseLeave(OSG::Node *node, ResultE result) override;

  protected:
    OutlineGraphOp();

  private:
    static constexpr int Levels = 1;

    bool _names = false;
    int _depth = 0; // of the visited node; the root has 0
};
