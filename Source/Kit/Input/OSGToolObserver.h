#pragma once

#include "OSGPointerTool.h"

namespace OSG
{
/// What an EventAdapter does with its tool.
struct ToolEvent
{
    enum class Kind : UInt8
    {
        Chosen, ///< the tool is in hand from now on
        Press,
        Drag,
        Release,
        Cancel ///< what is under way ends without a result
    };

    Kind kind = Kind::Chosen;
    PointerTool const *tool = nullptr; ///< null for none, of Chosen alone
    UInt16 modifiers = 0;              ///< of PointerTool::Modifier; of Press, Drag and Release
    Int16 x = 0;                       ///< the pixel under the pointer, as a navigator hears of it
    Int16 y = 0;
};

/// Sees what tools hear; see EventAdapter::setToolObserver.
class OSG_TOLVANITEKIT_API ToolObserver
{
  public:
    virtual ~ToolObserver();
    /// Called before the tool, and before the navigator where the two share a drag. It must not
    /// pass events to the adapter.
    virtual void observeTool(ToolEvent const &event) = 0;
};
} // namespace OSG
