#pragma once

#include <vector>

#include <epoxy/gl.h>

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Keeps all state of the host's context that drawing a scene touches, and puts it back at its end.
/// The stacks of matrices are not pushed, because those of the host may be full: contents are read
/// and written. While it lives, the context is in OpenGL's initial state, save the viewport, the
/// scissor, the frame buffers and what was drawn.
class OSG_STATE_API HostState
{
  public:
    HostState();
    ~HostState();
    HostState(HostState const &) = delete;
    HostState &operator=(HostState const &) = delete;

    /// False where the host has filled the stacks of attributes. Nothing was touched then, and
    /// nothing can be drawn.
    bool isKept() const { return _isKept; }

  private:
    struct Unit
    {
        GLfloat matrix[16];
        GLint sampler = 0;
    };

    void readFeatures();
    void keep();
    void keepUnits();
    void putBackUnits() const;

    int _version = 0; // of OpenGL, 21 for 2.1
    bool _isKept = false;
    bool _hasVertexArrays = false;
    bool _hasFrameBuffers = false;
    bool _hasSamplers = false;
    bool _hasPipelines = false;
    GLint _arrayBuffer = 0, _elementBuffer = 0, _unpackBuffer = 0, _packBuffer = 0;
    GLint _vertexArray = 0;
    GLint _program = 0, _pipeline = 0;
    GLint _drawFrameBuffer = 0, _readFrameBuffer = 0, _renderBuffer = 0;
    GLboolean _discards = GL_FALSE;
    GLint _clampsColors = GL_TRUE;
    GLint _clipOrigin = GL_LOWER_LEFT, _clipDepth = GL_NEGATIVE_ONE_TO_ONE;
    GLfloat _projection[16];
    GLfloat _modelView[16];
    std::vector<Unit> _units; // with texture coordinates
};
} // namespace OSG
