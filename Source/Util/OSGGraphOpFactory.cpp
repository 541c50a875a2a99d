#include "OSGGraphOpFactory.h"

#include "OSGSystemHooks.h"

namespace OSG
{
GraphOpFactoryBase::GraphOpFactoryBase()
{
    addPostFactoryExitFunction(
        [this]
        {
            Prototypes().swap(_prototypes);
            return true;
        });
}

GraphOpFactoryBase::~GraphOpFactoryBase() = default;

GraphOpFactoryBase *GraphOpFactoryBase::the()
{
    static GraphOpFactoryBase *const factory = new GraphOpFactoryBase;
    return factory;
}

template <>
GraphOpFactoryBase *SingletonHolder<GraphOpFactoryBase>::the()
{
    return GraphOpFactoryBase::the();
}

void GraphOpFactoryBase::registerOp(GraphOp *prototype)
{
    if(prototype == nullptr)
        return;
    for(UnrecordedRefPtr<GraphOp> &known : _prototypes)
    {
        if(known->getName() != prototype->getName())
            continue;
        known = prototype;
        return;
    }
    _prototypes.emplace_back(prototype);
}

TransitPtr<GraphOp> GraphOpFactoryBase::create(char const *name) const
{
    for(UnrecordedRefPtr<GraphOp> const &prototype : _prototypes)
    {
        if(name != nullptr && prototype->getName() == name)
            return prototype->clone();
    }
    return nullptr;
}
} // namespace OSG
