#pragma once

#include <string>

namespace OSG
{
class Node;
}

namespace OSG::Test
{
/// What a writer of OBJ files writes, apart from the lines of the headers.
struct ObjTexts
{
    std::string scene;   ///< from the line "o Geometry" on
    std::string library; ///< from behind the header
};

/// The slow, obvious writer: it calls itself for each node, asks each node for its matrix, and
/// writes each number to a stream.
ObjTexts write_obj_slowly(Node *root);
} // namespace OSG::Test
