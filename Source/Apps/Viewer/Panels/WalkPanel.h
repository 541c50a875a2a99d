#pragma once

#include <string>
#include <vector>

#include "Session.h"

namespace Viewer
{
/// Marks, the recorded way, the home and the person.
class WalkPanel
{
  public:
    /// The session has to outlive the panel.
    explicit WalkPanel(Session &session)
        : _session(session)
    {
    }

    void draw();

  private:
    void drawMarks();
    void drawMarkList();
    void drawHome();
    void drawWay();
    void drawSketch();
    void drawPlot();
    void drawPerson();
    void drawOtherSettings(OSG::WASDWalkEngine &walk);
    void noteEdit();

    Session &_session;
    std::string _label;
    std::vector<OSG::Pnt2f> _sketch;
    OSG::Node const *_sketched = nullptr; // the scene; a key only
    std::size_t _sketchLength = 0;
    double _sketchTime = 0;
    std::string _plotFile = "way.svg";
    bool _asksToReplace = false;
    std::string _setting;
    std::string _value;
};
} // namespace Viewer
