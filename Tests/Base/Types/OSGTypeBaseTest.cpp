#include "OSGTypeBase.h"

#include <gtest/gtest.h>

#include "LogCapture.h"

namespace OSG
{
namespace
{
TEST(TypeBase, TakesTheNextIdWhenItIsMade)
{
    static DataType const first("TypeBaseTest first", nullptr);
    static DataType const second("TypeBaseTest second", nullptr);
    EXPECT_EQ(second.getId(), first.getId() + 1);
    EXPECT_EQ(TypeFactory::the().findType(first.getId()), &first);
    EXPECT_STREQ(first.getCName(), "TypeBaseTest first");
}

TEST(TypeBase, ParentsAreFoundWhicheverWasMadeFirst)
{
    static DataType const child("TypeBaseTest child", "TypeBaseTest parent");
    static DataType const parent("TypeBaseTest parent", nullptr);
    EXPECT_EQ(child.getParent(), nullptr);
    TypeFactory::the().resolve();
    EXPECT_EQ(child.getParent(), &parent);
    EXPECT_TRUE(child.isDerivedFrom(parent));
    EXPECT_TRUE(child.isDerivedFrom(child));
    EXPECT_FALSE(parent.isDerivedFrom(child));
}

TEST(TypeBase, TypesAreFoundByNameAndNameSpace)
{
    static DataType const plain("TypeBaseTest same name", nullptr, 0);
    static DataType const other("TypeBaseTest same name", nullptr, 1);
    EXPECT_EQ(TypeFactory::the().findType("TypeBaseTest same name"), &plain);
    EXPECT_EQ(TypeFactory::the().findType("TypeBaseTest same name", 1), &other);
    EXPECT_EQ(TypeFactory::the().findType("TypeBaseTest no such name"), nullptr);
    EXPECT_EQ(TypeFactory::the().findType(0xFFFFFFFFu), nullptr);
}

TEST(TypeBase, OnlyTheSameTypeIsEqual)
{
    static DataType const one("TypeBaseTest one", nullptr);
    static DataType const twin("TypeBaseTest one", nullptr);
    EXPECT_TRUE(one == one);
    EXPECT_TRUE(one != twin);
}
} // namespace
} // namespace OSG
