#include "OSGDesktop.h"

#include <chrono>
#include <utility>

namespace OSG
{
namespace
{
/// The clock of the standard library; everything else is never there.
class AbsentDesktop : public Desktop
{
  public:
    char const *missing() const override { return "no desktop: no keys, no pointer"; }
    bool isDown(Int16) override { return false; }
    bool isFocused(NativeWindow) override { return false; }
    NativeWindow getCapture() override { return nullptr; }
    void setCapture(NativeWindow) override {}
    void releaseCapture() override {}
    Point getPointer() override { return {}; }
    void setPointer(Point) override {}
    void showPointer(bool) override {}
    Size getClientSize(NativeWindow) override { return {}; }
    Point toScreen(NativeWindow, Point client) override { return client; }
    Int64 getTicksPerSecond() override { return std::nano::den; }
    Int64 getTicks() override
    {
        auto const now = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    }
};

/// Never destroyed, so that engines in static storage may end after it.
std::shared_ptr<Desktop> &the_current()
{
    static auto *const desktop = new std::shared_ptr<Desktop>(std::make_shared<AbsentDesktop>());
    return *desktop;
}
} // namespace

Desktop::~Desktop() = default;

std::shared_ptr<Desktop> Desktop::current() { return the_current(); }

void Desktop::setCurrent(std::shared_ptr<Desktop> desktop)
{
    if(desktop == nullptr)
        desktop = std::make_shared<AbsentDesktop>();
    the_current() = std::move(desktop);
}

void Desktop::writeDebugText(char const *) {}
} // namespace OSG
