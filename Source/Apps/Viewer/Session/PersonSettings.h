#pragma once

#include <span>

#include "OSGWASDWalkEngine.h"

namespace Viewer
{
/// A length of the person, by the accessors of the engine.
struct PersonLength
{
    char const *name; ///< as set_walk_setting knows it
    OSG::Real32 (OSG::WASDWalkEngine::*get)() const;
    void (OSG::WASDWalkEngine::*set)(OSG::Real32);
};
struct PersonMode
{
    char const *name;
    bool (OSG::WASDWalkEngine::*get)() const;
    void (OSG::WASDWalkEngine::*set)(bool);
};

std::span<PersonLength const> person_lengths();
std::span<PersonMode const> person_modes();
} // namespace Viewer
