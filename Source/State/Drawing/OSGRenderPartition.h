#pragma once

#include <vector>

#include "OSGDrawEnv.h"

namespace OSG
{
/// Where a render traversal stands: the space of the current node and what of it can be seen.
class OSG_STATE_API RenderPartition
{
  public:
    /// A matrix with a number that no other matrix of the traversal has.
    struct NumberedMatrix
    {
        UInt32 id = 0;
        Matrix matrix;
    };

    DrawEnv const &getDrawEnv() const { return _env; }
    DrawEnv &editEnv() { return _env; }

    // --- the current space ---
    /// From the current space to the eye.
    NumberedMatrix const &getCurrentMatrix() const { return _current; }
    NumberedMatrix &editCurrentMatrix() { return _current; }
    std::vector<NumberedMatrix> const &getMatrixStack() const { return _stack; }
    /// The number given last.
    UInt32 getMatrixIdCount() const { return _lastId; }
    bool isModelMatrixValid() const { return _modelMatrixValid; }
    /// Enters the space that `matrix` leads out of.
    void pushMatrix(Matrix const &matrix);
    void popMatrix();
    void popVisibility();

  private:
    DrawEnv _env;
    NumberedMatrix _current;
    std::vector<NumberedMatrix> _stack;
    UInt32 _lastId = 0;
    bool _modelMatrixValid = false;
};
} // namespace OSG
