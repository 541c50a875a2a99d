#include "OSGPlacedNormals.h"

#include <vector>

#include <gtest/gtest.h>

#include "InstructionSets.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
std::vector<Vec3f> random_vectors(RandomNumbers &random)
{
    std::vector<Vec3f> vectors(random.below(100));
    for(Vec3f &vector : vectors)
    {
        Real32 const scales[] = {0.f, 1e-30f, 1e-6f, 1e-3f, 1.f, 1e18f};
        vector = random.vector() * scales[random.below(6)];
    }
    return vectors;
}

Matrix random_matrix(RandomNumbers &random)
{
    Matrix matrix;
    for(UInt32 c = 0; c < 4; ++c)
    {
        for(UInt32 r = 0; r < 3; ++r)
            matrix[c][r] = random.real(-2, 2);
    }
    return matrix;
}

TEST(PlacedNormals, HaveTheSameBitsWithEveryInstructionSetAndNothingIsWrittenBehindThem)
{
    for_each_instruction_set(
        []
        {
            RandomNumbers random(72);
            for(int round = 0; round < 500; ++round)
            {
                Matrix const matrix = random_matrix(random);
                std::vector<Vec3f> normals = random_vectors(random);
                std::size_t const count = normals.size();
                normals.push_back(Vec3f(7, 7, 7));
                std::vector<Vec3f> expected = normals;
                Matrix const *const place = round % 2 == 0 ? &matrix : nullptr;
                place_normals(normals.data(), count, place);
                place_normals_slowly(expected.data(), count, place);
                ASSERT_TRUE(have_same_bits(normals.data(), expected.data(),
                                           sizeof(Vec3f) * normals.size()));
            }
        });
}

TEST(PlacedNormals, FollowTheLinearPartOfTheMatrixAndHaveLengthOne)
{
    Matrix matrix;
    matrix.setScale(2, 5, 0);
    matrix[3] = {100, 200, 300, 1};
    Vec3f normals[] = {Vec3f(1, 0, 0), Vec3f(0, -1, 0), Vec3f(0, 0, 1)};
    place_normals(normals, 3, &matrix);
    EXPECT_EQ(normals[0], Vec3f(1, 0, 0));
    EXPECT_EQ(normals[1], Vec3f(0, -1, 0));
    EXPECT_EQ(normals[2], Vec3f(0, 0, 0)); // too short for a direction
}
} // namespace
