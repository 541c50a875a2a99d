// The start-up of the library, from top to bottom.
//
// Every static object of the library is defined in this file, so that they are constructed in the
// order in which they stand here and end in reverse, whatever order the linker puts the sources in.
// No other source of the library has a dynamic initialiser.

// --- attachments ---
#include "OSGCommandNameAttachmentStatics.inl"
#include "OSGForeignFileAttachmentStatics.inl"
#include "OSGGeoToEntityAttachmentStatics.inl"
#include "OSGHighlightMaterialAttachmentStatics.inl"
#include "OSGWalkConsoleAttachmentStatics.inl"

// --- scene file types ---
#include "OSG3DSLibLoader.h"
#include "OSGOBJLibSceneFileTypeTN.h"

namespace OSG
{
A3DSLibSceneFileType A3DSLibSceneFileType::_the(_suffixA, sizeof(_suffixA), true, 20,
                                                IOFileTypeBase::ReadSupported);
OBJSceneFileTypeTN OBJSceneFileTypeTN::_the(_suffixA, sizeof(_suffixA), true, 20,
                                            IOFileTypeBase::ReadSupported |
                                                IOFileTypeBase::WriteSupported);
} // namespace OSG

// --- element of the binary scene format ---
#include "OSGOSBElementFactory.h"
#include "OSGOSBHandleEntAttachment.h"

namespace OSG
{
namespace
{
[[maybe_unused]] bool const EntityElement = OSBElementFactorySingleton::the()->registerElement(
    "GeoToEntAttachment", new OSBElementCreator<OSBHandleEntAttachment>);
} // namespace
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

StaticInitFuncWrapper const GrpMergePrototype(&register_prototype<GrpMergeGraphOp>, "GrpMerge");
StaticInitFuncWrapper const MrgPrototype(&register_prototype<MrgGraphOp>, "Mrg");
StaticInitFuncWrapper const SimplifyPrototype(&register_prototype<SimplifyRenderEngineGraphOp>,
                                              "SimplifyRenderEngine");
} // namespace
} // namespace OSG

// --- viewport ---
#include "OSGEnhPassiveViewportStatics.inl"

// --- timer frequency: the desktop of Windows asks for it when its library is loaded, so earlier
// ---

// --- node core ---
#include "OSGConstSizeTransformStatics.inl"

// --- state chunk; its class before its type ---
#include "OSGViewportTranslateChunk.h"

namespace OSG
{
StateChunkClass ViewportTranslateChunk::_class("ViewportTranslate", 1, 100);
} // namespace OSG

#include "OSGViewportTranslateChunkStatics.inl"

// --- where the scene graph is up already, the types above are brought up at once ---
#include "OSGSystem.h"

namespace OSG
{
namespace
{
[[maybe_unused]] bool const LateTypes = (bring_up_late_types(), true);
} // namespace
} // namespace OSG
