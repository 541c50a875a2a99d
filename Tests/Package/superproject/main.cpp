// Makes a node in a program whose build includes the library's sources.
#include <cstdio>

#include "OSGNode.h"
#include "OSGSystem.h"

int main()
{
    OSG::startUp();
    {
        OSG::UnrecordedRefPtr<OSG::Node> const root(OSG::Node::create());
        root->addChild(OSG::UnrecordedRefPtr<OSG::Node>(OSG::Node::create()));
        std::printf("%u child\n", root->getNChildren());
    }
    OSG::shutDown();
}
