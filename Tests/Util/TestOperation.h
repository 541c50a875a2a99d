#pragma once

#include <functional>

#include "OSGGraphOp.h"

namespace OSG::Test
{
/// An operation as a host would write it. The test supplies what it does.
class TestOperation : public GraphOp
{
  public:
    explicit TestOperation(char const *name)
        : GraphOp(name)
    {
    }
    static TransitPtr<TestOperation> create(char const *name = "Test")
    {
        return TransitPtr<TestOperation>(new TestOperation(name));
    }

    TransitPtr<GraphOp> clone() override { return create(getName().c_str()); }
    void setParams(std::string params) override
    {
        ParamSet set(params);
        set("known", known);
        warnUnused(set, "TestOperation");
    }
    std::string usage() override { return "Test: for tests.\n"; }
    ResultE traverseEnter(Node *node) override
    {
        return enter ? enter(node) : GraphOp::traverseEnter(node);
    }
    ResultE traverseLeave(Node *node, ResultE result) override
    {
        return leave ? leave(node, result) : GraphOp::traverseLeave(node, result);
    }

    bool known = false;
    std::function<ResultE(Node *)> enter;
    std::function<ResultE(Node *, ResultE)> leave;

  protected:
    TestOperation(TestOperation const &) = default;
};
} // namespace OSG::Test
