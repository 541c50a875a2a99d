#include "OSGSmallBlocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// The program has the pool's sources in itself, so that the sanitizers look at the pool too.
namespace
{
using namespace OSG;

struct Taken
{
    unsigned char *address;
    std::size_t size;
    unsigned char fill;
};

Taken take(std::size_t size, unsigned char fill)
{
    auto *const address = static_cast<unsigned char *>(take_small_block(size));
    if(address != nullptr)
        std::memset(address, fill, size);
    return {address, size, fill};
}

/// Frees a block. False where its bytes are not those that it was filled with.
bool give(Taken const &block)
{
    bool const isWhole = std::all_of(block.address, block.address + block.size,
                                     [&block](unsigned char byte) { return byte == block.fill; });
    give_small_block(block.address, small_block_size(block.address));
    return isWhole;
}

void give_all(std::vector<Taken> &blocks)
{
    for(Taken const &block : blocks)
        ASSERT_TRUE(give(block));
    blocks.clear();
}

std::vector<Taken> take_many(std::size_t count, std::size_t size)
{
    std::vector<Taken> blocks(count);
    std::generate(blocks.begin(), blocks.end(), [size] { return take(size, 1); });
    return blocks;
}

TEST(SmallBlocks, BlockOfEverySizeIsAlignedAndLargeEnoughAndTellsItsSize)
{
    std::vector<Taken> blocks;
    for(std::size_t size = 1; size <= MostSmallBytes; ++size)
    {
        blocks.push_back(take(size, static_cast<unsigned char>(size)));
        ASSERT_NE(blocks.back().address, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back().address) % 16, 0u);
        EXPECT_GE(small_block_size(blocks.back().address), size);
        EXPECT_LT(small_block_size(blocks.back().address), size + 16);
        EXPECT_EQ(small_block_size(blocks.back().address), small_block_room(size));
    }
    give_all(blocks);
}

TEST(SmallBlocks, OtherAddressesHaveNoSize)
{
    Taken const own = take(16, 1);
    int onStack = 0;
    void *const onHeap = std::malloc(16);
    EXPECT_EQ(small_block_size(&onStack), 0u);
    EXPECT_EQ(small_block_size(onHeap), 0u);
    EXPECT_EQ(small_block_size(&small_chunk_map), 0u);
    EXPECT_EQ(small_block_size(nullptr), 0u);
    EXPECT_EQ(small_block_size(reinterpret_cast<void *>(~std::uintptr_t(0))), 0u);
    std::free(onHeap);
    EXPECT_TRUE(give(own));
}

TEST(SmallBlocks, FreedBlockIsTheNextOneOfItsSize)
{
    void *const first = take_small_block(40);
    give_small_block(first, 48);
    EXPECT_EQ(take_small_block(33), first);
    give_small_block(first, 48);
}

TEST(SmallBlocks, AllBlocksOfManyChunksAreApart)
{
    for(std::size_t const size : {16u, 48u, 112u, 240u, 256u})
    {
        std::vector<Taken> blocks = take_many(20000, size);
        std::sort(blocks.begin(), blocks.end(),
                  [](Taken const &a, Taken const &b) { return a.address < b.address; });
        for(std::size_t i = 1; i < blocks.size(); ++i)
            ASSERT_GE(blocks[i].address, blocks[i - 1].address + size);
        give_all(blocks);
    }
}

// --- memory goes back ---

/// A number of /proc/self/statm, in bytes.
std::size_t memory_number(int index)
{
    std::ifstream in("/proc/self/statm");
    std::size_t pages = 0;
    for(int i = 0; i <= index; ++i)
        in >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}
std::size_t resident_bytes() { return memory_number(1); }
std::size_t data_bytes() { return memory_number(5); }

TEST(SmallBlocks, MemoryOfADroppedSceneGoesBackToTheSystem)
{
    constexpr std::size_t SceneBytes = std::size_t(160) << 20;
    std::size_t const before = small_area_bytes();
    std::vector<Taken> blocks = take_many(SceneBytes / 112, 112);
    std::size_t const residentFull = resident_bytes();
    EXPECT_GE(small_area_bytes(), SceneBytes);
    give_all(blocks);
    EXPECT_LE(small_area_bytes(), before + MostIdleBytes + (std::size_t(4) << 20));
    EXPECT_LE(resident_bytes() + SceneBytes - MostIdleBytes - (std::size_t(16) << 20),
              residentFull);
}

TEST(SmallBlocks, MemoryThatWentBackServesTheNextSceneOfOtherSizes)
{
    constexpr std::size_t SceneBytes = std::size_t(100) << 20;
    std::size_t most = 0;
    for(std::size_t const size : {112u, 64u, 256u, 16u})
    {
        std::vector<Taken> blocks = take_many(SceneBytes / size, size);
        most = std::max(most, small_area_bytes());
        give_all(blocks);
    }
    EXPECT_LE(most, SceneBytes + MostIdleBytes + (std::size_t(8) << 20));
}

TEST(SmallBlocks, OneBlockThatStaysKeepsItsBytesWhileTheOthersGo)
{
    std::vector<Taken> blocks = take_many(1000000, 64);
    std::vector<Taken> kept;
    for(std::size_t i = 0; i < blocks.size(); i += 100000)
    {
        kept.push_back(blocks[i]);
        std::swap(blocks[i], blocks.back());
        blocks.pop_back();
    }
    give_all(blocks);
    give_all(kept);
}

// --- random histories ---

/// A history of random steps. What is alive is known to it, so every block that overlaps another
/// one is found by its bytes.
class History
{
  public:
    explicit History(unsigned seed)
        : _random(seed)
    {
    }
    ~History() { EXPECT_TRUE(_isWhole); }
    History(History const &) = delete;
    History &operator=(History const &) = delete;

    /// Blocks in `exchange` come from other threads and go to them.
    void run(std::size_t steps, std::vector<Taken> &exchange, std::mutex &guard)
    {
        for(std::size_t i = 0; i < steps; ++i)
        {
            switch(std::size_t const kind = below(20); kind)
            {
            case 0:
                swapWith(exchange, guard);
                break;
            case 1:
                giveUpTo(below(300));
                break;
            default:
                if(_alive.empty() || kind < 12)
                    takeOne();
                else
                    giveUpTo(1);
            }
        }
        giveUpTo(_alive.size());
    }

  private:
    std::size_t below(std::size_t end) { return _random() % end; }
    void takeOne()
    {
        _alive.push_back(take(1 + below(MostSmallBytes), static_cast<unsigned char>(_random())));
    }
    void giveUpTo(std::size_t count)
    {
        for(; count != 0 && !_alive.empty(); --count)
        {
            std::swap(_alive[below(_alive.size())], _alive.back());
            _isWhole = give(_alive.back()) && _isWhole;
            _alive.pop_back();
        }
    }
    void swapWith(std::vector<Taken> &exchange, std::mutex &guard)
    {
        std::lock_guard<std::mutex> const hold(guard);
        exchange.swap(_alive);
    }

    std::mt19937 _random;
    std::vector<Taken> _alive;
    bool _isWhole = true;
};

TEST(SmallBlocks, RandomHistoryOfOneThreadKeepsTheBytesOfEveryBlock)
{
    std::vector<Taken> exchange;
    std::mutex guard;
    for(unsigned seed = 1; seed <= 5; ++seed)
        History(seed).run(100000, exchange, guard);
    give_all(exchange);
}

TEST(SmallBlocks, RandomHistoriesOfManyThreadsThatExchangeBlocksKeepTheBytesOfEveryBlock)
{
    std::vector<Taken> exchange;
    std::mutex guard;
    for(unsigned round = 0; round < 3; ++round)
    {
        std::vector<std::thread> threads;
        for(unsigned seed = 1; seed <= 4; ++seed)
            threads.emplace_back([seed, round, &exchange, &guard]
                                 { History(10 * round + seed).run(50000, exchange, guard); });
        for(std::thread &thread : threads)
            thread.join();
    }
    give_all(exchange);
}

// --- threads ---

TEST(SmallBlocks, ThreadsThatEndLeaveTheirFreeBlocksToOthers)
{
    auto const work = []
    {
        std::vector<Taken> blocks;
        for(std::size_t size = 16; size <= MostSmallBytes; size += 16)
            blocks.push_back(take(size, 3));
        give_all(blocks);
    };
    std::thread(work).join();
    std::size_t const before = small_area_bytes();
    // With 4 KiB a size, 300 threads would take 19 MiB.
    for(int i = 0; i < 300; ++i)
        std::thread(work).join();
    EXPECT_EQ(small_area_bytes(), before);
}

TEST(SmallBlocks, BlocksThatAnotherThreadFreesAreUsedAgain)
{
    std::size_t most = 0;
    for(int i = 0; i < 30; ++i)
    {
        std::vector<Taken> blocks = take_many(100000, 112);
        std::thread([&blocks] { give_all(blocks); }).join();
        most = std::max(most, small_area_bytes());
    }
    EXPECT_LE(most, MostIdleBytes + (std::size_t(32) << 20));
}

void use_blocks(void *isDone)
{
    std::vector<Taken> blocks = take_many(500, 80);
    give_all(blocks);
    *static_cast<bool *>(isDone) = true;
}

TEST(SmallBlocks, ThreadUsesBlocksAfterItsListsHaveEnded)
{
    take_many(1, 16);
    pthread_key_t key; // younger than the pool's, so its destructor runs later
    ASSERT_EQ(pthread_key_create(&key, &use_blocks), 0);
    bool isDone = false;
    std::thread(
        [key, &isDone]
        {
            give(take(80, 1));
            pthread_setspecific(key, &isDone);
        })
        .join();
    EXPECT_TRUE(isDone);
    pthread_key_delete(key);
}

// --- processes ---

/// Forks and waits. True if the child's work succeeds.
template <class Work>
bool succeeds_in_child(Work const &work)
{
    pid_t const child = fork();
    if(child == 0)
    {
        alarm(30); // ends a child that waits for a lock for ever
        _exit(work() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

bool uses_blocks()
{
    bool isWhole = true;
    for(Taken const &block : take_many(3000, 112))
        isWhole = give(block) && isWhole;
    return isWhole;
}

TEST(SmallBlocks, ChildUsesThePoolAfterAForkWhileOtherThreadsWereInIt)
{
    // The first block that a thread takes for itself sets the handlers of forks.
    EXPECT_TRUE(give(take(80, 1)));
    std::atomic<bool> isOver{false};
    std::vector<std::thread> threads;
    for(int i = 0; i < 3; ++i)
    {
        threads.emplace_back(
            [&isOver]
            {
                // So many at once that some thread is nearly always among the chunks.
                while(!isOver)
                    give_small_blocks(take_small_blocks(7, 5000));
            });
    }
    int forks = 0;
    while(forks < 50 && succeeds_in_child(&uses_blocks))
        ++forks;
    EXPECT_EQ(forks, 50);
    isOver = true;
    for(std::thread &thread : threads)
        thread.join();
}

// A host's handlers that are older than the pool's run between them, while the pool is locked.
bool handlers_use_blocks = false;
int handlers_run = 0;
void handle_fork()
{
    if(handlers_use_blocks && uses_blocks())
        ++handlers_run;
}
[[maybe_unused]] int const older_handlers =
    pthread_atfork(&handle_fork, &handle_fork, &handle_fork);

TEST(SmallBlocks, HandlersOfAForkUseBlocks)
{
    EXPECT_TRUE(uses_blocks());
    std::thread([] {}).join(); // with one thread only, nobody would wait for a lock
    handlers_use_blocks = true;
    EXPECT_TRUE(succeeds_in_child([] { return handlers_run == 2; }));
    handlers_use_blocks = false;
    EXPECT_EQ(handlers_run, 2);
}

TEST(SmallBlocks, WithoutMemoryThereIsNoBlockAndThePoolStaysWhole)
{
    bool const isWhole = succeeds_in_child(
        []
        {
            std::vector<Taken> blocks;
            blocks.reserve(2000000);
            rlimit const limit{data_bytes() + (std::size_t(64) << 20), RLIM_INFINITY};
            if(setrlimit(RLIMIT_DATA, &limit) != 0)
                return false;
            do
                blocks.push_back(take(256, 1));
            while(blocks.back().address != nullptr && blocks.size() < blocks.capacity());
            bool const hasRunOut = blocks.back().address == nullptr;
            blocks.pop_back();
            bool areWhole = true;
            for(Taken const &block : blocks)
                areWhole = give(block) && areWhole;
            return hasRunOut && areWhole && uses_blocks();
        });
    EXPECT_TRUE(isWhole);
}
} // namespace
