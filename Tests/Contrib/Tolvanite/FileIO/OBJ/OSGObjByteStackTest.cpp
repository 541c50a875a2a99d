#include "OSGObjByteStack.h"

#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Piece
{
    unsigned char *bytes;
    std::size_t size;
    unsigned char content;
};

Piece add(ObjByteStack &stack, std::size_t size, unsigned char content)
{
    Piece const piece = {stack.add(size), size, content};
    std::memset(piece.bytes, content, size);
    return piece;
}

bool is_whole(Piece const &piece)
{
    for(std::size_t i = 0; i < piece.size; ++i)
    {
        if(piece.bytes[i] != piece.content)
            return false;
    }
    return true;
}
} // namespace

TEST(ObjByteStack, PiecesKeepTheirBytesWhileOthersComeAndGo)
{
    RandomNumbers random(5);
    ObjByteStack stack;
    std::vector<Piece> pieces;
    for(UInt32 round = 0; round < 20000; ++round)
    {
        if(pieces.empty() || random.below(5) != 0)
        {
            std::size_t const size = 1 + random.below(random.below(50) == 0 ? 100000 : 3000);
            pieces.push_back(add(stack, size, static_cast<unsigned char>(round)));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pieces.back().bytes) % 4, 0u);
            continue;
        }
        std::size_t const left =
            pieces.size() - 1 -
            random.below(std::min<UInt32>(8, static_cast<UInt32>(pieces.size())));
        stack.dropFrom(pieces[left].bytes);
        pieces.resize(left);
        for(std::size_t i = left - std::min<std::size_t>(left, 4); i < left; ++i)
            ASSERT_TRUE(is_whole(pieces[i])) << round;
    }
    for(Piece const &piece : pieces)
        ASSERT_TRUE(is_whole(piece));
}

TEST(ObjByteStack, ABlockIsFreedWithItsFirstPiece)
{
    std::vector<Piece> pieces;
    pieces.reserve(1000);
    UInt64 const before = get_mem_bytes();
    ObjByteStack stack;
    for(UInt32 i = 0; i < 1000; ++i)
        pieces.push_back(add(stack, 2000, 1));
    UInt64 const all = get_mem_bytes() - before;
    EXPECT_LE(all, 2000u * 1000 * 11 / 10);
    stack.dropFrom(pieces[500].bytes);
    EXPECT_LE(get_mem_bytes() - before, all * 6 / 10);
    stack.dropFrom(pieces[0].bytes);
    EXPECT_LE(get_mem_bytes() - before, 4096u); // the list of the blocks
}
