#include "OSGOSBSceneFileType.h"

#include "OSGChangeList.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBGenericElement.h"
#include "OSGOSBReader.h"
#include "OSGOSBStreams.h"
#include "OSGOSBWriter.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
char const *Suffixes[] = {"osb"};

[[maybe_unused]] bool const NodeElement = OSBElementFactorySingleton::the()->registerElement(
    "Node", new OSBElementCreator<OSBNodeElement>);
} // namespace

OSBSceneFileType OSBSceneFileType::_the;

OSBSceneFileType::OSBSceneFileType()
    : SceneFileType(Suffixes, sizeof(Suffixes), false, 10, ReadSupported | WriteSupported)
{
}

OSBSceneFileType::~OSBSceneFileType() = default;

char const *OSBSceneFileType::getName() const { return "OSB"; }

TransitPtr<Node> OSBSceneFileType::read(std::istream &in, char const *, Resolver) const
{
    try
    {
        OSBInput handler(in);
        TransitPtr<Node> root = OSBReader(handler).read();
        Thread::getCurrentChangeList()->commitChanges(0, 0);
        return root;
    }
    catch(ExceptionBinaryDataHandler::ReadError const &error)
    {
        OSG_LOG_WARNING("OSB: no scene: %s\n", error.what());
        return nullptr;
    }
}

bool OSBSceneFileType::write(Node *node, std::ostream &out, char const *) const
{
    if(node == nullptr)
    {
        OSG_LOG_WARNING("OSB: there is no scene to write\n");
        return false;
    }
    try
    {
        OSBOutput handler(out);
        OSBWriter(handler).write(node);
        handler.finish();
        return true;
    }
    catch(ExceptionBinaryDataHandler::WriteError const &error)
    {
        OSG_LOG_WARNING("OSB: the scene could not be written: %s\n", error.what());
        return false;
    }
}
} // namespace OSG
