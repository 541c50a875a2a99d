#include "OSGShownTriangles.h"

#include <unordered_map>

#include "OSGCamera.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGRenderAction.h"

namespace OSG
{
namespace
{
/// Counts a geometry once, however often it is shown.
class Counter
{
  public:
    void add(Geometry const *geometry)
    {
        auto const [entry, isNew] = _counts.try_emplace(geometry, 0);
        if(isNew)
        {
            TriangleIterator const end = geometry->endTriangles();
            for(TriangleIterator it = geometry->beginTriangles(); it != end; ++it)
                ++entry->second;
        }
        _sum += entry->second;
    }
    UInt64 sum() const { return _sum; }

  private:
    std::unordered_map<Geometry const *, UInt64> _counts;
    UInt64 _sum = 0;
};

void set_view(RenderAction &action, Camera const &camera, UInt32 width, UInt32 height)
{
    Matrix viewing;
    Matrix cameraToWorld;
    Matrix projection;
    camera.getViewing(viewing, width, height);
    camera.getProjection(projection, width, height);
    cameraToWorld.invertFrom(viewing);
    action.editDrawEnv().setView(
        cameraToWorld, viewing, projection,
        {0, static_cast<Int32>(width) - 1, 0, static_cast<Int32>(height) - 1});
}
} // namespace

// The cores that choose among their children tell a render action. A geometry is counted in place
// of being collected, so that none is left out because it is out of sight.
UInt64 count_shown_triangles(Node *root, Camera const &camera, UInt32 width, UInt32 height)
{
    Counter counter;
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    set_view(*action, camera, width, height);
    action->registerEnterFunction(Geometry::getClassType(),
                                  [&counter](NodeCore *core, Action *)
                                  {
                                      counter.add(static_cast<Geometry *>(core));
                                      return ActionBase::Continue;
                                  });
    action->apply(root);
    return counter.sum();
}
} // namespace OSG
