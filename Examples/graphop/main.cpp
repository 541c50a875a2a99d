// Registers a graph operation of its own and runs it by name, and one of the library as well.
#include <cstdio>

#include "OSGChangeList.h"
#include "OSGGraphOpFactory.h"
#include "OSGGroup.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGSystem.h"
#include "OSGThread.h"

namespace
{
using NodePtr = OSG::UnrecordedRefPtr<OSG::Node>;

NodePtr make_group(char const *name, OSG::Node *above)
{
    OSG::UnrecordedRefPtr<OSG::Group> const core(OSG::Group::create());
    NodePtr node(OSG::Node::create());
    node->setCore(core);
    OSG::setName(node, name);
    if(above != nullptr)
        above->addChild(node);
    return node;
}

NodePtr make_house()
{
    NodePtr house = make_group("house", nullptr);
    NodePtr const kitchen = make_group("kitchen", house);
    make_group("table", kitchen);
    make_group("oven", kitchen);
    make_group("empty room", house);
    return house;
}

void print(OSG::Node const *node, int indent)
{
    std::printf("%*s%s\n", indent, "", OSG::getName(node));
    for(OSG::Node const *child : *node->getMFChildren())
        print(child, indent + 2);
}

void run(char const *name, char const *params, OSG::Node *scene)
{
    OSG::UnrecordedRefPtr<OSG::GraphOp> const operation(
        OSG::GraphOpFactoryBase::the()->create(name)); // null for an unknown name
    if(operation == nullptr)
        return;
    operation->setParams(params);
    operation->traverse(scene);
    OSG::Thread::getCurrentChangeList()
        ->commitChanges(); // operations leave the commit to the caller
    std::printf("after %s:\n", name);
    print(scene, 2);
}
} // namespace

int main()
{
    OSG::startUp();
    {
        NodePtr const house = make_house();
        run("Outline", "names", house);
        run("GrpMerge", "", house);
    }
    OSG::shutDown();
}
