#pragma once

#include "OSGGraphOp.h"

/// "Outline": takes away what is more than one level below the root, so that a deep scene can be
/// looked at from afar. A node on the exclude list keeps what is below it, if it stays itself.
///
/// With the parameter `names` the nodes that lose children are named "cut".
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
    int _depth = 0; // of the node that is walked; the root's is 0
};
