#include "OSGRefCountPtr.h"

#include <gtest/gtest.h>

#include "OSGGroup.h"
#include "OSGName.h"
#include "OSGTransform.h"

namespace OSG
{
namespace
{
template <class To, class From>
constexpr bool Assigns = std::is_assignable_v<To &, From> &&std::is_constructible_v<To, From>;
} // namespace

TEST(RefCountPtr, APointerToADerivedClassIsAssignedByEveryPolicy)
{
    UnrecordedRefPtr<Transform> const transform(Transform::create());
    UnrecordedRefPtr<NodeCore> unrecorded;
    RecordedRefPtr<NodeCore> recorded;
    WeakRefPtr<NodeCore> weak;
    unrecorded = transform;
    recorded = transform;
    weak = transform;
    UnrecordedRefPtr<Group> const copied = transform;
    RecordedRefPtr<FieldContainer> const other = recorded;
    WeakRefPtr<FieldContainer> const looking = weak;
    EXPECT_EQ(unrecorded, transform);
    EXPECT_EQ(recorded, transform);
    EXPECT_EQ(weak.get(), transform);
    EXPECT_EQ(copied, transform);
    EXPECT_EQ(other, transform);
    EXPECT_EQ(looking.get(), transform);
    EXPECT_EQ(transform->getRefCount(), 5);
    EXPECT_EQ(transform->getWeakRefCount(), 2);
}

TEST(RefCountPtr, AMovedPointerTakesItsReferenceAlong)
{
    UnrecordedRefPtr<Transform> from(Transform::create());
    Transform *const transform = from;
    UnrecordedRefPtr<NodeCore> core;
    core = std::move(from);
    EXPECT_EQ(core, transform);
    EXPECT_EQ(from, nullptr); // NOLINT(bugprone-use-after-move): that is the question
    EXPECT_EQ(transform->getRefCount(), 1);
    RecordedRefPtr<Transform> recorded(transform);
    UnrecordedRefPtr<Group> const group = std::move(recorded);
    EXPECT_EQ(group, transform);
    EXPECT_EQ(transform->getRefCount(), 3); // another policy takes a reference of its own
}

TEST(RefCountPtr, WhatIsInTransitArrivesAsItsBase)
{
    TransitPtr<NodeCore> transit;
    transit = Transform::create();
    UnrecordedRefPtr<FieldContainer> arrived;
    arrived = std::move(transit);
    EXPECT_EQ(arrived->getRefCount(), 1);
}

TEST(RefCountPtr, NothingIsAssignedAgainstTheDirectionOfTheClasses)
{
    EXPECT_TRUE((Assigns<UnrecordedRefPtr<NodeCore>, UnrecordedRefPtr<Group>>));
    EXPECT_FALSE((Assigns<UnrecordedRefPtr<Group>, UnrecordedRefPtr<NodeCore>>));
    EXPECT_FALSE((Assigns<UnrecordedRefPtr<Name>, UnrecordedRefPtr<Group>>));
    EXPECT_FALSE((Assigns<WeakRefPtr<Group>, WeakRefPtr<NodeCore>>));
    EXPECT_FALSE((Assigns<UnrecordedRefPtr<Group>, TransitPtr<NodeCore>>));
    EXPECT_FALSE((Assigns<TransitPtr<Group>, TransitPtr<NodeCore>>));
    EXPECT_FALSE((Assigns<UnrecordedRefPtr<Group>, UnrecordedRefPtr<Group const>>));
}
} // namespace OSG
