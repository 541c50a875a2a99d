#pragma once

#include <string>
#include <vector>

#include "OSGSceneView.h"

namespace Viewer
{
/// Planes that the user cuts the scene open with.
class Sections
{
  public:
    struct Cut
    {
        std::string name;      ///< of the direction
        OSG::Vec3f direction;  ///< of length 1, in the coordinates of the scene's root
        OSG::Real32 place = 0; ///< of the plane along the direction
        OSG::Real32 first = 0; ///< where the scene begins along the direction, and where it ends
        OSG::Real32 last = 0;
        bool isOn = true;
        bool isFlipped = false; ///< keeps what lies beyond the plane; else what lies before it
    };

    /// Keeps a reference to the view, which has to outlive the sections.
    explicit Sections(OSG::SceneView &view)
        : _view(view)
    {
    }

    std::vector<Cut> const &getCuts() const { return _cuts; }
    bool isFull() const { return _cuts.size() == OSG::SectionPlanes::MostPlanes; }

    // What follows changes what the view shows; the host asks for a frame.

    /// Cuts through the middle of the scene, across x (0), y (1) or z (2). False for another axis,
    /// for a seventh plane and where there is no scene.
    bool addAcross(OSG::UInt32 axis);
    /// Cuts away what lies before the face with this point and normal. False for a normal without
    /// length or a point that is not finite, and as above.
    bool addAtFace(OSG::Pnt3f const &point, OSG::Vec3f const &normal);
    /// A number beyond the cuts does nothing.
    void set(std::size_t number, Cut const &cut);
    void remove(std::size_t number);
    void clear();

  private:
    bool add(std::string const &name, OSG::Vec3f const &direction);
    void apply();

    OSG::SceneView &_view;
    std::vector<Cut> _cuts;
};
} // namespace Viewer
