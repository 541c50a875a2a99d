#pragma once

#include <span>
#include <vector>

#include "OSGDrawLook.h"
#include "OSGMatrix.h"
#include "OSGPlane.h"
#include "OSGStateApi.h"

namespace OSG
{
class GLObjectStore;

/// What drawing knows of the view: matrices, pixels and the OpenGL objects of the context. Whoever
/// draws a view fills it; cores and chunks read it. It knows no camera, viewport or window.
///
///     world --viewing--> eye (looks along -z, y up) --projection--> normalised coordinates
class OSG_STATE_API DrawEnv
{
  public:
    /// The edges are pixels of the area, counted from the left bottom corner of the target.
    struct PixelBounds
    {
        Int32 left = 0;
        Int32 right = -1;
        Int32 bottom = 0;
        Int32 top = -1;

        /// 0 where the edges are in the wrong order.
        Int32 width() const { return right >= left ? right - left + 1 : 0; }
        Int32 height() const { return top >= bottom ? top - bottom + 1 : 0; }
    };

    // --- the view ---
    /// `cameraToWorld` and `viewing` are inverse to one another.
    void setView(Matrix const &cameraToWorld, Matrix const &viewing, Matrix const &projection,
                 PixelBounds const &pixels);
    /// The same with more digits of `viewing`, which far from the origin loses them by rounding.
    void setView(Matrix const &cameraToWorld, Matrix4d const &viewing, Matrix const &projection,
                 PixelBounds const &pixels);
    Matrix const &getCameraToWorld() const { return _cameraToWorld; }
    /// World to eye.
    Matrix const &getCameraViewing() const { return _viewing; }
    Matrix4d const &getExactViewing() const { return _exactViewing; }
    /// Eye to normalised coordinates.
    Matrix const &getCameraProjection() const { return _projection; }
    /// projection * viewing.
    Matrix const &getWorldToScreen() const { return _worldToScreen; }
    PixelBounds const &getPixels() const { return _pixels; }
    /// Whether parallels stay parallel: the projection leaves w at 1.
    bool isOrthographic() const;

    // --- sections ---
    static constexpr std::size_t MostSections = 6;
    /// Planes in world coordinates that cut open what is drawn: what lies in the half space of each
    /// is kept. The normals may have any length. A plane whose normal is zero, or one of whose
    /// numbers is not finite, is left out, and so are those beyond six, with a warning. They stay
    /// when the view is set anew.
    void setSections(std::span<Plane const> planes);
    std::vector<Plane> const &getSections() const { return _sections; }
    /// In eye coordinates: (a, b, c, d) keeps a x + b y + c z + d >= 0.
    std::vector<Vector<Real64, 4>> getSectionsInEye() const;

    // --- the look ---
    /// It stays when the view is set anew.
    DrawLook const &getLook() const { return _look; }
    void setLook(DrawLook const &look) { _look = look; }

    // --- the context ---
    /// Null while no context is drawn to; not owned.
    GLObjectStore *getObjects() const { return _objects; }
    void setObjects(GLObjectStore *objects) { _objects = objects; }

  private:
    Matrix _cameraToWorld;
    Matrix _viewing;
    Matrix4d _exactViewing;
    Matrix _projection;
    Matrix _worldToScreen;
    PixelBounds _pixels;
    std::vector<Plane> _sections;
    DrawLook _look;
    GLObjectStore *_objects = nullptr;
};
} // namespace OSG
