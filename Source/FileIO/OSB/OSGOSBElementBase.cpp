#include "OSGOSBElementBase.h"

namespace OSG
{
OSBElementBase::OSBElementBase(OSBRootElement *root, UInt16 version)
    : _root(root)
    , _version(version)
{
}

OSBElementBase::~OSBElementBase() = default;
} // namespace OSG
