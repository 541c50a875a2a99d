#include "OSGShownTriangles.h"

#include <unordered_map>

#include "OSGCameraView.h"
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
} // namespace

// The cores that choose among their children tell a render action. A geometry is counted in place
// of being collected, so that none is left out because it is out of sight.
UInt64 count_shown_triangles(Node *root, Camera const &camera, UInt32 width, UInt32 height)
{
    Counter counter;
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    set_camera_view(action->editDrawEnv(), camera,
                    {0, static_cast<Int32>(width) - 1, 0, static_cast<Int32>(height) - 1});
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
