#pragma once

#include <vector>

#include "OSGGraphOp.h"
#include "OSGSingletonHolder.h"

namespace OSG
{
/// All graph operations by name. Made on first use, never destroyed; it belongs to one thread at a
/// time. The prototypes are released when the system ends.
class OSG_UTIL_API GraphOpFactoryBase
{
  public:
    using Prototypes = std::vector<UnrecordedRefPtr<GraphOp>>;

    static GraphOpFactoryBase *the();

    /// Takes a reference on `prototype`, whose name is what the operation is found by. A later one
    /// of the same name takes the place of the earlier. Null does nothing.
    void registerOp(GraphOp *prototype);
    /// A fresh operation, which the prototype of that name has cloned; null for a name that none
    /// has, and for none.
    TransitPtr<GraphOp> create(char const *name) const;
    /// In the order in which their names became known.
    Prototypes const &getPrototypes() const { return _prototypes; }

  private:
    GraphOpFactoryBase();
    ~GraphOpFactoryBase();

    Prototypes _prototypes;
};

template <>
OSG_UTIL_API GraphOpFactoryBase *SingletonHolder<GraphOpFactoryBase>::the();
} // namespace OSG
