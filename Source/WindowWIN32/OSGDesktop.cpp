#include "OSGDesktop.h"

#include <utility>

#include "OSGAbsentDesktop.h"

namespace OSG
{
namespace
{
std::shared_ptr<Desktop> make_absent()
{
    return std::make_shared<AbsentDesktop>("no desktop: no keys, no pointer");
}

/// Never destroyed, so that engines in static storage may end after it.
std::shared_ptr<Desktop> &the_current()
{
    static auto *const desktop = new std::shared_ptr<Desktop>(make_absent());
    return *desktop;
}
} // namespace

Desktop::~Desktop() = default;

std::shared_ptr<Desktop> Desktop::current() { return the_current(); }

void Desktop::setCurrent(std::shared_ptr<Desktop> desktop)
{
    if(desktop == nullptr)
        desktop = make_absent();
    the_current() = std::move(desktop);
}

void Desktop::writeDebugText(char const *) {}
} // namespace OSG
