// What views leave of the context of their host.

#include <array>

#include <gmock/gmock.h>

#include "ContextState.h"
#include "DrawnView.h"
#include "OSGImage.h"
#include "OSGSimpleTexturedMaterial.h"

namespace OSG::Test
{
namespace
{
using HostContext = ViewportDrawing;

/// Sets what drawing touches to values that it would not leave.
class UnusualHost
{
  public:
    UnusualHost()
    {
        setBindings();
        setArrays();
        setUnits();
        setMatrices();
        setRest();
    }

  private:
    void setBindings()
    {
        GLuint names[4];
        glGenBuffers(4, names);
        glGenVertexArrays(1, &_vertexArray);
        glBindVertexArray(_vertexArray);
        glBindBuffer(GL_ARRAY_BUFFER, names[0]);
        glBufferData(GL_ARRAY_BUFFER, 64, nullptr, GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, names[1]);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, names[2]);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, names[3]);
        GLuint const shader = glCreateShader(GL_VERTEX_SHADER);
        char const *const text = "void main() { gl_Position = vec4(9.0); }";
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        GLuint const program = glCreateProgram();
        glAttachShader(program, shader);
        glLinkProgram(program);
        glUseProgram(program);
        GLuint other;
        glGenFramebuffers(1, &other);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, other);
    }

    void setArrays()
    {
        for(GLenum array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_EDGE_FLAG_ARRAY,
                            GL_SECONDARY_COLOR_ARRAY, GL_FOG_COORD_ARRAY})
            glEnableClientState(array);
        glVertexPointer(2, GL_SHORT, 20, nullptr);
        glNormalPointer(GL_BYTE, 12, nullptr);
        glEnableVertexAttribArray(0);
        glEnableVertexAttribArray(5);
        glEnable(GL_PRIMITIVE_RESTART);
        glPrimitiveRestartIndex(1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 3);
        glPixelStorei(GL_UNPACK_SKIP_PIXELS, 2);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        glPixelStorei(GL_PACK_ALIGNMENT, 2);
    }

    void setUnits()
    {
        for(GLenum unit : {0u, 1u, 5u})
        {
            GLuint texture;
            GLuint sampler;
            glGenTextures(1, &texture);
            glGenSamplers(1, &sampler);
            glActiveTexture(GL_TEXTURE0 + unit);
            glClientActiveTexture(GL_TEXTURE0 + unit);
            glBindTexture(GL_TEXTURE_2D, texture);
            glBindSampler(unit, sampler);
            glEnable(GL_TEXTURE_2D);
            glEnable(GL_TEXTURE_GEN_S);
            glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
            glEnableClientState(GL_TEXTURE_COORD_ARRAY);
            glMatrixMode(GL_TEXTURE);
            glTranslatef(1, 2, static_cast<GLfloat>(unit));
        }
        glClientActiveTexture(GL_TEXTURE2);
        glActiveTexture(GL_TEXTURE3);
    }

    void setMatrices()
    {
        // Full stacks, each level with a matrix of its own.
        for(GLenum mode : {GL_PROJECTION, GL_MODELVIEW})
        {
            GLint most = 0;
            glGetIntegerv(mode == GL_PROJECTION ? GL_MAX_PROJECTION_STACK_DEPTH
                                                : GL_MAX_MODELVIEW_STACK_DEPTH,
                          &most);
            glMatrixMode(mode);
            for(GLint i = 1; i < most; ++i)
            {
                glTranslatef(1, 0, 0);
                glPushMatrix();
            }
        }
        glMatrixMode(GL_PROJECTION);
    }

    void setRest()
    {
        for(GLenum name :
            {GL_ALPHA_TEST, GL_BLEND, GL_COLOR_MATERIAL, GL_CULL_FACE, GL_FOG, GL_LIGHT1, GL_LIGHT7,
             GL_LINE_STIPPLE, GL_POLYGON_STIPPLE, GL_STENCIL_TEST, GL_CLIP_PLANE0, GL_SCISSOR_TEST,
             GL_RESCALE_NORMAL, GL_POLYGON_OFFSET_FILL, GL_FRAMEBUFFER_SRGB, GL_COLOR_LOGIC_OP,
             GL_RASTERIZER_DISCARD, GL_DEPTH_CLAMP, GL_PRIMITIVE_RESTART_FIXED_INDEX})
            glEnable(name);
        glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
        glClipControl(GL_UPPER_LEFT, GL_ZERO_TO_ONE);
        GLfloat const attenuation[] = {0, 1, 0};
        glPointParameterfv(GL_POINT_DISTANCE_ATTENUATION, attenuation);
        GLdouble const plane[] = {0, 0, 0, -1};
        glClipPlane(GL_CLIP_PLANE0, plane);
        glStencilFunc(GL_NEVER, 1, 1);
        glLogicOp(GL_INVERT);
        glScissor(0, 0, 16, 32);
        glViewport(0, 0, 32, 32);
        glDepthFunc(GL_GREATER);
        glDepthMask(GL_FALSE);
        glDepthRange(0.25, 0.5);
        glClearColor(0.1f, 0.2f, 0.3f, 0.4f);
        glClearDepth(0.5);
        glColorMask(GL_TRUE, GL_FALSE, GL_TRUE, GL_FALSE);
        glFrontFace(GL_CW);
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glPolygonOffset(1000, 1000);
        glShadeModel(GL_FLAT);
        glBlendFunc(GL_ZERO, GL_ONE);
        glBlendEquation(GL_FUNC_REVERSE_SUBTRACT);
        glAlphaFunc(GL_NEVER, 0.25f);
        glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1);
        glPixelTransferf(GL_RED_SCALE, 0);
        glPixelTransferf(GL_GREEN_BIAS, 1);
        glColor4f(0.1f, 0.2f, 0.3f, 0.4f);
        glNormal3f(1, 2, 3);
    }

    GLuint _vertexArray = 0;
};

// A textured quad and a lit one, so that drawing touches all that it may.
NodePtr scene_of_all_kinds()
{
    UnrecordedRefPtr<Image> const image(Image::create());
    UInt8 const green[] = {0, 255, 0};
    image->set(1, 1, 3, green);
    UnrecordedRefPtr<SimpleTexturedMaterial> const textured(SimpleTexturedMaterial::create());
    textured->setImage(image);
    textured->setDiffuse(Color3f(1, 1, 1));
    textured->setAmbient(Color3f(1, 1, 1));
    textured->setLit(false);
    NodePtr const face = square(textured);
    auto *const geometry = dynamic_cast<Geometry *>(face->getCore());
    geometry->setTexCoords(
        make_property<GeoVec2fProperty>(std::vector<Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}}));
    UnrecordedRefPtr<SimpleMaterial> const lit(SimpleMaterial::create());
    lit->setTransparency(0.5f);
    Matrix mirror = scaling(-1, 1, 1);
    mirror[3] = Vec4f(0, 0, -1, 1);
    return make_group({face, make_transform(mirror, {square(lit)})});
}

TEST_F(HostContext, TheHostsContextIsAsItWas)
{
    OSG_NEEDS_CONTEXT(context());
    for(bool isPassive : {false, true})
    {
        OffscreenContext own(Size, Size);
        ASSERT_TRUE(own.makeCurrent());
        UnusualHost const host;
        ASSERT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        UnrecordedRefPtr<PassiveViewport> const passive = PassiveViewport::make();
        Viewport *const view = isPassive ? passive.get() : viewport.get();
        furnish(view);
        view->setRoot(scene_of_all_kinds());
        view->setLeft(0);
        view->setBottom(0);
        view->setRight(Size - 1);
        view->setTop(Size - 1);
        Plane const section(Vec3f(0, 1, 0), Pnt3f(0, 0.5f, 0));
        action->editDrawEnv().setSections({&section, 1});
        std::array<GLdouble, 4> cutBefore{};
        std::array<GLdouble, 4> cutAfter{};
        glGetClipPlane(GL_CLIP_PLANE0, cutBefore.data());
        ContextState const before = read_context_state();
        view->render(action);
        EXPECT_THAT(differences(before, read_context_state()), testing::IsEmpty()) << isPassive;
        glGetClipPlane(GL_CLIP_PLANE0, cutAfter.data());
        EXPECT_EQ(cutBefore, cutAfter);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        GLObjectStore::releaseCurrent();
        own.release();
    }
}

TEST_F(HostContext, TheHostsSettingsDoNotShowInThePicture)
{
    UnusualHost const host;
    viewport->setRoot(scene_of_all_kinds());
    viewport->render(action);
    // As a host that asks for its pixels does.
    glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelTransferf(GL_RED_SCALE, 1);
    glPixelTransferf(GL_GREEN_BIAS, 0);
    EXPECT_EQ(pixel(15, 15), (Rgb{0, 255, 0}));
    EXPECT_EQ(pixel(2, 2), bluePixel);
    EXPECT_EQ(pixel(Size - 2, 2), bluePixel);
}
} // namespace
} // namespace OSG::Test
