// Embree's rays. It gets one mesh for each of our geometries, with the vertices in the space of the
// root, which is the fastest that it can be given.

#ifdef BENCHMARK_WITH_EMBREE
#include <algorithm>
#include <map>

#include <embree3/rtcore.h>

#include "Contenders.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNodeWalker.h"

namespace OSG::Bench
{
namespace
{
struct MeshBuilder
{
    RTCDevice device;
    RTCScene scene;

    bool enter(Node *node)
    {
        auto const *const geometry = dynamic_cast<Geometry *>(node->getCore());
        if(geometry == nullptr)
            return true;
        Matrix const toRoot = node->getToWorld();
        VectorArray const positions = geometry->getPositions()->getArray();
        RTCGeometry const mesh = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
        auto *vertex = static_cast<float *>(
            rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                    3 * sizeof(float), positions.size()));
        for(UInt32 i = 0; i < positions.size(); ++i)
        {
            Pnt3f point;
            toRoot.mult(Pnt3f(positions[i][0], positions[i][1], positions[i][2]), point);
            for(int axis = 0; axis < 3; ++axis)
                *vertex++ = point[axis];
        }
        std::vector<unsigned> index;
        auto const end = geometry->endTriangles();
        for(auto it = geometry->beginTriangles(); it != end; ++it)
        {
            for(int corner = 0; corner < 3; ++corner)
                index.push_back(static_cast<unsigned>(it.getPositionIndex(corner)));
        }
        std::copy(index.begin(), index.end(),
                  static_cast<unsigned *>(
                      rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                              3 * sizeof(unsigned), index.size() / 3)));
        rtcCommitGeometry(mesh);
        rtcAttachGeometry(scene, mesh);
        rtcReleaseGeometry(mesh);
        return true;
    }
    void leave(Node *) {}
};

RTCScene embree_scene(SceneName name)
{
    static RTCDevice const device = rtcNewDevice("threads=1");
    static std::map<SceneName, RTCScene> scenes;
    RTCScene &result = scenes[name];
    if(result == nullptr)
    {
        result = rtcNewScene(device);
        MeshBuilder builder{device, result};
        walk_children(scene(name), builder);
        rtcCommitScene(result);
    }
    return result;
}

class EmbreeRays final : public RayContender
{
  public:
    EmbreeRays(SceneName name, RayQuery query)
        : _scene(embree_scene(name))
        , _queries(rays(name, query))
        , _length(ray_length(name))
    {
    }

    Real64 ask(std::size_t query) override
    {
        Line const &line = _queries[query];
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        RTCRayHit hit = {};
        hit.ray.org_x = line.getPosition()[0];
        hit.ray.org_y = line.getPosition()[1];
        hit.ray.org_z = line.getPosition()[2];
        hit.ray.dir_x = line.getDirection()[0];
        hit.ray.dir_y = line.getDirection()[1];
        hit.ray.dir_z = line.getDirection()[2];
        hit.ray.tfar = _length;
        hit.ray.mask = ~0u;
        hit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(_scene, &context, &hit);
        return hit.hit.geomID == RTC_INVALID_GEOMETRY_ID ? -1 : hit.ray.tfar;
    }

  private:
    RTCScene _scene;
    std::vector<Line> const &_queries;
    Real32 _length;
};
} // namespace

RayContenderPtr embree_rays(SceneName name, RayQuery query)
{
    return std::make_unique<EmbreeRays>(name, query);
}
} // namespace OSG::Bench
#endif
