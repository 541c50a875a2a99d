#include "OSGCommandNameAttachment.h"

#include <gtest/gtest.h>

#include "OSGBinaryDataHandler.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGNode.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
using CommandPtr = UnrecordedRefPtr<CommandNameAttachment>;
using CommandType = CommandNameAttachment;

TEST(CommandNameAttachment, ANewOneHasTheEmptyString)
{
    CommandPtr const command(CommandType::create());
    EXPECT_EQ(command->getCommand(), "");
    EXPECT_EQ(command->getSFCommand()->getValue(), "");
}

TEST(CommandNameAttachment, SetEditAndGetWorkOnOneValue)
{
    CommandPtr const command(CommandType::create());
    command->setCommand("open");
    EXPECT_EQ(command->getCommand(), "open");
    command->editCommand() += " valve";
    EXPECT_EQ(command->getCommand(), "open valve");
    command->editSFCommand()->setValue("close");
    EXPECT_EQ(command->getCommand(), "close");
}

TEST(CommandNameAttachment, FieldIdsContinueThoseOfTheAttachment)
{
    EXPECT_EQ(CommandType::CommandFieldId, 5u);
    EXPECT_EQ(CommandType::CommandFieldMask, BitVector(32));
    EXPECT_EQ(CommandType::NextFieldId, 6u);
    EXPECT_EQ(CommandType::NextFieldMask, BitVector(64));
}

TEST(CommandNameAttachment, CreateWithoutAPrototypeGivesNullAndNoException)
{
    FieldContainerType &type = CommandType::getClassType();
    UnrecordedRefPtr<FieldContainer> const prototype(type.getPrototype());
    type.setPrototype(nullptr);
    EXPECT_FALSE(CommandType::create());
    EXPECT_FALSE(CommandType::createLocal(0));
    EXPECT_FALSE(CommandType::createDependent(0));
    EXPECT_NE(CommandPtr(CommandType::createEmpty()), nullptr);
    type.setPrototype(prototype);
    EXPECT_TRUE(CommandType::create());
}

TEST(CommandNameAttachment, CreateCopiesThePrototype)
{
    FieldContainerType &type = CommandType::getClassType();
    auto &prototype = dynamic_cast<CommandType &>(*type.getPrototype());
    prototype.setCommand("default");
    EXPECT_EQ(CommandPtr(CommandType::create())->getCommand(), "default");
    EXPECT_EQ(CommandPtr(CommandType::createEmpty())->getCommand(), "");
    prototype.setCommand("");
}

TEST(CommandNameAttachment, AnEditHandleMarksTheFieldEvenIfNothingIsWritten)
{
    CommandPtr const command(CommandType::create());
    command->takeChangeMask();
    command->editField("Command");
    EXPECT_EQ(command->getChangeMask(), BitVector(CommandType::CommandFieldMask));
}

TEST(CommandNameAttachment, CopyFromBinOfAForeignMaskTouchesNothingOfTheClass)
{
    CommandPtr const command(CommandType::create());
    command->setCommand("open");
    command->takeChangeMask();
    MemoryBinaryDataHandler handler;
    command->copyFromBin(handler, CommandType::NextFieldMask);
    EXPECT_EQ(command->getCommand(), "open");
    EXPECT_EQ(command->getChangeMask(), 0u);
}

TEST(CommandNameAttachment, AnEmptyOneIsRegisteredAlsoWithFlagsOfAllOnes)
{
    ChangeList &changes = *Thread::getCurrentChangeList();
    changes.commitChanges();
    CommandPtr const plain(CommandType::createEmpty());
    EXPECT_EQ(changes.getNumCreated(), 1u);
    CommandPtr const silent(CommandType::createEmptyLocal(~BitVector(0)));
    EXPECT_EQ(changes.getNumCreated(), 1u);
    for(CommandType *command : {plain.get(), silent.get()})
    {
        EXPECT_NE(command->getId(), 0u);
        EXPECT_EQ(FieldContainerFactoryBase::the()->getContainer(command->getId()), command);
        EXPECT_EQ(command->getAspectStore()->getPtr(0), command);
    }
}

TEST(CommandNameAttachment, LocalFlagsKeepFieldsInTheirAspect)
{
    BitVector const own = CommandType::CommandFieldMask;
    EXPECT_EQ(CommandPtr(CommandType::create())->getSharedMask(), ~BitVector(0));
    EXPECT_EQ(CommandPtr(CommandType::createLocal(own))->getSharedMask(), ~own);
    EXPECT_EQ(CommandPtr(CommandType::createDependent(own))->getSharedMask(), own);
    Thread::setCurrentLocalFlags(own);
    CommandPtr const local(CommandType::create());
    Thread::setCurrentLocalFlags(0);
    EXPECT_EQ(local->getSharedMask(), ~own);
}

TEST(CommandNameAttachment, AShallowCopyHasTheValueAndOneReference)
{
    CommandPtr const command(CommandType::create());
    command->setCommand("open");
    TransitPtr<FieldContainer> const copy = command->shallowCopy();
    EXPECT_EQ(copy->getRefCount(), 1);
    EXPECT_EQ(dynamic_cast<CommandType &>(*copy).getCommand(), "open");
}

TEST(CommandNameAttachment, AStringCountsItsLengthPlusFiveAndReadsBack)
{
    CommandPtr const command(CommandType::create());
    command->setCommand("open");
    UInt64 const without = command->getBinSize(0);
    EXPECT_EQ(command->getBinSize(CommandType::CommandFieldMask), without + 4 + 5);

    MemoryBinaryDataHandler out;
    command->copyToBin(out, CommandType::CommandFieldMask);
    EXPECT_EQ(out.getBytes().size(), 9u);

    CommandPtr const other(CommandType::create());
    MemoryBinaryDataHandler in(out.getBytes());
    other->takeChangeMask();
    other->copyFromBin(in, CommandType::CommandFieldMask);
    EXPECT_EQ(other->getCommand(), "open");
    EXPECT_EQ(other->getChangeMask(), BitVector(CommandType::CommandFieldMask));
}

TEST(CommandNameAttachment, HangsOnANodeAndIsFoundByItsGroup)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    CommandPtr const command(CommandType::create());
    node->addAttachment(command);
    EXPECT_EQ(node->findAttachment(CommandType::getClassGroupId()), command);
    EXPECT_EQ(command->getRefCount(), 2);
    CommandPtr const next(CommandType::create());
    node->addAttachment(next);
    EXPECT_EQ(node->findAttachment(CommandType::getClassGroupId()), next);
    EXPECT_EQ(command->getRefCount(), 1);
    EXPECT_TRUE(node->subAttachment(next));
    EXPECT_FALSE(node->subAttachment(next));
    EXPECT_EQ(node->findAttachment(CommandType::getClassGroupId()), nullptr);
}

TEST(CommandNameAttachment, EachPointerFieldNamesItsType)
{
    using Target = CommandNameAttachment *;
    auto const name = [](FieldType const &type) { return type.getName(); };
    EXPECT_EQ(name(PointerSField<Target, RecordedRefCountPolicy, 0>::getClassType()),
              "SFRecCommandNameAttachmentPtr");
    EXPECT_EQ(name(PointerSField<Target, NoRefCountPolicy, 0>::getClassType()),
              "SFUnrefdCommandNameAttachmentPtr");
    EXPECT_EQ(name(PointerMField<Target, UnrecordedRefCountPolicy, 0>::getClassType()),
              "MFUnrecCommandNameAttachmentPtr");
    EXPECT_EQ(name(PointerMField<Target, WeakRefCountPolicy, 0>::getClassType()),
              "MFWeakCommandNameAttachmentPtr");
    EXPECT_STREQ((FieldTraits<Target, 0>::getType().getCName()), "CommandNameAttachmentPtr");
}
} // namespace
} // namespace OSG
