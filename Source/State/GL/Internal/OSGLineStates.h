#pragma once

#include <vector>

#include "OSGDrawLook.h"
#include "OSGDrawState.h"

namespace OSG
{
/// The states in which a style draws lines in place of shaded faces, by the numbers of a list's own
/// states. They hold colours and nothing else: no light, no texture, no blending, no chunks.
class LineStates
{
  public:
    /// Wires keep the diffuse colour of each state and of the vertices; other styles have the line
    /// colour. Shaded has no lines, and nothing is made then.
    LineStates(DrawLook const &look, std::vector<DrawState const *> const &states);
    LineStates(LineStates const &) = delete;
    LineStates &operator=(LineStates const &) = delete;

    std::vector<DrawState const *> const &get() const { return _states; }

  private:
    std::vector<DrawState> _values;
    std::vector<DrawState const *> _states;
};
} // namespace OSG
