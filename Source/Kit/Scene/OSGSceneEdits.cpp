#include "OSGSceneEdits.h"

#include <utility>

#include "OSGChangeList.h"
#include "OSGDrawEpochs.h"

namespace OSG
{
bool SceneEdits::haveCome()
{
    if(!_journal)
    {
        _journal.emplace();
        _epochs = currentEpochs();
        return true;
    }
    bool const hasEntries = _journal->skip();
    Epochs const before = std::exchange(_epochs, currentEpochs());
    return hasEntries || _epochs != before;
}

// The end of a list of edits that drops them tells nobody which they were.
SceneEdits::Epochs SceneEdits::currentEpochs() const
{
    Epochs epochs;
    epochs.dropped = ChangeList::getNumDropped();
    epochs.meshes = DrawEpochs::getMeshes();
    if(_watched == Watched::Everything)
        epochs.materials = DrawEpochs::getMaterials();
    return epochs;
}
} // namespace OSG
