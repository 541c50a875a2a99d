#pragma once

/// \file
/// Matrices of 3DS records: columns of floats.

#include "OSGMatrix.h"

namespace OSG
{
template <class Value = Real32>
TransformationMatrix<Value> as_matrix(float const (&columns)[4][4])
{
    TransformationMatrix<Value> matrix;
    for(UInt32 c = 0; c < 4; ++c)
    {
        for(UInt32 r = 0; r < 4; ++r)
            matrix[c][r] = columns[c][r];
    }
    return matrix;
}

/// The matrix of a node, which has had two names in lib3ds.
template <class Node>
auto const &matrix_of(Node const &node)
{
    if constexpr(requires { node.matrixNode; })
        return node.matrixNode;
    else
        return node.matrix;
}
} // namespace OSG
