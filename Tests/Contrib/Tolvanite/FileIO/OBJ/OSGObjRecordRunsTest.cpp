/// \file
/// Runs of faces that reach over many packed chunks, held against plain lists of the same faces.

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "OSGObjIndexMask.h"

using namespace OSG;

namespace
{
using Face = std::vector<ObjTiePoint>;
using Words = std::vector<UInt32, MemAllocator<UInt32>>;

/// Which indices corners get.
enum class Corners
{
    PositionsAlone,
    Equal,
    Different,
    OftenMissing,
    FarApart
};

ObjTiePoint random_corner(std::mt19937 &random, Corners corners)
{
    auto const near = [&random] { return static_cast<Int32>(random() % 300); };
    auto const any = [&random] { return static_cast<Int32>(random()); };
    Int32 const position = near();
    switch(corners)
    {
    case Corners::PositionsAlone:
        return {{position, -1, -1}};
    case Corners::Equal:
        return {{position, position, position}};
    case Corners::Different:
        return {{position, near() * 200, near() - 5}};
    case Corners::OftenMissing:
        return {{near() - 3, near() - 200, random() % 2 == 0 ? -1 : position}};
    case Corners::FarApart:
        break;
    }
    return {{any(), any(), any()}};
}

/// Faces in the order of the file.
std::vector<Face> random_faces(std::mt19937 &random)
{
    auto const corners = static_cast<Corners>(random() % 5);
    std::size_t const least = random() % 4;
    std::size_t const others = random() % 3;
    std::size_t const longFaces = random() % 8 == 0 ? 2000 : 0;
    std::vector<Face> faces(random() % 4 == 0 ? random() % 4000 : random() % 40);
    for(Face &face : faces)
    {
        face.resize(least + random() % (others + 1) + (random() % 50 == 0 ? longFaces : 0));
        for(ObjTiePoint &corner : face)
            corner = random_corner(random, corners);
    }
    return faces;
}

/// The rule, face by face, newest first.
ObjIndexMask slow_mask(std::vector<Face> const &newestFirst)
{
    ObjIndexMask result;
    for(Face const &face : newestFirst)
    {
        UInt32 mask = 0;
        for(ObjTiePoint const &corner : face)
        {
            for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
            {
                if(corner.index[kind] < 0)
                    continue;
                mask |= 1u << kind;
                if(corner.index[kind] != corner.index[ObjPositionIndex])
                    result.singleIndex = false;
            }
        }
        if(result.mask == 0)
            result.mask = mask;
        else if(mask != result.mask && (mask & ObjPositionBit) == 0)
            result.unmatch = true;
        else
            result.mask &= mask;
        if(result.unmatch)
            break;
    }
    return result;
}

void expect_mask(ObjFaces const &faces, std::vector<Face> const &newestFirst)
{
    ObjIndexMask const expected = slow_mask(newestFirst);
    ObjIndexMask const actual = derive_index_mask(faces);
    ASSERT_EQ(actual.unmatch, expected.unmatch);
    if(expected.unmatch)
        return;
    EXPECT_EQ(actual.mask, expected.mask);
    EXPECT_EQ(actual.singleIndex, expected.singleIndex);
}

void expect_faces(ObjFaces const &faces, std::vector<Face> const &newestFirst)
{
    ASSERT_EQ(faces.size(), newestFirst.size());
    std::size_t number = 0;
    for(std::span<ObjTiePoint const> face : faces)
    {
        Face const &expected = newestFirst.at(number++);
        ASSERT_TRUE(std::equal(face.begin(), face.end(), expected.begin(), expected.end()));
    }
    EXPECT_EQ(number, newestFirst.size());
}

void expect_arrays(ObjFaces faces, std::vector<Face> const &newestFirst)
{
    for(ObjIndexKind kind : {ObjNormalIndex, ObjTexCoordIndex, ObjPositionIndex})
    {
        Words expected, actual;
        for(Face const &face : newestFirst)
        {
            for(ObjTiePoint const &corner : face)
                expected.push_back(static_cast<UInt32>(corner.index[kind]));
        }
        faces.takeIndices(kind, actual);
        ASSERT_EQ(actual, expected);
    }
    Words expected, actual;
    for(Face const &face : newestFirst)
        expected.push_back(static_cast<UInt32>(face.size()));
    faces.appendSizes(actual);
    ASSERT_EQ(actual, expected);
}

/// Adds the faces at once. A kind that no corner has is left out.
void add_together(std::span<Face const> faces, ObjRecords &records)
{
    std::vector<Int32> sizes;
    std::vector<Int32> indices[ObjIndexKindCount];
    bool isThere[ObjIndexKindCount] = {true, false, false};
    for(Face const &face : faces)
    {
        sizes.push_back(static_cast<Int32>(face.size()));
        for(ObjTiePoint const &corner : face)
        {
            for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
            {
                indices[kind].push_back(corner.index[kind]);
                isThere[kind] = isThere[kind] || corner.index[kind] != -1;
            }
        }
    }
    Int32 const *of[ObjIndexKindCount];
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
        of[kind] = isThere[kind] ? indices[kind].data() : nullptr;
    records.addFaces(sizes, {of[0], of[1], of[2]}, indices[0].size());
}

void add_faces(std::mt19937 &random, std::span<Face const> faces, ObjRecords &records)
{
    while(!faces.empty())
    {
        std::size_t const together = std::min<std::size_t>(faces.size(), random() % 200);
        add_together(faces.first(together), records);
        faces = faces.subspan(together);
        if(faces.empty())
            return;
        for(ObjTiePoint const &corner : faces[0])
            records.addTiePoint(corner);
        records.endFace();
        faces = faces.subspan(1);
    }
}

/// Puts runs into records and takes them out again, the newest first.
void round_trip(std::mt19937 &random)
{
    ObjRecords records;
    std::vector<std::vector<Face>> runs;
    for(std::size_t count = 1 + random() % 20; count > 0; --count)
    {
        std::vector<Face> faces = random_faces(random);
        if(faces.empty())
            continue;
        records.startMesh();
        add_faces(random, faces, records);
        std::reverse(faces.begin(), faces.end());
        runs.push_back(std::move(faces));
    }
    for(std::size_t run = 0; run < runs.size(); ++run)
        expect_faces(records.faces(run), runs[runs.size() - 1 - run]);
    for(; !runs.empty(); runs.pop_back())
    {
        expect_mask(records.faces(0), runs.back());
        expect_arrays(records.faces(0), runs.back());
        records.dropNewestMesh();
    }
}
} // namespace

TEST(ObjRecordRuns, ComeBackAsTheyWere)
{
    std::mt19937 random(1);
    for(int round = 0; round < 150 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        round_trip(random);
    }
}

TEST(ObjRecordRuns, TakingIndicesGivesTheirMemoryBack)
{
    UInt64 const before = get_mem_bytes();
    ObjRecords records;
    std::mt19937 random(1);
    for(int face = 0; face < 100000; ++face)
    {
        for(int corner = 0; corner < 3; ++corner)
            records.addTiePoint(random_corner(random, Corners::Different));
        records.endFace();
    }
    ObjFaces faces = records.faces(0);
    for(ObjIndexKind kind : {ObjNormalIndex, ObjTexCoordIndex, ObjPositionIndex})
    {
        Words words;
        faces.takeIndices(kind, words);
    }
    // Chunks stay, and the room that one is unpacked into, but nothing of the 900,000 indices.
    EXPECT_LT(get_mem_bytes() - before, 900000 / 10);
}
