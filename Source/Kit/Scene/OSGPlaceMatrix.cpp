#include "OSGPlaceMatrix.h"

#include "OSGTransform.h"

namespace OSG
{
void accumulate_place(NodeCore &core, Matrix &matrix)
{
    if(auto const *transform = dynamic_cast<Transform *>(&core))
        matrix.mult(transform->getMatrix());
    else
        core.accumulateMatrix(matrix);
}

namespace
{
/// Multiplies `matrix` by the cores from `top` down to `node`, both included. Null does nothing.
void accumulate_way(Node const *top, Node const *node, Matrix &matrix)
{
    std::vector<Node const *> way;
    for(; node != nullptr; node = node != top ? node->getParent() : nullptr)
        way.push_back(node);
    for(auto it = way.rbegin(); it != way.rend(); ++it)
    {
        if(NodeCore *const core = (*it)->getCore())
            accumulate_place(*core, matrix);
    }
}
} // namespace

std::optional<Matrix> place_of(NodePath const &path, Node const *root)
{
    if(!path.isIn(root))
        return std::nullopt;
    Matrix matrix;
    Node const *top = root;
    for(Node const *visiting : path.getVisiting())
    {
        accumulate_way(top, visiting, matrix);
        top = visiting->getCore()->getOtherTree();
    }
    Node const *const node = path.getNode();
    if(node != top)
        accumulate_way(top, node->getParent(), matrix);
    return matrix;
}
} // namespace OSG
