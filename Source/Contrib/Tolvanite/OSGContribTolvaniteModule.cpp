// The start-up of the library, from top to bottom.
//
// Every static object of the library is defined in this file, so that they are constructed in the
// order in which they stand here and end in reverse, whatever order the linker puts the sources in.
// No other source of the library has a dynamic initialiser.

// --- attachments ---
#include "OSGCommandNameAttachmentStatics.inl"

// --- scene file types ---
#include "OSGOBJLibSceneFileTypeTN.h"

namespace OSG
{
OBJSceneFileTypeTN OBJSceneFileTypeTN::_the(_suffixA, sizeof(_suffixA), true, 20,
                                            IOFileTypeBase::ReadSupported);
} // namespace OSG

// --- graph operations ---
#include "OSGGraphOpFactory.h"
#include "OSGGrpMergeGraphOp.h"
#include "OSGMrgGraphOp.h"
#include "OSGSimplifyRenderEngineGraphOp.h"
#include "OSGSystemHooks.h"

namespace OSG
{
namespace
{
// The factory keeps the prototype.
template <class Operation>
bool register_prototype()
{
    UnrecordedRefPtr<Operation> const prototype(Operation::create());
    SingletonHolder<GraphOpFactoryBase>::the()->registerOp(prototype);
    return true;
}

StaticInitFuncWrapper const register_grp_merge(&register_prototype<GrpMergeGraphOp>);
StaticInitFuncWrapper const register_mrg(&register_prototype<MrgGraphOp>);
StaticInitFuncWrapper const register_simplify(&register_prototype<SimplifyRenderEngineGraphOp>);
} // namespace
} // namespace OSG

// --- where the scene graph is up already, the types above are brought up at once ---
#include "OSGSystem.h"

namespace OSG
{
namespace
{
[[maybe_unused]] bool const late_types = (bringUpLateTypes(), true);
} // namespace
} // namespace OSG
