/// \file
/// Where the corners of triangles lie, beside another reader of 3DS files.

#ifdef TEST_WITH_LIB3DS

#include <lib3ds/file.h>
#include <lib3ds/mesh.h>
#include <lib3ds/node.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

#include "OSGMatrix.h"
#include "Scene3DS.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using Numbers = std::vector<Real64>;

/// The coordinates of all corners of triangles, each axis in ascending order.
struct Corners
{
    Numbers axes[3];

    void add(Real64 x, Real64 y, Real64 z)
    {
        axes[0].push_back(x);
        axes[1].push_back(y);
        axes[2].push_back(z);
    }
    void sort()
    {
        for(Numbers &axis : axes)
            std::sort(axis.begin(), axis.end());
    }
};

using Matrix64 = TransformationMatrix<Real64>;

Matrix64 matrix_of(Lib3dsMatrix const &columns)
{
    Matrix64 matrix;
    for(int c = 0; c < 4; ++c)
    {
        for(int r = 0; r < 4; ++r)
            matrix[c][r] = columns[c][r];
    }
    return matrix;
}

void add_mesh(Lib3dsMesh const &mesh, Matrix64 const &place, Corners &corners)
{
    for(unsigned face = 0; face < mesh.faces; ++face)
    {
        for(unsigned short const vertex : mesh.faceL[face].points)
        {
            float const *const at = mesh.pointL[vertex].pos;
            auto const point = place * Point<Real64, 3>(at[0], at[1], at[2]);
            corners.add(point[0], point[1], point[2]);
        }
    }
}

void add_nodes(Lib3dsFile *file, Lib3dsNode *node, Corners &corners)
{
    for(; node != nullptr; node = node->next)
    {
        Lib3dsMesh *const mesh =
            node->type == LIB3DS_OBJECT_NODE ? lib3ds_file_mesh_by_name(file, node->name) : nullptr;
        if(mesh != nullptr)
        {
            Matrix64 inverse;
            inverse.invertFrom(matrix_of(mesh->matrix));
            float const *const pivot = node->data.object.pivot;
            Matrix64 fromPivot;
            fromPivot.setTranslate(-Real64(pivot[0]), -Real64(pivot[1]), -Real64(pivot[2]));
            add_mesh(*mesh, matrix_of(node->matrix) * fromPivot * inverse, corners);
        }
        add_nodes(file, node->childs, corners);
    }
}

Corners read_by_other(std::string const &path)
{
    Corners corners;
    Lib3dsFile *const file = lib3ds_file_load(path.c_str());
    EXPECT_NE(file, nullptr);
    lib3ds_file_eval(file, 0);
    for(Lib3dsMesh *mesh = file->meshes; file->nodes == nullptr && mesh != nullptr;
        mesh = mesh->next)
        add_mesh(*mesh, Matrix64(), corners);
    add_nodes(file, file->nodes, corners);
    lib3ds_file_free(file);
    corners.sort();
    return corners;
}

Corners read_by_us(std::string const &path)
{
    LogCapture const log;
    Scene3DS scene;
    scene.root = UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(path.c_str()));
    Corners corners;
    for(Geometry const *geometry : scene.geometries())
    {
        for(auto it = geometry->beginTriangles(); it != geometry->endTriangles(); ++it)
        {
            for(Int32 i = 0; i < 3; ++i)
            {
                Pnt3f const at = it.getPosition(i);
                corners.add(at[0], at[1], at[2]);
            }
        }
    }
    corners.sort();
    return corners;
}

TEST(OtherReaderOf3DS, FindsTheCornersOfAllModelsAtTheSamePlaces)
{
    int models = 0;
    for(auto const &entry :
        std::filesystem::recursive_directory_iterator(TEST_SOURCE_DIR "/.cache/fixtures"))
    {
        std::string const path = entry.path().string();
        std::string suffix = entry.path().extension().string();
        if((suffix != ".3ds" && suffix != ".3DS") || path.find("/invalid/") != std::string::npos)
            continue;
        ++models;
        Corners const ours = read_by_us(path);
        Corners const other = read_by_other(path);
        for(int axis = 0; axis < 3; ++axis)
        {
            ASSERT_EQ(ours.axes[axis].size(), other.axes[axis].size()) << path;
            for(std::size_t i = 0; i < other.axes[axis].size(); ++i)
            {
                Real64 const value = other.axes[axis][i];
                ASSERT_NEAR(ours.axes[axis][i], value, 1e-4 * (1 + std::abs(value))) << path;
            }
        }
    }
    if(models == 0)
        GTEST_SKIP() << "no models; scripts/fixtures fetches them";
}
} // namespace

#endif
