#pragma once

/// \file
/// The moves of the walk once more, slow and obvious: one long function each, without shared parts.
/// Only the queries are those of the engine.

#include "WalkedView.h"

namespace OSG::Test
{
class SlowWalk
{
  public:
    using Move = OpenWalk::MoveResult;
    using Pair = std::pair<Pnt3f, Pnt3f>;

    explicit SlowWalk(OpenWalk &engine)
        : walk(engine)
    {
        from = walk.getFrom();
        at = walk.getAt();
        Vec3f b = normal(from - at);
        up = normal(walk.getUp());
        back = normal(b - (b[0] * up[0] + b[1] * up[1] + b[2] * up[2]) * up);
        left = normal(Vec3f(back[1] * up[2] - back[2] * up[1], back[2] * up[0] - back[0] * up[2],
                            back[0] * up[1] - back[1] * up[0]));
    }

    Frustum box(int type, Pnt3f const &p, Real32 d) const
    {
        Vec3f const w = 0.5f * walk.width() * left;
        Vec3f const f = 0.5f * walk.fatness() * back;
        Vec3f const h = walk.height() * up;
        Vec3f const F = 1.2f * d * back;
        Vec3f const R = 1.2f * d * left;
        Vec3f const U = 1.2f * d * up;
        switch(type)
        {
        case 0:
            return {p - F - w - h, p - F + w - h, p - F + w, p - F - w,
                    p - w - h,     p + w - h,     p + w,     p - w};
        case 1:
            return {p + F + w - h, p + F - w - h, p + F - w, p + F + w,
                    p + w - h,     p - w - h,     p - w,     p + w};
        case 2:
            return {p + f - h,     p - f - h,     p - f,     p + f,
                    p + f + R - h, p - f + R - h, p - f + R, p + f + R};
        case 3:
            return {p - f - h,     p + f - h,     p + f,     p - f,
                    p - f - R - h, p + f - R - h, p + f - R, p - f - R};
        case 4:
            return {p - f - w - U, p - f + w - U, p - f + w, p - f - w,
                    p + f - w - U, p + f + w - U, p + f + w, p + f - w};
        case 5:
            return {p - f + w + U, p - f - w + U, p - f - w, p - f + w,
                    p + f + w + U, p + f - w + U, p + f - w, p + f + w};
        default:
            return {};
        }
    }

    Move vertical(Real32 step) const
    {
        Real32 const head = walk.height() - walk.height_eye();
        Pnt3f const top = from + head * up;
        Pnt3f const topAt = at + head * up;
        Pnt3f const newTop = top + step * up;
        Pnt3f const newAt = topAt + step * up;
        if(!walk.god_mode())
        {
            Real32 const length = (newTop - top).length();
            Real32 const margin =
                step >= 0 ? walk.wall_distance() : walk.ground_distance() + walk.height();
            auto const hit = walk.intersection(box(step >= 0 ? 5 : 4, top, margin + length),
                                               SelectionFunctor::TopPlane);
            if(hit && margin >= hit->first - length)
                return boost::none;
        }
        return Pair(newTop - head * up, newAt - head * up);
    }

    boost::optional<Real32> maxJump(Real32 jump) const
    {
        if(jump < 1e-6f)
            return jump;
        Real32 found = 0, half = jump, value = jump;
        for(UInt32 i = 0; i < walk.num_step_loop(); ++i)
        {
            bool const works = vertical(value).has_value();
            half = half * 0.5f;
            if(works)
            {
                found = value;
                value += half;
                if(value >= jump)
                    return found;
            }
            else
                value -= half;
        }
        if(found > 0)
            return found;
        return boost::none;
    }

    /// `sideways` as horizontal_move_imp, else view_dir_move_imp.
    Move step(bool sideways, Real32 step, Real32 jump) const
    {
        auto const rise = maxJump(jump);
        if(!rise)
            return boost::none;
        Vec3f const axis = sideways ? left : back;
        Real32 const head = walk.height() - walk.height_eye();
        Pnt3f const top = from + (*rise + head) * up;
        Pnt3f const topAt = at + (*rise + head) * up;
        Pnt3f newTop = top + step * axis;
        Pnt3f newAt = topAt + step * axis;
        bool ok = true;
        if(!walk.god_mode())
        {
            Real32 const length = (newTop - top).length();
            Real32 const margin =
                (sideways ? walk.width() : walk.fatness()) * 0.5f + walk.wall_distance();
            int const type = sideways ? (step >= 0 ? 2 : 3) : (step >= 0 ? 1 : 0);
            auto const hit = walk.intersection(box(type, top, margin + length),
                                               sideways ? SelectionFunctor::NearPlane
                                                        : SelectionFunctor::FarPlane);
            if(hit)
                ok = !(margin >= hit->first - length);
        }
        if(walk.walk_mode())
        {
            if(!ok)
                return boost::none;
            auto below = walk.intersection(Line(newTop, -up));
            if(below)
            {
                auto const footprint =
                    walk.intersection(box(4, newTop, below->first), SelectionFunctor::TopPlane);
                if(footprint)
                    below = footprint;
                Real32 const limit = walk.ground_distance() + walk.height();
                if(below->first > limit)
                {
                    newTop = newTop - (below->first - limit) * up;
                    newAt = newAt - (below->first - limit) * up;
                }
            }
        }
        if(!ok)
            return boost::none;
        return Pair(newTop - head * up, newAt - head * up);
    }

    /// All tries of a step.
    Move steps(bool sideways, Real32 length) const
    {
        for(UInt32 i = 0; i < walk.num_step_loop(); ++i)
        {
            if(auto const move = step(sideways, length, 0))
                return move;
            Real32 const strength = sideways || walk.staircase_mode()
                                        ? walk.jump_staircase_strength()
                                        : walk.jump_strength();
            if(auto const move = step(sideways, length, walk.height() * strength))
                return move;
            length = length * 0.5f;
        }
        return boost::none;
    }

    Move verticalSteps(Real32 length) const
    {
        if(walk.walk_mode())
            return boost::none;
        for(UInt32 i = 0; i < walk.num_step_loop(); ++i)
        {
            if(auto const move = vertical(length))
                return move;
            length = length * 0.5f;
        }
        return boost::none;
    }

    Move fall() const
    {
        Real32 const head = walk.height() - walk.height_eye();
        Pnt3f const top = from + head * up;
        Pnt3f const topAt = at + head * up;
        auto const ray = walk.intersection(Line(from, -up));
        if(!ray)
            return boost::none;
        auto const floor = walk.intersection(box(4, from, ray->first), SelectionFunctor::TopPlane);
        Real32 const limit = walk.ground_distance() + walk.height();
        if(!floor || !(floor->first > limit))
            return boost::none;
        Real32 const d = floor->first - limit;
        return Pair(top - d * up - head * up, topAt - d * up - head * up);
    }

    Pnt3f from, at;
    Vec3f back, left, up;

  private:
    static Vec3f normal(Vec3f const &v)
    {
        Real32 const length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        return length < 1e-6f ? v : v * (1 / length);
    }

    OpenWalk &walk;
};
} // namespace OSG::Test
