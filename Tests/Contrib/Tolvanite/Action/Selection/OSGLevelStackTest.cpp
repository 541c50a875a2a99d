#include "OSGLevelStack.h"

#include <string>

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
using Stack = LevelStack<std::string, 2>;

TEST(LevelStack, GivesBackWhatWasPushedBelowAndBeyondItsFixedLevels)
{
    Stack stack;
    EXPECT_TRUE(stack.empty());
    for(char const *text : {"a", "b", "c", "d"})
        stack.push(text);
    EXPECT_EQ(stack.size(), 4u);
    for(char const *text : {"d", "c", "b", "a"})
    {
        EXPECT_EQ(stack.top(), text);
        stack.pop();
    }
    EXPECT_TRUE(stack.empty());
}

TEST(LevelStack, TakesItsOwnTopAsTheNextElement)
{
    Stack stack;
    stack.push("a");
    for(int i = 0; i < 9; ++i)
        stack.push(stack.top());
    EXPECT_EQ(stack.size(), 10u);
    EXPECT_EQ(stack.top(), "a");
}

TEST(LevelStack, ACopyHasAllLevelsOfItsOwn)
{
    Stack stack;
    for(char const *text : {"a", "b", "c"})
        stack.push(text);
    Stack copy(stack);
    stack.pop();
    EXPECT_EQ(copy.top(), "c");
    copy.pop();
    EXPECT_EQ(copy.top(), "b");
}

TEST(LevelStack, UsesTheHeapBeyondItsFixedLevelsAloneAndFreesItOnRequest)
{
    UInt64 const before = get_mem_bytes();
    LevelStack<int, 4> stack;
    for(int i = 0; i < 4; ++i)
        stack.push(i);
    EXPECT_EQ(get_mem_bytes(), before);
    stack.push(4);
    EXPECT_GT(get_mem_bytes(), before);
    stack.release();
    EXPECT_EQ(get_mem_bytes(), before);
    EXPECT_TRUE(stack.empty());
}
} // namespace
} // namespace OSG::Test
