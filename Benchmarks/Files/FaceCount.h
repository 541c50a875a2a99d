#pragma once

/// \file
/// What a read has brought: the benchmarks hold it against what the file has.

#include "OSGGeometry.h"
#include "OSGNodeWalker.h"

namespace OSG::Bench
{
/// Number of primitives below a node; with our readers these are the faces of the file.
inline std::size_t count_faces(Node *scene)
{
    struct Counter
    {
        std::size_t count = 0;

        bool enter(Node *node)
        {
            if(auto const *const geometry = dynamic_cast<Geometry *>(node->getCore()))
                count += geometry->getLengths()->size();
            return true;
        }
        void leave(Node *) {}
    };
    Counter counter;
    walk_children(scene, counter);
    return counter.count;
}
} // namespace OSG::Bench
