#include "OSGOSBReader.h"

#include <algorithm>

#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"
#include "OSGSceneFileHandler.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
} // namespace

OSBReader::OSBReader(ExceptionBinaryDataHandler &handler)
    : _root(handler)
{
}

OSBReader::~OSBReader() = default;

TransitPtr<Node> OSBReader::read()
{
    readHeader();
    readRecords();
    auto *const scene = dynamic_cast<Node *>(_containers.find(1));
    if(scene == nullptr)
        throw ReadError("its first container is no node");
    for(auto const &element : _elements)
        element->postRead();
    checkPointers();
    checkTree();
    setPointers();
    return TransitPtr<Node>(scene);
}

void OSBReader::readHeader()
{
    UInt8 signature[sizeof(OSBFormat::signature)];
    UInt16 version = 0;
    _root.getHandler().get(signature, sizeof(signature));
    if(!std::equal(signature, signature + sizeof(signature), OSBFormat::signature))
        throw ReadError("it does not begin as an OSB file");
    _root.getHandler().getValue(version);
    if(version != OSBElementBase::OSGOSBHeaderVersion200)
        throw ReadError("it has another version");
}

void OSBReader::readRecords()
{
    std::string typeName;
    for(_root.getHandler().getValue(typeName); !typeName.empty();
        _root.getHandler().getValue(typeName))
    {
        std::unique_ptr<OSBElementBase> element =
            OSBElementFactory::the()->createElement(typeName, &_root);
        if(element == nullptr)
        {
            OSG_LOG_WARNING("OSB: there is no container type '%.100s'\n", typeName.c_str());
            throw ReadError("a container type is unknown");
        }
        element->read(typeName);
        _elements.push_back(std::move(element));
        _containers.add(numContainers(), _elements.back()->getContainer());
        SceneFileHandlerBase::the()->updateReadProgress();
    }
}

void OSBReader::checkPointers() const
{
    for(OSBRootElement::PointerField const &pointers : _root.getPointerFields())
    {
        auto const &type =
            static_cast<PointerType const &>(pointers.field->getFieldType().getContentType());
        for(UInt32 const number : pointers.targets)
        {
            if(number == 0)
                continue;
            FieldContainer const *const target = _containers.find(number);
            if(target == nullptr)
                throw ReadError("a pointer leads out of the file");
            if(!target->getType().isDerivedFrom(type.getPointedTo()))
                throw ReadError("a pointer leads to a container of another kind");
        }
    }
}

// A node has one parent, the scene has none, and nobody is its own ancestor.
void OSBReader::checkTree() const
{
    std::vector<UInt32> parents(numContainers() + 1, 0);
    UInt32 owner = 1;
    for(OSBRootElement::PointerField const &pointers : _root.getPointerFields())
    {
        // Pointer fields lie in the order of their containers.
        while(_elements[owner - 1]->getContainer() != pointers.container)
            ++owner;
        bool const isChildren = pointers.field->getFieldId() == Node::ChildrenFieldId &&
                                pointers.container->getType().isDerivedFrom(Node::getClassType());
        for(std::size_t i = 0; isChildren && i < pointers.targets.size(); ++i)
        {
            UInt32 &parent = parents[pointers.targets[i]];
            if(parent != 0 || pointers.targets[i] == 1)
                throw ReadError("a node has two parents");
            if(pointers.targets[i] != 0)
                parent = owner;
        }
    }
    std::vector<UInt32> lastVisitor(parents.size(), 0);
    for(UInt32 visitor = 1; visitor < parents.size(); ++visitor)
    {
        UInt32 at = visitor;
        for(; at != 0 && lastVisitor[at] == 0; at = parents[at])
            lastVisitor[at] = visitor;
        if(at != 0 && lastVisitor[at] == visitor)
            throw ReadError("a node is its own ancestor");
    }
}

void OSBReader::setPointers()
{
    // From the last to the first: a child then comes to a node that has no parent yet, so that
    // looking for cycles along the ancestors costs nothing.
    for(auto element = _elements.rbegin(); element != _elements.rend(); ++element)
        (*element)->postMap();
}
} // namespace OSG
