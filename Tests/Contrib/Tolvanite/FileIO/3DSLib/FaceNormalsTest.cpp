#include "FaceNormals.h"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "InstructionSets.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using Triple = std::array<float, 3>;

struct RandomMesh
{
    std::vector<Triple> vertices;
    std::vector<Lib3dsFace> faces;

    explicit RandomMesh(RandomNumbers &random)
        : vertices(1 + random.below(60))
        , faces(random.below(200))
    {
        // Most faces at the smaller scales have normals that become an axis. Where the numbers are
        // whole, normals often have equal components.
        float const scales[] = {0.f, 1e-30f, 1e-4f, 1e-3f, 1.f, 1e18f};
        float const ofAll = scales[random.below(6)];
        bool const areWhole = random.below(2) == 0;
        for(Triple &vertex : vertices)
        {
            float const scale = areWhole ? ofAll : scales[random.below(6)];
            for(float &number : vertex)
            {
                float const value = random.real(-2, 2);
                number = (areWhole ? std::round(value) : value) * scale;
            }
        }
        auto const corner = [&]
        { return static_cast<unsigned short>(random.below(UInt32(vertices.size()))); };
        for(Lib3dsFace &face : faces)
            face = {{corner(), corner(), corner()}, 0, -1, 0};
    }

    Lib3dsMesh record()
    {
        Lib3dsMesh mesh{};
        mesh.nvertices = static_cast<unsigned short>(vertices.size());
        mesh.vertices = reinterpret_cast<float(*)[3]>(vertices.data());
        mesh.nfaces = static_cast<unsigned short>(faces.size());
        mesh.faces = faces.data();
        return mesh;
    }
};

TEST(FaceNormals, HaveTheSameBitsWithEveryInstructionSetAndNothingIsWrittenBehindThem)
{
    for_each_instruction_set(
        []
        {
            RandomNumbers random(71);
            for(int round = 0; round < 500; ++round)
            {
                RandomMesh mesh(random);
                Lib3dsMesh const record = mesh.record();
                std::vector<Triple> normals(mesh.faces.size() + 1, Triple{7, 7, 7});
                std::vector<Triple> expected = normals;
                Lib3ds::face_normals(record, reinterpret_cast<float(*)[3]>(normals.data()));
                Lib3ds::face_normals_slowly(record, reinterpret_cast<float(*)[3]>(expected.data()));
                ASSERT_TRUE(have_same_bits(normals.data(), expected.data(),
                                           sizeof(Triple) * normals.size()));
            }
        });
}

TEST(FaceNormals, AreNotNumbersWhereACornerIsNone)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float vertices[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {nan, 0, 0}};
    Lib3dsFace faces[2] = {{{0, 1, 3}, 0, -1, 0}, {{0, 1, 2}, 0, -1, 0}};
    Lib3dsMesh mesh{};
    mesh.vertices = vertices;
    mesh.nvertices = 4;
    mesh.faces = faces;
    mesh.nfaces = 2;
    for_each_instruction_set(
        [&mesh]
        {
            float normals[2][3];
            Lib3ds::face_normals(mesh, normals);
            EXPECT_NE(normals[0][1], normals[0][1]);
            EXPECT_EQ(normals[1][2], 1.f);
        });
}
} // namespace
