#include "OSGForeignFileAttachment.h"

#include <gtest/gtest.h>

#include "OSGDeepClone.h"
#include "OSGNode.h"

namespace OSG
{
namespace
{
using FilePtr = UnrecordedRefPtr<ForeignFileAttachment>;

TEST(ForeignFileAttachment, ANewOneHasEmptyStrings)
{
    FilePtr const file(ForeignFileAttachment::create());
    EXPECT_EQ(file->getRepoHandle(), "");
    EXPECT_EQ(file->getFileName(), "");
}

TEST(ForeignFileAttachment, EachFieldIsSetOnItsOwnAndMarksItself)
{
    FilePtr const file(ForeignFileAttachment::create());
    file->takeChangeMask();
    file->setFileName("/nowhere/part.3ds");
    EXPECT_EQ(file->getChangeMask(), BitVector(64));
    file->setRepoHandle("part-7");
    EXPECT_EQ(file->getChangeMask(), BitVector(32 + 64));
    EXPECT_EQ(file->getRepoHandle(), "part-7");
    EXPECT_EQ(file->getFileName(), "/nowhere/part.3ds");
}

TEST(ForeignFileAttachment, ClonesShareTheOneOfTheirPrototype)
{
    UnrecordedRefPtr<Node> const prototype(Node::create());
    FilePtr const file(ForeignFileAttachment::create());
    prototype->addAttachment(file);
    UnrecordedRefPtr<FieldContainer> const clone(deepClone(prototype));
    EXPECT_EQ(dynamic_cast<Node &>(*clone).findAttachment(file->getGroupId()), file);
    UnrecordedRefPtr<FieldContainer> const without(
        deepClone(prototype, "", "ForeignFileAttachment"));
    EXPECT_EQ(dynamic_cast<Node &>(*without).findAttachment(file->getGroupId()), nullptr);
    EXPECT_NE(UnrecordedRefPtr<FieldContainer>(deepClone(file)), file);
}

TEST(ForeignFileAttachment, AFieldMayBeSetToItsOwnValue)
{
    FilePtr const file(ForeignFileAttachment::create());
    file->setFileName("a name that is too long to be kept within the string object itself");
    file->setFileName(file->getFileName());
    EXPECT_EQ(file->getFileName(),
              "a name that is too long to be kept within the string object itself");
}

TEST(ForeignFileAttachment, IsSharedByAPrototypeAndItsClones)
{
    FilePtr const file(ForeignFileAttachment::create());
    UnrecordedRefPtr<Node> const prototype(Node::create());
    prototype->addAttachment(file);
    TransitPtr<FieldContainer> const copy = prototype->shallowCopy();
    auto const &clone = dynamic_cast<Node const &>(*copy);
    EXPECT_EQ(clone.findAttachment(ForeignFileAttachment::getClassGroupId()), file);
}
} // namespace
} // namespace OSG
