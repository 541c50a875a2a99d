#pragma once

#include "OSGMatrix.h"

namespace OSG
{
/// The matrix of a core that depends on the viewer. Rendering sets the matrix. Before the first
/// rendering it is the identity.
class RenderedMatrix
{
  public:
    Matrix const &getRenderedMatrix() const { return _renderedMatrix; }
    /// True where the matrix is another one than before.
    bool setRenderedMatrix(Matrix const &matrix)
    {
        bool const isNew = !(matrix == _renderedMatrix);
        _renderedMatrix = matrix;
        return isNew;
    }

  protected:
    ~RenderedMatrix() = default;

  private:
    Matrix _renderedMatrix;
};

/// For rendering: sets the matrix of a core, and marks the volumes of its nodes where it is another
/// one.
template <class Core>
void set_rendered(Core &core, Matrix const &matrix)
{
    if(core.setRenderedMatrix(matrix))
        core.invalidateVolume();
}
} // namespace OSG
