#include "OSGViewport.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGCameraView.h"
#include "OSGFrameBufferObject.h"
#include "OSGGLContext.h"
#include "OSGGLObjectStore.h"
#include "OSGHostState.h"
#include "OSGListDrawing.h"
#include "OSGLog.h"
#include "OSGRenderAction.h"
#include "OSGWindow.h"

namespace OSG
{
Viewport::~Viewport() = default;

char const *Viewport::findMissing() const
{
    if(getCamera() == nullptr)
        return "camera";
    if(getBackground() == nullptr)
        return "background";
    return getRoot() == nullptr ? "root" : nullptr;
}

void Viewport::render(RenderActionBase *action)
{
    if(char const *const missing = findMissing())
    {
        OSG_LOG_WARNING("Viewport::render: no %s!\n", missing);
        return;
    }
    if(action == nullptr)
        return;
    auto *const collecting = dynamic_cast<RenderAction *>(action);
    if(collecting != nullptr)
        setView(*collecting);
    action->setTravMask(getTravMask());
    action->apply(getRoot());
    if(collecting != nullptr)
        draw(*collecting);
}

void Viewport::setView(RenderAction &action) const
{
    set_camera_view(action.editDrawEnv(), *getCamera(),
                    {calcPixelLeft(), calcPixelRight(), calcPixelBottom(), calcPixelTop()});
}

// --- drawing ---

namespace
{
/// Lends a view the objects of the current context.
class LentObjects
{
  public:
    explicit LentObjects(DrawEnv &env)
        : _env(env)
    {
        _env.setObjects(&GLObjectStore::current());
    }
    ~LentObjects() { _env.setObjects(nullptr); }
    LentObjects(LentObjects const &) = delete;
    LentObjects &operator=(LentObjects const &) = delete;

  private:
    DrawEnv &_env;
};
} // namespace

void Viewport::draw(RenderAction &action)
{
    if(calcPixelWidth() == 0 || calcPixelHeight() == 0)
        return;
    if(char const *const reason = gl_refusal())
    {
        OSG_LOG_WARNING("Viewport::render: %s, nothing is drawn\n", reason);
        return;
    }
    HostState const host;
    if(!host.isKept())
    {
        OSG_LOG_WARNING("Viewport::render: the stacks of attributes are full, nothing is drawn\n");
        return;
    }
    LentObjects const lent(action.editDrawEnv());
    if(FrameBufferObject *const target = getTarget())
    {
        if(char const *const reason = target->activate(*action.getDrawEnv().getObjects()))
        {
            OSG_LOG_WARNING("Viewport::render: %s, nothing is drawn\n", reason);
            return;
        }
    }
    activate();
    clearBackground();
    draw_list(action.editDrawEnv(), action.getDrawList());
    deactivate();
}

// A passive view is cleared within its area as well, as far as the host's scissor lets it.
void Viewport::clearBackground()
{
    GLint scissor[4];
    GLboolean const wasOn = glIsEnabled(GL_SCISSOR_TEST);
    glGetIntegerv(GL_SCISSOR_BOX, scissor);
    Int32 left = calcPixelLeft();
    Int32 bottom = calcPixelBottom();
    Int32 right = calcPixelRight() + 1;
    Int32 top = calcPixelTop() + 1;
    if(wasOn != GL_FALSE)
    {
        left = std::max(left, scissor[0]);
        bottom = std::max(bottom, scissor[1]);
        right = std::min(right, scissor[0] + scissor[2]);
        top = std::min(top, scissor[1] + scissor[3]);
    }
    glScissor(left, bottom, std::max(right - left, 0), std::max(top - bottom, 0));
    glEnable(GL_SCISSOR_TEST);
    getBackground()->clear();
    if(wasOn == GL_FALSE)
        glDisable(GL_SCISSOR_TEST);
    glScissor(scissor[0], scissor[1], scissor[2], scissor[3]);
}

bool Viewport::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    auto *const window = fieldId == Window::PortsFieldId ? dynamic_cast<Window *>(parent) : nullptr;
    if(window == nullptr)
        return ViewportBase::linkParent(parent, fieldId);
    window->addPort(this);
    return true;
}
} // namespace OSG
