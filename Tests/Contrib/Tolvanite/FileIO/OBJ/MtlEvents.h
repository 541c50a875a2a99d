#pragma once

/// \file
/// A material handler that only records its calls.

#include <cstdio>
#include <string>
#include <vector>

#include "OSGMtlReader.h"

namespace OSG::Test
{
/// Records every call as a line. Images named "no..." cannot be loaded.
class MtlEvents : public MtlHandler
{
  public:
    explicit MtlEvents(std::vector<std::string> &events)
        : _events(events)
    {
    }

    void newMaterial(std::string const &name) override { _events.push_back("new " + name); }
    void setColor(MtlColor which, Color3f const &color) override
    {
        static char const *const names[] = {"diffuse", "ambient", "specular"};
        _events.push_back(std::string(names[static_cast<int>(which)]) + ' ' + text(color[0]) + ' ' +
                          text(color[1]) + ' ' + text(color[2]));
    }
    void setShininess(Real32 shininess) override
    {
        _events.push_back("shininess " + text(shininess));
    }
    void setTransparency(Real32 transparency) override
    {
        _events.push_back("transparency " + text(transparency));
    }
    void setEnvMap(bool on) override { _events.push_back(on ? "environment" : "no environment"); }
    bool setImage(std::string const &imageName) override
    {
        bool const found = !imageName.empty() && imageName.compare(0, 2, "no") != 0;
        _events.push_back((found ? "image " : "missing ") + imageName);
        return found;
    }

    /// Short, and different for different numbers.
    static std::string text(Real32 number)
    {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.9g", static_cast<double>(number));
        return buffer;
    }

  private:
    std::vector<std::string> &_events;
};
} // namespace OSG::Test
