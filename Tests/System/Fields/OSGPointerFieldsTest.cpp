#include "OSGPointerFields.h"

#include <gtest/gtest.h>

#include "OSGName.h"
#include "OSGNode.h"

namespace OSG::Test
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;

/// How a pointer of each policy changes the counts of its target.
template <class Policy>
struct PolicyCase;
template <>
struct PolicyCase<RecordedRefCountPolicy>
{
    static constexpr Int32 Counted = 1;
    static constexpr Int32 Weak = 0;
    static constexpr char const *name = "RecNodePtr";
};
template <>
struct PolicyCase<UnrecordedRefCountPolicy>
{
    static constexpr Int32 Counted = 1;
    static constexpr Int32 Weak = 0;
    static constexpr char const *name = "UnrecNodePtr";
};
template <>
struct PolicyCase<WeakRefCountPolicy>
{
    static constexpr Int32 Counted = 0;
    static constexpr Int32 Weak = 1;
    static constexpr char const *name = "WeakNodePtr";
};
template <>
struct PolicyCase<NoRefCountPolicy>
{
    static constexpr Int32 Counted = 0;
    static constexpr Int32 Weak = 0;
    static constexpr char const *name = "UnrefdNodePtr";
};

template <class Policy>
class PointerFields : public testing::Test
{
  protected:
    using Case = PolicyCase<Policy>;
    using Single = PointerSField<Node *, Policy, 0>;
    using Multi = PointerMField<Node *, Policy, 0>;

    /// References besides the one that the test holds, for `pointers` pointers.
    static void expect_pointers(Node const *node, Int32 pointers)
    {
        EXPECT_EQ(node->getRefCount(), 1 + pointers * Case::Counted);
        EXPECT_EQ(node->getWeakRefCount(), pointers * Case::Weak);
    }

    NodePtr first{Node::create()};
    NodePtr second{Node::create()};
};

using Policies = testing::Types<RecordedRefCountPolicy, UnrecordedRefCountPolicy,
                                WeakRefCountPolicy, NoRefCountPolicy>;
TYPED_TEST_SUITE(PointerFields, Policies);

TYPED_TEST(PointerFields, ASingleFieldCountsByItsPolicy)
{
    {
        typename TestFixture::Single field;
        EXPECT_EQ(field.getValue(), nullptr);
        field.setValue(this->first);
        this->expect_pointers(this->first, 1);
        EXPECT_EQ(field.getValue(), this->first);
        EXPECT_EQ(field.getPointer(), this->first);
        field.setValue(this->first);
        this->expect_pointers(this->first, 1);
        field.setValue(this->second);
        this->expect_pointers(this->first, 0);
        this->expect_pointers(this->second, 1);
        field.setValue(nullptr);
        this->expect_pointers(this->second, 0);
        field.setValue(this->first);
    }
    this->expect_pointers(this->first, 0);
}

TYPED_TEST(PointerFields, AnExchangeHandsTheReferenceOver)
{
    typename TestFixture::Single field;
    field.setValue(this->first);
    FieldContainer *const old = field.exchangeValue(this->second);
    EXPECT_EQ(old, this->first);
    this->expect_pointers(this->first, 1);
    this->expect_pointers(this->second, 1);
    TypeParam::subRef(old);
    this->expect_pointers(this->first, 0);
}

TYPED_TEST(PointerFields, AMultiFieldCountsEachEntry)
{
    {
        typename TestFixture::Multi field;
        EXPECT_TRUE(field.empty());
        field.push_back(this->first);
        field.push_back(this->second);
        field.insert(1, this->first);
        ASSERT_EQ(field.size(), 3u);
        this->expect_pointers(this->first, 2);
        this->expect_pointers(this->second, 1);
        EXPECT_EQ(field[1], this->first);
        PointerMFieldBase const &base = field;
        EXPECT_EQ(base[2], this->second);
        EXPECT_EQ(field.front(), this->first);
        EXPECT_EQ(field.back(), this->second);
        EXPECT_EQ(field.findIndex(this->second), 2);
        EXPECT_EQ(std::vector<Node *>(field.begin(), field.end()),
                  (std::vector<Node *>{this->first, this->first, this->second}));

        field.replace(0, this->second);
        this->expect_pointers(this->first, 1);
        this->expect_pointers(this->second, 2);
        field.erase(1);
        this->expect_pointers(this->first, 0);
        EXPECT_EQ(field.findIndex(this->first), -1);
        field.resize(4);
        EXPECT_EQ(field[3], nullptr);
        field.resize(1);
        this->expect_pointers(this->second, 1);
        field.clear();
        this->expect_pointers(this->second, 0);
        field.push_back(this->first);
        field.push_back(nullptr);
    }
    this->expect_pointers(this->first, 0);
}

TYPED_TEST(PointerFields, HaveTheTypesOfTheirPolicy)
{
    FieldType const &single = TestFixture::Single::getClassType();
    FieldType const &multi = TestFixture::Multi::getClassType();
    EXPECT_EQ(single.getName(), std::string("SF") + TestFixture::Case::name);
    EXPECT_EQ(multi.getName(), std::string("MF") + TestFixture::Case::name);
    EXPECT_STREQ(single.getCParentName(), "FieldContainerPtrSFieldBase");
    EXPECT_STREQ(multi.getCParentName(), "FieldContainerPtrMFieldBase");
    EXPECT_EQ(single.getCardinality(), FieldCardinality::Single);
    EXPECT_EQ(multi.getCardinality(), FieldCardinality::Multi);
    EXPECT_EQ(&single.getContentType(), &(FieldTraits<Node *, 0>::getType()));
    FieldClass const expected =
        TestFixture::Case::Counted != 0 ? FieldClass::Pointer : FieldClass::UncountedPointer;
    EXPECT_EQ(single.getClass(), expected);
    EXPECT_EQ(multi.getClass(), expected);
}

TEST(WeakPointerFields, ReadAsNullOnceTheObjectHasDied)
{
    PointerSField<Node *, WeakRefCountPolicy, 0> single;
    PointerMField<Node *, WeakRefCountPolicy, 0> multi;
    {
        NodePtr const node(Node::create());
        single.setValue(node);
        multi.push_back(node);
        multi.push_back(nullptr);
    }
    EXPECT_EQ(single.getValue(), nullptr);
    EXPECT_EQ(multi[0], nullptr);
    EXPECT_EQ(*multi.begin(), nullptr);
    EXPECT_EQ(multi.size(), 2u);
}

TEST(CountedPointerFields, KeepTheObject)
{
    PointerSField<Name *, RecordedRefCountPolicy, 0> recorded;
    PointerMField<Name *, UnrecordedRefCountPolicy, 0> unrecorded;
    recorded.setValue(UnrecordedRefPtr<Name>(Name::create()));
    unrecorded.push_back(recorded.getValue());
    recorded.setValue(nullptr);
    EXPECT_TRUE(unrecorded[0]->isAlive());
    EXPECT_EQ(unrecorded[0]->getRefCount(), 1);
}
} // namespace
} // namespace OSG::Test
