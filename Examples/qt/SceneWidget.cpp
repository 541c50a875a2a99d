#include "SceneWidget.h"

#include <QMouseEvent>
#include <QOpenGLContext>

#include <algorithm>
#include <utility>

#include "OSGCadTrackballEngine.h"
#include "OSGChangeList.h"
#include "OSGGLObjectStore.h"
#include "OSGPickTool.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"

namespace
{
OSG::UnrecordedRefPtr<OSG::Material> orange()
{
    OSG::UnrecordedRefPtr<OSG::SimpleMaterial> material(OSG::SimpleMaterial::create());
    material->setDiffuse(OSG::Color3f(1.f, 0.45f, 0.f));
    material->setAmbient(OSG::Color3f(1.f, 0.45f, 0.f));
    return OSG::UnrecordedRefPtr<OSG::Material>(material);
}

OSG::Int16 button_of(QMouseEvent const *event)
{
    switch(event->button())
    {
    case Qt::LeftButton:
        return OSG::NavigatorEvent::LeftButton;
    case Qt::MiddleButton:
        return OSG::NavigatorEvent::MiddleButton;
    case Qt::RightButton:
        return OSG::NavigatorEvent::RightButton;
    default:
        return OSG::NavigatorEvent::WheelDown + 1; // one that no engine knows
    }
}

OSG::UInt16 modifiers_of(QMouseEvent const *event)
{
    return event->modifiers().testFlag(Qt::ShiftModifier) ? OSG::PointerTool::Shift : 0;
}
} // namespace

SceneWidget::SceneWidget(OSG::Node *scene)
    : _highlight(_selection, _view.getRenderAction()->editAppearances(), orange())
{
    OSG::UnrecordedRefPtr<OSG::NavigatorEngine> const engine(OSG::CadTrackballEngine::create(0.8f));
    _view.setScene(scene);
    _view.setEngine(engine);
    _bandTool = std::make_shared<OSG::BandTool>(
        [this](OSG::BandTool::Band const &band)
        {
            bool const enclosed = band.direction == OSG::BandTool::Direction::LeftToRight;
            select(pick(band.area, enclosed), band.modifiers);
        });
    setBandMode(false);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

SceneWidget::~SceneWidget()
{
    if(context() != nullptr)
        disconnect(context(), nullptr, this, nullptr);
    makeCurrent();
    OSG::GLObjectStore::releaseCurrent();
    doneCurrent();
}

void SceneWidget::setBandMode(bool isOn)
{
    if(isOn)
        _events.setTool(_bandTool);
    else
        _events.setTool(std::make_shared<OSG::NavigateTool>(
            [this](OSG::PointerTool::Event const &click)
            {
                auto results = pick(OSG::pixel_square(click.pixel[0], click.pixel[1],
                                                      OSG::DefaultPickRadius * click.scale),
                                    false);
                results.resize(std::min<std::size_t>(results.size(), 1)); // what is in front
                select(results, click.modifiers);
            }));
}

void SceneWidget::fit()
{
    _view.fit();
    update();
}

QString SceneWidget::selectedParts() const
{
    QString parts;
    _selection.forEach([&](OSG::NodePath const &path)
                       { parts += QString::fromStdString(path.text(_view.getScene())) + '\n'; });
    return parts;
}

// The widget has another context after it has moved to another window.
void SceneWidget::initializeGL()
{
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this,
            [this]
            {
                makeCurrent();
                OSG::GLObjectStore::releaseCurrent();
                doneCurrent();
            });
}

void SceneWidget::resizeGL(int width, int height)
{
    qreal const scale = devicePixelRatioF();
    _view.setSize(qRound(width * scale), qRound(height * scale));
    if(!std::exchange(_isFitted, true))
        _view.fit();
}

// The widget has set its frame buffer and the OpenGL viewport.
void SceneWidget::paintGL() { _view.draw(); }

void SceneWidget::mousePressEvent(QMouseEvent *event)
{
    scaledEvents().buttonPress(button_of(event), event->position().x(), event->position().y(),
                               modifiers_of(event));
    nextFrame();
}

void SceneWidget::mouseMoveEvent(QMouseEvent *event)
{
    scaledEvents().pointerMove(event->position().x(), event->position().y(), modifiers_of(event));
    if(_events.isDragging())
        nextFrame();
}

void SceneWidget::mouseReleaseEvent(QMouseEvent *event)
{
    scaledEvents().buttonRelease(button_of(event), event->position().x(), event->position().y(),
                                 modifiers_of(event));
    nextFrame();
}

void SceneWidget::wheelEvent(QWheelEvent *event)
{
    qreal const degrees = event->angleDelta().y() / 8.0;
    scaledEvents().wheel(degrees / 15, event->position().x(), event->position().y());
    nextFrame();
}

void SceneWidget::focusOutEvent(QFocusEvent *event)
{
    _events.focusLost();
    nextFrame();
    QOpenGLWidget::focusOutEvent(event);
}

// The scale is another one after the window has moved to another screen.
OSG::EventAdapter &SceneWidget::scaledEvents()
{
    _events.setContentScale(devicePixelRatioF());
    return _events;
}

std::vector<OSG::PickResult> SceneWidget::pick(OSG::PixelArea const &area, bool enclosed)
{
    OSG::PickSettings settings;
    settings.enclosed = enclosed;
    auto const region = OSG::PickRegion::ofRectangle(_view.getView(), area, _view.getBounds());
    OSG::PickSelector selector(_view.getScene());
    return region ? OSG::pick_results(selector, *region, settings) : std::vector<OSG::PickResult>();
}

void SceneWidget::select(std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers)
{
    OSG::SelectionSet::Items items;
    for(OSG::PickResult const &result : results)
        items.push_back({result.path});
    if((modifiers & OSG::PointerTool::Shift) != 0)
        _selection.toggle(items);
    else
        _selection.replace(items);
}

void SceneWidget::nextFrame()
{
    _events.frame();
    showBand();
    _view.update();
    OSG::Thread::getCurrentChangeList()->commitChanges();
    update();
}

void SceneWidget::showBand()
{
    auto const band = _bandTool->getBand();
    _band.setVisible(band.has_value());
    if(!band)
        return;
    qreal const scale = devicePixelRatioF();
    QPointF const leftTop(band->area.left, band->area.top);
    QPointF const rightBottom(band->area.right, band->area.bottom);
    _band.setGeometry(QRectF(leftTop / scale, rightBottom / scale).toRect());
}
