/// \file
/// What every container promises, asked of all that are registered: no class is named here, so that
/// a new one is tested as soon as it exists.

#include <functional>
#include <gtest/gtest.h>

#include "ContainerFields.h"
#include "OSGAspectLink.h"
#include "OSGChangeList.h"
#include "OSGDeepClone.h"
#include "OSGStreamIdMap.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
ChangeList &changes() { return *Thread::getCurrentChangeList(); }
UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

/// A container with something in every field.
struct Filled
{
    explicit Filled(FieldContainerType const &type)
        : container(type.createContainer())
        , mask(all_fields_mask(type))
    {
        fill_fields(*container, kept);
        values = values_of(*container);
    }

    std::vector<ContainerPtr> kept; ///< what the container points to
    ContainerPtr container;
    BitVector mask;
    ContainerValues values;
};

void for_each_filled(std::function<void(Filled &)> const &test)
{
    for(FieldContainerType *type : concrete_types())
    {
        SCOPED_TRACE(type->getName());
        Filled filled(*type);
        if(testing::Test::HasFatalFailure())
            return;
        test(filled);
    }
    changes().commitChanges();
}

/// Expects that `actual` holds what `expected` holds, where pointers have gone through `moved`.
void expect_values(ContainerValues const &expected, ContainerValues const &actual,
                   std::function<FieldContainer *(FieldContainer *)> const &moved)
{
    for(auto const &[name, value] : expected)
    {
        FieldValue carried = value;
        for(FieldContainer *&pointer : carried.pointers)
            pointer = moved(pointer);
        EXPECT_EQ(carried, actual.at(name)) << name;
    }
}

FieldContainer *same(FieldContainer *container) { return container; }

TEST(EveryContainer, FillingChangesEveryField)
{
    for_each_filled(
        [](Filled &filled)
        {
            ContainerPtr const fresh(filled.container->getType().createContainer());
            for(FieldDescriptionBase const *field : fields_of(fresh->getType()))
                EXPECT_NE(value_of(*fresh, *field), filled.values[field->getName()])
                    << field->getName();
        });
}

TEST(EveryContainer, FieldIdsAreDenseAndContinueTheParents)
{
    for(FieldContainerType *type : concrete_types())
    {
        UInt32 previous = 0;
        for(FieldDescriptionBase const *field : fields_of(*type))
        {
            EXPECT_GT(field->getFieldId(), previous) << type->getName() << field->getName();
            previous = field->getFieldId();
        }
        for(TypeBase const *at = type; at != nullptr; at = at->getParent())
        {
            auto const &own = static_cast<ReflexiveContainerType const *>(at)->getOwnFieldDescs();
            for(std::size_t i = 1; i < own.size(); ++i)
                EXPECT_EQ(own[i]->getFieldId(), own[i - 1]->getFieldId() + 1) << type->getName();
        }
    }
}

// --- edits ---

TEST(EveryContainer, AnEditHandleMarksItsFieldEvenWhereNothingIsWritten)
{
    for(FieldContainerType *type : concrete_types())
    {
        ContainerPtr const container(type->createContainer());
        for(FieldDescriptionBase const *field : fields_of(*type))
        {
            changes().commitChanges();
            EXPECT_EQ(container->getChangeMask(), 0u);
            container->getField(field->getFieldId());
            EXPECT_EQ(container->getChangeMask(), 0u);
            container->editField(field->getFieldId());
            EXPECT_EQ(container->getChangeMask(), field->getFieldMask())
                << type->getName() << field->getName();
            EXPECT_TRUE(changes().hasOpenEdits());
        }
    }
    changes().commitChanges();
}

// --- making ---

TEST(EveryContainer, IsMadeWithAnIdAStoreAndOneReference)
{
    for(FieldContainerType *type : concrete_types())
    {
        UInt64 const created = changes().getNumCreated();
        TransitPtr<FieldContainer> const made = type->createContainer();
        EXPECT_EQ(&made->getType(), type);
        EXPECT_EQ(made->getRefCount(), 1);
        EXPECT_EQ(made->getAspectStore()->getPtr(Thread::getCurrentAspect()), made.get());
        EXPECT_EQ(FieldContainerFactoryBase::the()->getContainer(made->getId()), made.get());
        EXPECT_EQ(changes().getNumCreated(), created + 1);
        EXPECT_EQ(made->getSharedMask(), ~BitVector(0));
        EXPECT_GE(made->getContainerSize(), sizeof(FieldContainer));
    }
}

TEST(EveryContainer, FlagsSayWhichFieldsStayLocal)
{
    for(FieldContainerType *type : concrete_types())
    {
        ContainerPtr const local(type->getPrototype()->shallowCopyLocal(2));
        EXPECT_EQ(local->getSharedMask(), ~BitVector(2));
        EXPECT_EQ(local->getRefCount(), 1);
        ContainerPtr const dependent(type->getPrototype()->shallowCopyDependent(2));
        EXPECT_EQ(dependent->getSharedMask(), BitVector(2));
        EXPECT_EQ(dependent->getRefCount(), 1);
        Thread::setCurrentLocalFlags(4);
        ContainerPtr const by_thread(type->createContainer());
        Thread::setCurrentLocalFlags(0);
        EXPECT_EQ(by_thread->getSharedMask(), ~BitVector(4));
    }
}

TEST(EveryContainer, FlagsOfAllOnesAreNotReportedAsCreated)
{
    for(FieldContainerType *type : concrete_types())
    {
        UInt64 const created = changes().getNumCreated();
        ContainerPtr const silent(type->getPrototype()->shallowCopyLocal(~BitVector(0)));
        EXPECT_EQ(changes().getNumCreated(), created);
        EXPECT_NE(silent->getId(), 0u);
        EXPECT_NE(silent->getAspectStore(), nullptr);
    }
}

TEST(EveryContainer, WithoutAPrototypeNothingIsMade)
{
    for(FieldContainerType *type : concrete_types())
    {
        ContainerPtr const prototype(type->getPrototype());
        type->setPrototype(nullptr);
        EXPECT_FALSE(type->createContainer());
        EXPECT_FALSE(FieldContainerFactoryBase::the()->createContainer(type->getCName()));
        type->setPrototype(prototype);
    }
}

TEST(EveryContainer, AtTheEndOfMemoryNothingIsLeft)
{
    for(FieldContainerType *type : concrete_types())
    {
        SCOPED_TRACE(type->getName());
        type->createContainer();
        changes().commitChanges();
        UInt32 const containers = num_containers();
        UInt64 const bytes = get_mem_bytes();
        bool made = false;
        UInt64 room = 1;
        for(; !made; room += 16)
        {
            set_mem_limit(bytes + room);
            try
            {
                made = static_cast<bool>(type->createContainer());
            }
            catch(std::bad_alloc const &)
            {
            }
            set_mem_limit(0);
            changes().commitChanges();
            ASSERT_EQ(num_containers(), containers);
            ASSERT_EQ(get_mem_bytes(), bytes);
        }
        EXPECT_GT(room, type->getPrototype()->getContainerSize());
    }
}

// --- copies ---

TEST(EveryContainer, ACopyHasTheValuesAndPointsToTheSame)
{
    for_each_filled(
        [](Filled &filled)
        {
            ContainerPtr const copy(filled.container->shallowCopy());
            for(FieldDescriptionBase const *field : fields_of(copy->getType()))
            {
                FieldValue const expected = is_child_field(*field, *filled.container)
                                                ? FieldValue()
                                                : filled.values[field->getName()];
                EXPECT_EQ(value_of(*copy, *field), expected) << field->getName();
            }
            EXPECT_EQ(values_of(*filled.container), filled.values);
        });
}

TEST(EveryContainer, ACopyAndItsSourceEndWithoutEachOther)
{
    UInt32 const before = num_containers();
    for_each_filled(
        [](Filled &filled)
        {
            ContainerPtr copy(filled.container->shallowCopy());
            filled.container = nullptr;
            EXPECT_EQ(copy->getRefCount(), 1);
            copy = nullptr;
            changes().commitChanges();
            for(ContainerPtr const &target : filled.kept)
                EXPECT_EQ(target->getRefCount(), 1);
        });
    EXPECT_EQ(num_containers(), before);
}

TEST(EveryContainer, ACloneHasTheValuesAndClonesOfWhatItCounts)
{
    for_each_filled(
        [](Filled &filled)
        {
            ContainerPtr const clone(deepClone(filled.container));
            for(FieldDescriptionBase const *field : fields_of(clone->getType()))
            {
                SCOPED_TRACE(field->getName());
                FieldValue const &source = filled.values[field->getName()];
                FieldValue const value = value_of(*clone, *field);
                EXPECT_EQ(value.texts, source.texts);
                ASSERT_EQ(value.pointers.size(), source.pointers.size());
                for(std::size_t i = 0; i < value.pointers.size(); ++i)
                {
                    ASSERT_NE(value.pointers[i], nullptr);
                    EXPECT_EQ(&value.pointers[i]->getType(), &source.pointers[i]->getType());
                    EXPECT_EQ(value.pointers[i] != source.pointers[i], is_counted(*field));
                }
            }
            EXPECT_EQ(values_of(*filled.container), filled.values);
        });
}

TEST(EveryContainer, ACloneThatSharesEverythingPointsToTheSame)
{
    for_each_filled(
        [](Filled &filled)
        {
            UInt32 const before = num_containers();
            ContainerPtr const clone(deepClone(filled.container, "FieldContainer"));
            EXPECT_EQ(num_containers(), before + 1);
            for(FieldDescriptionBase const *field : fields_of(clone->getType()))
            {
                if(is_child_field(*field, *filled.container))
                    continue;
                EXPECT_EQ(value_of(*clone, *field), filled.values[field->getName()])
                    << field->getName();
            }
        });
}

TEST(EveryContainer, ACloneThatIgnoresEverythingPointsToNothing)
{
    for_each_filled(
        [](Filled &filled)
        {
            UInt32 const before = num_containers();
            ContainerPtr const clone(deepClone(filled.container, "", "FieldContainer"));
            EXPECT_EQ(num_containers(), before + 1);
            for(FieldDescriptionBase const *field : fields_of(clone->getType()))
            {
                for(FieldContainer *pointer : value_of(*clone, *field).pointers)
                    EXPECT_EQ(pointer, nullptr) << field->getName();
            }
            EXPECT_EQ(values_of(*filled.container), filled.values);
        });
}

// --- binary form ---

TEST(EveryContainer, EveryFieldHasTheSizeThatItSays)
{
    for_each_filled(
        [](Filled &filled)
        {
            UInt64 const none = filled.container->getBinSize(0);
            UInt64 sum = none;
            for(FieldDescriptionBase const *field : fields_of(filled.container->getType()))
            {
                MemoryBinaryDataHandler bytes;
                filled.container->copyToBin(bytes, field->getFieldMask());
                UInt64 const size = filled.container->getBinSize(field->getFieldMask());
                EXPECT_EQ(bytes.getBytes().size(), size) << field->getName();
                sum += size - none;
            }
            EXPECT_EQ(filled.container->getBinSize(filled.mask), sum);
        });
}

TEST(EveryContainer, EveryFieldIsReadAsItWasWritten)
{
    for_each_filled(
        [](Filled &filled)
        {
            MemoryBinaryDataHandler bytes;
            filled.container->copyToBin(bytes, filled.mask);
            ContainerPtr const target(filled.container->getType().createContainer());
            target->copyFromBin(bytes, filled.mask);
            EXPECT_EQ(bytes.getRest(), 0u);
            expect_values(filled.values, values_of(*target), same);
            EXPECT_EQ(target->getChangeMask() & filled.mask, filled.mask);
        });
}

TEST(EveryContainer, IdsOfAStreamAreThoseOfItsMap)
{
    for_each_filled(
        [](Filled &filled)
        {
            MemoryBinaryDataHandler bytes;
            filled.container->copyToBin(bytes, filled.mask);
            StreamIdMap ids;
            for(ContainerPtr const &target : filled.kept)
                ids.add(target->getId(), ContainerPtr(target->getType().createContainer()));
            ContainerPtr const target(filled.container->getType().createContainer());
            target->copyFromBin(bytes, filled.mask);
            expect_values(filled.values, values_of(*target),
                          [&ids](FieldContainer *pointer)
                          { return pointer != nullptr ? ids.find(pointer->getId()) : nullptr; });
            EXPECT_EQ(values_of(*filled.container), filled.values);
        });
}

TEST(EveryContainer, AMaskWithoutItsBitsTouchesNothing)
{
    for_each_filled(
        [](Filled &filled)
        {
            changes().commitChanges();
            ContainerValues const before = values_of(*filled.container);
            MemoryBinaryDataHandler empty;
            filled.container->copyFromBin(empty, 0);
            filled.container->copyFromBin(empty, ~filled.mask);
            filled.container->copyToBin(empty, ~filled.mask);
            EXPECT_TRUE(empty.getBytes().empty());
            EXPECT_EQ(filled.container->getChangeMask(), 0u);
            EXPECT_EQ(values_of(*filled.container), before);
        });
}

TEST(EveryContainer, AStreamThatEndsEarlyRaises)
{
    for_each_filled(
        [](Filled &filled)
        {
            MemoryBinaryDataHandler whole;
            filled.container->copyToBin(whole, filled.mask);
            StreamIdMap const nothing;
            for(std::size_t size = 0; size < whole.getBytes().size(); ++size)
            {
                MemoryBinaryDataHandler cut(std::vector<UInt8>(
                    whole.getBytes().begin(), whole.getBytes().begin() + std::ptrdiff_t(size)));
                ContainerPtr const target(filled.container->getType().createContainer());
                EXPECT_THROW(target->copyFromBin(cut, filled.mask),
                             ExceptionBinaryDataHandler::ReadError);
            }
        });
}

// --- text form ---

/// Reads the texts of a field of another container into this one.
void read_texts(FieldContainer &container, FieldDescriptionBase const &field,
                std::vector<std::string> const &texts)
{
    EditFieldHandlePtr const handle = container.editField(field.getFieldId());
    while(is_multi(field) && handle->size() != 0)
        ASSERT_TRUE(handle->removeIndex(handle->size() - 1));
    for(UInt32 i = 0; i < texts.size(); ++i)
    {
        char const *const text = texts[i].c_str();
        ASSERT_TRUE(is_multi(field) ? handle->insertIndexedValueFromCString(text, i)
                                    : handle->pushIndexedValueFromCString(text, i))
            << text;
    }
}

TEST(EveryContainer, EveryValueReadsBackFromItsText)
{
    for_each_filled(
        [](Filled &filled)
        {
            ContainerPtr const target(filled.container->getType().createContainer());
            for(FieldDescriptionBase const *field : fields_of(target->getType()))
            {
                SCOPED_TRACE(field->getName());
                read_texts(*target, *field, texts_of(*filled.container, *field));
                EXPECT_EQ(value_of(*target, *field), filled.values[field->getName()]);
            }
        });
}

// --- aspects ---

/// Works on another aspect while it lives.
class InAspect
{
  public:
    explicit InAspect(UInt32 aspect) { Thread::setCurrentAspect(aspect); }
    ~InAspect() { Thread::setCurrentAspect(0); }
};

FieldContainer *in_other_aspect(FieldContainer *container)
{
    return container != nullptr ? container->getAspectStore()->getPtr(1) : nullptr;
}

TEST(EveryContainer, ACopyForAnotherAspectHasTheValues)
{
    for_each_filled(
        [](Filled &filled)
        {
            changes().commitChanges();
            ContainerValues const values = values_of(*filled.container);
            InAspect const other(1);
            AspectLink const link(&changes(), 0);
            FieldContainer *const copy = in_other_aspect(filled.container);
            ASSERT_NE(copy, nullptr);
            EXPECT_EQ(copy->getId(), filled.container->getId());
            expect_values(values, values_of(*copy), in_other_aspect);
            changes().commitChanges();
            EXPECT_EQ(values_of(*filled.container), values);
        });
}

TEST(EveryContainer, EditsOfEveryFieldReachTheOtherAspect)
{
    for(FieldContainerType *type : concrete_types())
    {
        SCOPED_TRACE(type->getName());
        ContainerPtr const container(type->createContainer());
        changes().commitChanges();
        std::vector<ContainerPtr> kept;
        std::unique_ptr<AspectLink> link;
        {
            InAspect const other(1);
            link = std::make_unique<AspectLink>(&changes(), 0);
        }
        fill_fields(*container, kept);
        changes().commitChanges();
        ContainerValues const values = values_of(*container);
        {
            InAspect const other(1);
            link->receive();
            expect_values(values, values_of(*in_other_aspect(container)), in_other_aspect);
            changes().commitChanges();
            link.reset();
        }
        EXPECT_EQ(values_of(*container), values);
    }
}

// --- ends ---

TEST(EveryContainer, ResolvedLinksPointToNothing)
{
    for_each_filled(
        [](Filled &filled)
        {
            filled.container->resolveLinks();
            for(FieldDescriptionBase const *field : fields_of(filled.container->getType()))
            {
                FieldValue const value = value_of(*filled.container, *field);
                for(FieldContainer *pointer : value.pointers)
                    EXPECT_EQ(pointer, nullptr) << field->getName();
                EXPECT_EQ(value.texts, filled.values[field->getName()].texts);
            }
            changes().commitChanges();
            for(ContainerPtr const &target : filled.kept)
                EXPECT_EQ(target->getRefCount(), 1);
        });
}
} // namespace
} // namespace OSG::Test
