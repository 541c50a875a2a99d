#include "OSGFieldLinks.h"

namespace OSG
{
bool link_by_classes(FieldContainer &owner, UInt32 fieldId, FieldContainer *old,
                     FieldContainer *target)
{
    UInt16 const id = static_cast<UInt16>(fieldId);
    if(target != nullptr)
        return target->linkParent(&owner, id);
    return old != nullptr && owner.unlinkChild(old, id);
}

void FieldLinks::noteEdit() { _owner.markEdited(_field.getFieldMask()); }

bool FieldLinks::replace(UInt32 index, FieldContainer *target)
{
    FieldContainer *const old = (*this)[index];
    if(old == target)
        return true;
    // In a list the classes would append the target: only taking out is theirs.
    bool const asksClasses = isSingle() || target == nullptr;
    if(asksClasses && link_by_classes(_owner, fieldId(), old, target))
        return isSingle();
    noteEdit();
    _access.set(_owner, index, target);
    return true;
}

void FieldLinks::append(FieldContainer *target)
{
    if(target != nullptr && link_by_classes(_owner, fieldId(), nullptr, target))
        return;
    if(target != nullptr || !_access.isChildField)
        appendAlone(target);
    if(target == nullptr)
        dropNulls();
}

void FieldLinks::appendAlone(FieldContainer *target)
{
    noteEdit();
    _access.append(_owner, target);
}

// An owner whose list may not hold nulls takes them out by unlinkChild, together with what it notes
// beside them. Nulls are never appended to a list of children.
void FieldLinks::dropNulls()
{
    if(_access.isChildField)
        return;
    while(_owner.unlinkChild(nullptr, static_cast<UInt16>(fieldId())))
    {
    }
}

void FieldLinks::remove(UInt32 index)
{
    if(_owner.unlinkChild((*this)[index], static_cast<UInt16>(fieldId())))
        return;
    noteEdit();
    _access.erase(_owner, index);
}

void FieldLinks::clear()
{
    if(isSingle())
    {
        replace(0, nullptr);
        return;
    }
    for(UInt32 left = size(); left != 0; --left)
        remove(left - 1);
}

void FieldLinks::restore(FieldContainer *const *targets, UInt32 count)
{
    if(isSingle())
    {
        replace(0, count != 0 ? targets[0] : nullptr);
        return;
    }
    bool hasNull = false;
    for(UInt32 i = 0; i < count; ++i)
    {
        hasNull = hasNull || targets[i] == nullptr;
        if(_access.isChildField)
            append(targets[i]);
        else
            appendAlone(targets[i]);
    }
    if(hasNull)
        dropNulls();
}
} // namespace OSG
