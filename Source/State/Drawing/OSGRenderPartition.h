#pragma once

#include <vector>

#include "OSGDrawEnv.h"
#include "OSGViewPlanes.h"

namespace OSG
{
/// Where a render traversal stands: the space of the current node, and what of it can be seen.
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
    DrawEnv &editDrawEnv() { return _env; }

    // --- the current space; the matrix carries its points to the eye ---
    NumberedMatrix const &getCurrentMatrix() const { return _current; }
    NumberedMatrix &editCurrentMatrix() { return _current; }
    std::vector<NumberedMatrix> const &getMatrixStack() const { return _stack; }
    std::vector<NumberedMatrix> &editMatrixStack() { return _stack; }
    /// The number that was given last.
    UInt32 getMatrixIdCount() const { return _lastId; }
    UInt32 takeMatrixId() { return ++_lastId; }
    /// Whether a model matrix that somebody has computed from the current one still holds.
    bool isModelMatrixValid() const { return _modelMatrixValid; }
    void setModelMatrixValid(bool isValid) { _modelMatrixValid = isValid; }
    /// Enters the space that `toParent` leads out of.
    void pushMatrix(Matrix const &toParent);
    /// Enters the space that `toEye` leads to the eye from.
    void enterSpace(Matrix const &toEye);
    /// Leaves it. Without a space that was entered, nothing happens.
    void popMatrix();
    /// Starts anew in the space that `toEye` leads out of.
    void setMatrix(Matrix const &toEye);

    // --- sight ---
    /// What is known of everything below the current node.
    ViewPlanes::Sight getSight() const
    {
        return _sights.empty() ? ViewPlanes::Sight::Some : _sights.back();
    }
    void pushVisibility(ViewPlanes::Sight sight) { _sights.push_back(sight); }
    void popVisibility();

  private:
    DrawEnv _env;
    NumberedMatrix _current;
    std::vector<NumberedMatrix> _stack;
    std::vector<ViewPlanes::Sight> _sights;
    UInt32 _lastId = 0;
    bool _modelMatrixValid = false;
};
} // namespace OSG
