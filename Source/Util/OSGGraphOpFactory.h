#pragma once

#include <vector>

#include "OSGGraphOp.h"
#include "OSGSingletonHolder.h"

namespace OSG
{
/// All graph operations by name. The factory is made on first use and never destroyed. Only one
/// thread at a time may use it. The prototypes are released when the system ends.
class OSG_UTIL_API GraphOpFactoryBase
{
  public:
    using Prototypes = std::vector<UnrecordedRefPtr<GraphOp>>;

    static GraphOpFactoryBase *the();

    /// Registers `prototype` under its name and holds a reference to it. It replaces an earlier
    /// prototype of the same name. Null does nothing.
    void registerOp(GraphOp *prototype);
    /// A new operation, cloned from the prototype of that name. Null for an unknown or null name.
    TransitPtr<GraphOp> create(char const *name) const;
    /// The prototypes in the order in which their names were first registered.
    Prototypes const &getPrototypes() const { return _prototypes; }

  private:
    GraphOpFactoryBase();
    ~GraphOpFactoryBase();

    Prototypes _prototypes;
};

template <>
OSG_UTIL_API GraphOpFactoryBase *SingletonHolder<GraphOpFactoryBase>::the();
} // namespace OSG
