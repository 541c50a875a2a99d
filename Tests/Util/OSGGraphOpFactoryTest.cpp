#include "OSGGraphOpFactory.h"

#include <gmock/gmock.h>

#include "TestOperation.h"

namespace OSG::Test
{
namespace
{
GraphOpFactoryBase &factory() { return *SingletonHolder<GraphOpFactoryBase>::the(); }

std::size_t place_of(char const *name)
{
    GraphOpFactoryBase::Prototypes const &prototypes = factory().getPrototypes();
    std::size_t place = 0;
    while(place < prototypes.size() && prototypes[place]->getName() != name)
        ++place;
    return place;
}

TEST(GraphOpFactory, ThereIsOne)
{
    EXPECT_EQ(SingletonHolder<GraphOpFactoryBase>::the(), GraphOpFactoryBase::the());
}

TEST(GraphOpFactory, KeepsAReferenceOfAPrototype)
{
    UnrecordedRefPtr<TestOperation> const prototype(TestOperation::create("Kept"));
    factory().registerOp(prototype);
    EXPECT_EQ(prototype->getRefCount(), 2);
    EXPECT_EQ(factory().getPrototypes()[place_of("Kept")], prototype);
}

TEST(GraphOpFactory, CreatesAFreshOperationByName)
{
    UnrecordedRefPtr<TestOperation> const prototype(TestOperation::create("Fresh"));
    factory().registerOp(prototype);
    UnrecordedRefPtr<GraphOp> const made(factory().create("Fresh"));
    ASSERT_NE(made.get(), nullptr);
    EXPECT_NE(made.get(), prototype.get());
    EXPECT_EQ(made->getName(), "Fresh");
    EXPECT_EQ(made->getRefCount(), 1);
}

TEST(GraphOpFactory, GivesNullForANameThatNoneHas)
{
    EXPECT_TRUE(factory().create("None of them") == nullptr);
    EXPECT_TRUE(factory().create("fresh") == nullptr);
    EXPECT_TRUE(factory().create(nullptr) == nullptr);
}

TEST(GraphOpFactory, ALaterPrototypeTakesThePlaceOfTheEarlierOfItsName)
{
    UnrecordedRefPtr<TestOperation> const earlier(TestOperation::create("Twice"));
    UnrecordedRefPtr<TestOperation> const later(TestOperation::create("Twice"));
    factory().registerOp(earlier);
    std::size_t const count = factory().getPrototypes().size();
    factory().registerOp(later);
    EXPECT_EQ(factory().getPrototypes().size(), count);
    EXPECT_EQ(factory().getPrototypes()[place_of("Twice")], later);
    EXPECT_EQ(earlier->getRefCount(), 1);
}

TEST(GraphOpFactory, NullIsNotRegistered)
{
    std::size_t const count = factory().getPrototypes().size();
    factory().registerOp(nullptr);
    EXPECT_EQ(factory().getPrototypes().size(), count);
}
} // namespace
} // namespace OSG::Test
