#pragma once

/// \file
/// Slow, obvious versions of the engines in double precision. They use plain trigonometry instead
/// of matrices and quaternions, and all triangles of the scene in world space instead of an action.
/// They follow the documentation of the engines and share no code with them.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>

#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGInputRecording.h"
#include "OSGNode.h"

namespace OSG::Test
{
struct V3
{
    double x = 0, y = 0, z = 0;

    V3 operator+(V3 const &o) const { return {x + o.x, y + o.y, z + o.z}; }
    V3 operator-(V3 const &o) const { return {x - o.x, y - o.y, z - o.z}; }
    V3 operator*(double f) const { return {x * f, y * f, z * f}; }
    double dot(V3 const &o) const { return x * o.x + y * o.y + z * o.z; }
    V3 cross(V3 const &o) const
    {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    double length() const { return std::sqrt(dot(*this)); }
    V3 unit() const { return length() < 1e-6 ? *this : *this * (1 / length()); }
    /// About a unit axis (Rodrigues).
    V3 turned(V3 const &axis, double angle) const
    {
        return *this * std::cos(angle) + axis.cross(*this) * std::sin(angle) +
               axis * (axis.dot(*this) * (1 - std::cos(angle)));
    }
};

template <class Tuple>
V3 v3(Tuple const &t)
{
    return {t[0], t[1], t[2]};
}

/// The scene in world space.
struct SlowScene
{
    explicit SlowScene(Node *root) { add(root); }

    std::optional<V3> hit(V3 const &from, V3 const &direction) const
    {
        double nearest = INFINITY;
        for(auto const &[a, b, c] : triangles)
        {
            V3 const normal = (b - a).cross(c - a);
            double const t = normal.dot(a - from) / normal.dot(direction);
            V3 const p = from + direction * t;
            bool const inside = (b - a).cross(p - a).dot(normal) >= 0 &&
                                (c - b).cross(p - b).dot(normal) >= 0 &&
                                (a - c).cross(p - c).dot(normal) >= 0;
            if(inside && t >= 0 && t < nearest)
                nearest = t;
        }
        if(std::isinf(nearest))
            return std::nullopt;
        return from + direction * nearest;
    }

    struct Box
    {
        V3 min{INFINITY, INFINITY, INFINITY};
        V3 max{-INFINITY, -INFINITY, -INFINITY};

        void add(V3 const &p)
        {
            min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
            max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
        }
        V3 corner(int i) const
        {
            return {(i & 1) != 0 ? max.x : min.x, (i & 2) != 0 ? max.y : min.y,
                    (i & 4) != 0 ? max.z : min.z};
        }
    };

    std::vector<std::array<V3, 3>> triangles;
    std::vector<Box> boxes; ///< of each node with a geometry

  private:
    void add(Node *node)
    {
        if(auto const *geometry = dynamic_cast<Geometry *>(node->getCore()))
        {
            Box box;
            Matrix const toWorld = node->getToWorld();
            for(TriangleIterator it = geometry->beginTriangles(); it != geometry->endTriangles();
                ++it)
            {
                std::array<V3, 3> corners;
                for(int i = 0; i < 3; ++i)
                {
                    corners[i] = v3(toWorld * it.getPosition(i));
                    box.add(corners[i]);
                }
                triangles.push_back(corners);
            }
            boxes.push_back(box);
        }
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            add(node->getChild(i));
    }
};

/// An eye with its own axes, and what it sees of a view of width by height pixels that fills its
/// window.
struct SlowCamera
{
    V3 eye, x, y, z; ///< z points backwards
    bool perspective;
    double opening; ///< radians, or the height of the picture
    double near, far;
    int width, height;

    bool look(V3 const &from, V3 const &at, V3 const &up)
    {
        V3 const back = from - at;
        V3 const side = up.cross(back.unit());
        if(back.length() < 1e-6 || side.length() < 1e-6)
            return false;
        eye = from;
        z = back.unit();
        x = side.unit();
        y = z.cross(x);
        return true;
    }
    double halfHeight(double depth) const
    {
        return perspective ? depth * std::tan(opening / 2) : opening / 2;
    }
    /// Place on the picture at a depth, for a pixel from the left top corner.
    V3 place(double pixelX, double pixelY, double depth) const
    {
        double const right = (2 * pixelX / width - 1) * halfHeight(depth) * width / height;
        double const upward = (1 - 2 * pixelY / height) * halfHeight(depth);
        return eye + x * right + y * upward - z * depth;
    }
    V3 rayFrom(double px, double py) const { return place(px, py, near); }
    V3 rayDirection(double px, double py) const
    {
        return (place(px, py, far) - place(px, py, near)).unit();
    }
    /// False where all corners are out on one side.
    bool sees(SlowScene::Box const &box) const
    {
        bool out[6] = {true, true, true, true, true, true};
        for(int i = 0; i < 8; ++i)
        {
            V3 const p = box.corner(i) - eye;
            double const depth = -p.dot(z);
            double const h = halfHeight(depth);
            double const w = h * width / height;
            double const inside[6] = {depth - near, far - depth,  w - p.dot(x),
                                      w + p.dot(x), h - p.dot(y), h + p.dot(y)};
            for(int side = 0; side < 6; ++side)
                out[side] = out[side] && inside[side] < 0;
        }
        return std::none_of(std::begin(out), std::end(out), [](bool o) { return o; });
    }
};

/// What an engine is told: the settings, the pointer and the view.
struct SlowWorld
{
    InputRecording const &recording;
    SlowScene const &scene;
    SlowCamera camera;
    NavigatorEvent last; ///< its x and y alone
    NavigatorEvent press;
    bool moved = false;
    bool held = false;

    double normX(double px) const { return 2 * px / camera.width - 1; }
    double normY(double py) const { return 1 - 2 * py / camera.height; }
    double wayX(NavigatorEvent const &e) const { return normX(e.x) - normX(last.x); }
    double wayY(NavigatorEvent const &e) const { return normY(e.y) - normY(last.y); }
    void hold(int x, int y)
    {
        last.x = static_cast<Int16>(x);
        last.y = static_cast<Int16>(y);
        held = true;
    }
};

struct SlowPose
{
    V3 from, at, up;
    double distance = 0;
};

class SlowEngine
{
  public:
    virtual ~SlowEngine() = default;
    virtual SlowPose pose() const = 0;
    virtual void set(V3 const &from, V3 const &at, V3 const &up) = 0;
    virtual void handle(NavigatorEvent const &event, SlowWorld &world) = 0;

  protected:
    /// Turn of a ball of 0.8 for a drag: axis in the picture, and angle.
    static std::optional<std::pair<V3, double>> ball(SlowWorld const &w, NavigatorEvent const &e)
    {
        double const r = 0.8;
        auto const lift = [r](double x, double y)
        {
            double const d = std::hypot(x, y);
            return d < r / std::numbers::sqrt2 ? std::sqrt(r * r - d * d) : r * r / 2 / d;
        };
        V3 a{w.normX(w.last.x), w.normY(w.last.y), 0};
        V3 b{w.normX(e.x), w.normY(e.y), 0};
        if(std::abs(a.x - b.x) <= 1e-6 && std::abs(a.y - b.y) <= 1e-6)
            return std::nullopt;
        a.z = lift(a.x, a.y);
        b.z = lift(b.x, b.y);
        double const angle = 2 * std::asin(std::min(1.0, (b - a).length() / (2 * r)));
        return std::pair{b.cross(a).unit(), angle};
    }
};

class SlowTrackball : public SlowEngine
{
  public:
    SlowPose pose() const override { return {center + z * distance, center, y, distance}; }
    void set(V3 const &from, V3 const &at, V3 const &up) override
    {
        SlowCamera look{};
        if(!look.look(from, at, up))
            return;
        x = look.x;
        y = look.y;
        z = look.z;
        center = at;
        distance = (from - at).length();
    }
    void handle(NavigatorEvent const &e, SlowWorld &w) override
    {
        switch(e.kind)
        {
        case NavigatorEvent::ButtonPress:
            press(e, w);
            break;
        case NavigatorEvent::ButtonRelease:
            if(state != 0 && !w.moved && w.recording.clickCenter)
            {
                if(auto const hit = grab(e, w))
                    set(pose().from, *hit, y);
            }
            state = 0;
            break;
        case NavigatorEvent::Move:
            move(e, w);
            break;
        case NavigatorEvent::Key:
            key(e, w);
            break;
        default:
            break;
        }
    }

  private:
    static std::optional<V3> grab(NavigatorEvent const &e, SlowWorld const &w)
    {
        return w.scene.hit(w.camera.rayFrom(e.x, e.y), w.camera.rayDirection(e.x, e.y));
    }
    void zoom(double sign, SlowWorld &w)
    {
        if(w.camera.perspective)
            distance += sign * w.recording.motionFactor * 10;
        else
            w.camera.opening *= sign > 0 ? 1.2 : 1 / 1.2;
    }
    void press(NavigatorEvent const &e, SlowWorld &w)
    {
        if(e.code >= 0 && e.code <= 2)
            state = e.code + 1;
        if(e.code == 1)
        {
            axis = w.camera.z;
            V3 const from = w.camera.rayFrom(e.x, e.y);
            V3 const direction = w.camera.rayDirection(e.x, e.y);
            V3 const onPlane = from + direction * (-axis.dot(from) / axis.dot(direction));
            auto const hit = w.recording.noIntersect ? std::nullopt : grab(e, w);
            held = hit.value_or(onPlane);
            panned = e;
        }
        if(e.code == 3 || e.code == 4)
        {
            state = 0;
            zoom(e.code == 3 ? -1 : 1, w);
        }
    }
    void key(NavigatorEvent const &e, SlowWorld &w)
    {
        if((e.modifiers & 0x10) != 0)
            return;
        bool const isVirtual = (e.modifiers & 0x20) != 0;
        if(e.code == 2 || (isVirtual && e.code == 38))
            zoom(-1, w);
        if(e.code == 3 || (isVirtual && e.code == 40))
            zoom(1, w);
    }
    void move(NavigatorEvent const &e, SlowWorld &w)
    {
        double const up = w.wayY(e);
        if(state == 1)
            turn(e, w);
        else if(state == 2 && w.camera.perspective)
            pan(e, w);
        else if(state == 2 && (e.x != panned.x || e.y != panned.y))
            panOrthographic(e, w);
        else if(state == 3 && w.camera.perspective)
            distance += w.recording.motionFactor * up * std::abs(up) * 100;
        else if(state == 3)
            w.camera.opening *= up < 0 ? 0.8333333 : 1.2;
    }
    void turn(NavigatorEvent const &e, SlowWorld const &w)
    {
        auto const drag = ball(w, e);
        if(!drag)
            return;
        V3 const about = x * drag->first.x + y * drag->first.y + z * drag->first.z;
        x = x.turned(about, drag->second);
        y = y.turned(about, drag->second);
        z = z.turned(about, drag->second);
    }
    void pan(NavigatorEvent const &e, SlowWorld const &w)
    {
        V3 const from = w.camera.eye;
        V3 const direction = w.camera.rayDirection(e.x, e.y);
        V3 const pointed = from + direction * (axis.dot(held - from) / axis.dot(direction));
        V3 const way = held - pointed;
        center = center + x * way.dot(x) + y * way.dot(y);
    }
    void panOrthographic(NavigatorEvent const &e, SlowWorld const &w)
    {
        double const px = w.camera.width / 2 - e.x + panned.x;
        double const py = panned.y - e.y + w.camera.height / 2 + 1;
        center = center + (w.camera.place(px, py, 0) - w.camera.eye);
        panned = e;
    }

    V3 center, x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    double distance = 1;
    int state = 0;
    V3 held, axis;
    NavigatorEvent panned;
};

/// What flight and copter have in common.
class SlowEye : public SlowEngine
{
  public:
    SlowPose pose() const override { return {from, at, up, 0}; }
    void set(V3 const &newFrom, V3 const &newAt, V3 const &newUp) override
    {
        from = newFrom;
        at = newAt;
        up = newUp;
    }

  protected:
    void shift(V3 const &by)
    {
        from = from + by;
        at = at + by;
    }
    void ahead(double step) { shift((at - from).unit() * step); }
    void aside(double step) { shift((at - from).cross(up).unit() * step); }
    void turnRight(double angle) { at = from + (at - from).turned(up.unit(), -angle); }
    void turnUp(double angle)
    {
        V3 const side = (at - from).unit().cross(up).unit();
        at = from + (at - from).turned(side, angle);
    }

    V3 from, at{0, 0, 1}, up{0, 1, 0};
};

class SlowFly : public SlowEye
{
  public:
    void handle(NavigatorEvent const &e, SlowWorld &w) override
    {
        double const step = w.recording.motionFactor;
        double const angle = w.recording.rotationAngle;
        if(e.kind == NavigatorEvent::ButtonPress && e.code >= 0 && e.code <= 4)
        {
            speed = e.code == 0 ? step : (e.code == 2 ? -step : 0);
            if(e.code >= 3)
                ahead(e.code == 3 ? step : -step);
        }
        if(e.kind == NavigatorEvent::ButtonRelease)
            speed = 0;
        if(e.kind == NavigatorEvent::Move)
        {
            turnRight(w.wayX(e));
            turnUp(w.wayY(e));
            if(speed != 0)
                ahead(speed);
        }
        if(e.kind == NavigatorEvent::Key && (e.modifiers & 0x10) == 0)
        {
            if(e.code == 0 || e.code == 1)
                aside(e.code == 0 ? -step : step);
            if(e.code == 2 || e.code == 3)
                ahead(e.code == 2 ? step : -step);
            if(e.code == 4 || e.code == 5)
                turnRight(e.code == 4 ? -angle : angle);
        }
    }

  private:
    double speed = 0;
};

class SlowCopter : public SlowEye
{
  public:
    void handle(NavigatorEvent const &e, SlowWorld &w) override
    {
        if(e.kind == NavigatorEvent::Idle && flies)
            tick(e, w);
        if(e.kind == NavigatorEvent::ButtonPress)
            press(e, w);
        if(e.kind == NavigatorEvent::Key && (e.modifiers & 0x10) == 0 && !flies)
        {
            bool const isVirtual = (e.modifiers & 0x20) != 0;
            if(isVirtual && e.code == 13)
                mode = (mode + 1) % 4;
            if(isVirtual && e.code == 32)
                state = (state + 1) % 4;
            if(!isVirtual && e.code == '+')
                faster();
            if(!isVirtual && e.code == '-')
                slower();
        }
    }

  private:
    double &speed() { return state == 0 || state == 3 ? motion : turning; }
    void faster() { speed() = std::min(speed() * 1.2, 0.4); }
    void slower() { speed() = std::max(speed() / 1.2, 1e-6); }

    void press(NavigatorEvent const &e, SlowWorld &w)
    {
        if(e.code < 0 || e.code > 4)
            return;
        w.hold(w.camera.width / 2, w.camera.height - w.camera.height / 2);
        if(e.code == 0 || e.code == 2)
        {
            if(!flies)
                sign = e.code == 0 ? 1 : -1;
            flies = !flies;
        }
        if(e.code == 1 && state >= 2)
            mode = (mode + 1) % 4;
        if(e.code == 3)
            slower();
        if(e.code == 4)
            faster();
    }

    void tick(NavigatorEvent const &e, SlowWorld const &w)
    {
        double const middleX = w.camera.width / 2;
        double const middleY = w.camera.height - w.camera.height / 2;
        double const qx = (e.x - middleX) / middleX;
        double const qy = (e.y - middleY) / middleY;
        double const step = w.recording.motionFactor * motion;
        double const angle = w.recording.rotationAngle * turning;
        bool const vertical = mode == 2 || (mode == 1 && std::abs(qy) > std::abs(qx));
        if(state == 0)
        {
            turnRight(w.wayX(e) / 20 * motion);
            turnUp(w.wayY(e) / 20 * motion);
            ahead(sign * step);
        }
        else if(state == 1)
            circle(e, w);
        else if(state == 2 && mode == 0)
            up = up.turned((at - from).unit(), sign * angle * std::hypot(qx, qy));
        else if(state == 2)
            vertical ? turnUp(-qy * angle) : turnRight(qx * angle);
        else if(mode == 0)
            ahead(sign * step * std::hypot(qx, qy));
        else
            vertical ? shift(up.unit() * (-qy * step)) : aside(qx * step);
    }

    void circle(NavigatorEvent const &e, SlowWorld const &w)
    {
        auto const drag = ball(w, e);
        if(!drag)
            return;
        SlowScene::Box seen;
        bool any = false;
        for(SlowScene::Box const &box : w.scene.boxes)
        {
            if(!w.camera.sees(box))
                continue;
            seen.add(box.min);
            seen.add(box.max);
            any = true;
        }
        if(!any)
            return;
        V3 const pivot = at + ((seen.min + seen.max) * 0.5 - at) * 0.1;
        SlowCamera orbit{};
        if(!orbit.look(from, pivot, up))
            return;
        V3 const about =
            orbit.x * drag->first.x + orbit.y * drag->first.y + orbit.z * drag->first.z;
        double const angle = drag->second * turning / 20;
        from = pivot + (from - pivot).turned(about, angle);
        up = orbit.y.turned(about, angle);
        at = pivot;
    }

    bool flies = false;
    int state = 0, mode = 0, sign = 1;
    double motion = 0.2, turning = 0.2;
};

/// Plays a recording with one of the engines above.
class SlowPlayer
{
  public:
    SlowPlayer(InputRecording const &recording, std::unique_ptr<SlowEngine> engine,
               SlowScene const &scene, int width, int height)
        : _engine(std::move(engine))
        , _world{recording, scene, {}, {}, {}}
    {
        bool const perspective = recording.projection == InputRecording::Projection::Perspective;
        double const opening =
            perspective ? recording.opening * std::numbers::pi / 180 : recording.opening;
        _world.camera = {{},      {1, 0, 0},      {0, 1, 0},     {0, 0, 1}, perspective,
                         opening, recording.near, recording.far, width,     height};
        _engine->set(v3(recording.from), v3(recording.at), v3(recording.up));
        look();
    }

    void step(NavigatorEvent const &event)
    {
        if(event.kind == NavigatorEvent::ButtonPress)
        {
            _world.press = event;
            _world.moved = _world.held = false;
        }
        else if(event.x != _world.press.x || event.y != _world.press.y)
            _world.moved = _world.moved || event.kind == NavigatorEvent::Move ||
                           event.kind == NavigatorEvent::ButtonRelease;
        _engine->handle(event, _world);
        look();
        if(!_world.held && event.kind != NavigatorEvent::Idle &&
           event.kind != NavigatorEvent::KillFocus)
            _world.last = event;
    }

    SlowPose pose() const { return _engine->pose(); }
    double opening() const { return _world.camera.opening; }

  private:
    void look()
    {
        SlowPose const pose = _engine->pose();
        // A distance below zero looks at the centre from the other side.
        V3 const at = pose.distance < 0 ? pose.from * 2 - pose.at : pose.at;
        _world.camera.look(pose.from, at, pose.up);
    }

    std::unique_ptr<SlowEngine> _engine;
    SlowWorld _world;
};
} // namespace OSG::Test
