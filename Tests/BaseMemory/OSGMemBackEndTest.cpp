#include <cstdlib>

#include <gtest/gtest.h>

#include "OSGMemManager.h"

// A program of its own, whose global operators stay standard: nothing takes a block before the
// test.
namespace
{
using namespace OSG;

int blocks = 0;

void *counted_allocate(std::size_t size)
{
    ++blocks;
    return std::malloc(size);
}

void counted_release(void *block)
{
    --blocks;
    std::free(block);
}

std::size_t size_of_hundred(void *) { return 100; }

TEST(MemBackEnd, ReplacedBeforeTheFirstBlockItServesAll)
{
    ASSERT_TRUE(set_mem_back_end({&counted_allocate, &counted_release, &size_of_hundred}));
    void *const block = MemMalloc(7);
    EXPECT_EQ(blocks, 1);
    EXPECT_EQ(get_mem_bytes(), 100u);
    EXPECT_FALSE(set_mem_back_end({&std::malloc, &std::free, &size_of_hundred}));
    MemFree(block);
    EXPECT_EQ(blocks, 0);
    EXPECT_EQ(get_mem_bytes(), 0u);
}
} // namespace
