#include "OSGName.h"

#include "OSGAttachmentContainer.h"

namespace OSG
{
Name::~Name() = default;

namespace
{
Name *name_of(AttachmentContainer const *container)
{
    if(container == nullptr)
        return nullptr;
    return dynamic_cast<Name *>(container->findAttachment(Name::getClassGroupId()));
}
} // namespace

char const *getName(AttachmentContainer const *container)
{
    Name const *const name = name_of(container);
    return name != nullptr ? name->getName().c_str() : nullptr;
}

void setName(AttachmentContainer *container, char const *name)
{
    if(container == nullptr)
        return;
    Name *const old = name_of(container);
    if(name == nullptr)
    {
        if(old != nullptr)
            container->subAttachment(old);
        return;
    }
    // The old attachment may hang on other containers too, so it is replaced and not edited.
    UnrecordedRefPtr<Name> const attachment(Name::create());
    attachment->editName() = name;
    container->addAttachment(attachment);
}

void setName(AttachmentContainer *container, std::string const &name)
{
    setName(container, name.c_str());
}
} // namespace OSG
