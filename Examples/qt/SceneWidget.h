#pragma once

#include <QOpenGLWidget>
#include <QRubberBand>

#include "OSGBandTool.h"
#include "OSGEventAdapter.h"
#include "OSGPickResult.h"
#include "OSGSceneView.h"
#include "OSGSelectionHighlight.h"

/// Shows a scene. The left button orbits and a click selects; in the mode of bands a drag selects:
/// to the right what lies wholly inside, to the left what it touches. Selected parts are orange.
class SceneWidget : public QOpenGLWidget
{
  public:
    /// Keeps a reference to the scene.
    explicit SceneWidget(OSG::Node *scene);
    ~SceneWidget() override;

    void setBandMode(bool isOn);
    void fit();
    /// The addresses of the selected parts, one a line.
    QString selectedParts() const;

  protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

  private:
    OSG::EventAdapter &scaledEvents();
    /// The foremost first. `enclosed`: what lies wholly inside, otherwise what is touched.
    std::vector<OSG::PickResult> pick(OSG::PixelArea const &area, bool enclosed);
    void select(std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers);
    void nextFrame();
    void showBand();

    OSG::SceneView _view;
    OSG::EventAdapter _events{_view.getNavigator()};
    OSG::SelectionSet _selection;
    OSG::SelectionHighlight _highlight;
    std::shared_ptr<OSG::BandTool> _bandTool;
    bool _isFitted = false;
    QRubberBand _band{QRubberBand::Rectangle, this};
};
