#include "OSGRenderPartition.h"

namespace OSG
{
void RenderPartition::pushMatrix(Matrix const &toParent) { enterSpace(_current.matrix * toParent); }

void RenderPartition::enterSpace(Matrix const &toEye)
{
    _stack.push_back(_current);
    _current = {takeMatrixId(), toEye};
    _modelMatrixValid = false;
}

void RenderPartition::popMatrix()
{
    if(_stack.empty())
        return;
    _current = _stack.back();
    _stack.pop_back();
    _modelMatrixValid = false;
}

void RenderPartition::setMatrix(Matrix const &toEye)
{
    _stack.clear();
    _sights.clear();
    _current = {takeMatrixId(), toEye};
    _modelMatrixValid = false;
}

void RenderPartition::popVisibility()
{
    if(!_sights.empty())
        _sights.pop_back();
}
} // namespace OSG
