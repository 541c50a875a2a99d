#include "PersonSettings.h"

namespace Viewer
{
using Walk = OSG::WASDWalkEngine;

std::span<PersonLength const> person_lengths()
{
    static constexpr PersonLength Lengths[] = {
        {"height", &Walk::height, &Walk::height},
        {"height_eye", &Walk::height_eye, &Walk::height_eye},
        {"width", &Walk::width, &Walk::width},
        {"fatness", &Walk::fatness, &Walk::fatness},
        {"ground_distance", &Walk::ground_distance, &Walk::ground_distance},
        {"wall_distance", &Walk::wall_distance, &Walk::wall_distance}};
    return Lengths;
}

std::span<PersonMode const> person_modes()
{
    static constexpr PersonMode Modes[] = {
        {"walk_mode", &Walk::walk_mode, &Walk::walk_mode},
        {"god_mode", &Walk::god_mode, &Walk::god_mode},
        {"staircase_mode", &Walk::staircase_mode, &Walk::staircase_mode},
        {"rotate_on_idle", &Walk::rotate_on_idle, &Walk::rotate_on_idle}};
    return Modes;
}
} // namespace Viewer
