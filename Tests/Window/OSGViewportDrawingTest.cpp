#include "OSGViewport.h"

#include <gmock/gmock.h>

#include "CameraBuilders.h"
#include "ContextState.h"
#include "DrawingTest.h"
#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGFrameBufferObject.h"
#include "OSGImage.h"
#include "OSGRenderAction.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSolidBackground.h"

namespace OSG::Test
{
namespace
{
/// A view that leaves the viewport of OpenGL to the host.
class PassiveViewport : public Viewport
{
  public:
    static UnrecordedRefPtr<PassiveViewport> make()
    {
        return UnrecordedRefPtr<PassiveViewport>(TransitPtr<PassiveViewport>(new PassiveViewport));
    }
    bool isPassive() const override { return true; }
};

UnrecordedRefPtr<SimpleMaterial> unlit(Color3f const &color)
{
    UnrecordedRefPtr<SimpleMaterial> material(SimpleMaterial::create());
    material->setDiffuse(color);
    material->setLit(false);
    return material;
}

/// A square of side 2 about the origin, which looks along z.
NodePtr square(Material *material)
{
    GeometryPtr const geometry = make_geometry(
        one_primitive(QuadsPrimitive, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}},
                      {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
    geometry->setMaterial(material);
    return make_node(geometry);
}

struct ViewportDrawing : DrawingTest
{
    void SetUp() override
    {
        DrawingTest::SetUp();
        camera->setBeacon(beacon);
        background->setColor(Color3f(0, 0, 1));
        furnish(viewport);
    }

    void furnish(Viewport *view)
    {
        view->setCamera(camera);
        view->setBackground(background);
        view->setRoot(root);
    }

    // The square covers the middle half of the view.
    CameraPtr<OrthographicCamera> const camera = make_orthographic(4, 1, 10);
    NodePtr const beacon = make_beacon({0, 0, 5}, {0, 0, 0}, {0, 1, 0});
    UnrecordedRefPtr<SolidBackground> const background{SolidBackground::create()};
    UnrecordedRefPtr<SimpleMaterial> const red = unlit(Color3f(1, 0, 0));
    NodePtr const root = make_group({square(red)});
    ViewportPtr const viewport = make_viewport(0, 0, Size - 1, Size - 1);
    UnrecordedRefPtr<RenderAction> const action{RenderAction::create()};

    Rgb const redPixel{255, 0, 0};
    Rgb const bluePixel{0, 0, 255};
    Rgb const blackPixel{0, 0, 0};
};

TEST_F(ViewportDrawing, ShowsTheSceneInFrontOfItsBackground)
{
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(8, 8), redPixel);
    EXPECT_EQ(pixel(7, 8), bluePixel);
    EXPECT_EQ(pixel(23, 23), redPixel);
    EXPECT_EQ(pixel(24, 23), bluePixel);
}

TEST_F(ViewportDrawing, KeepsToItsAreaOfTheWindow)
{
    ViewportPtr const part = make_viewport(16, 16, 31, 31);
    furnish(part);
    part->render(action);
    EXPECT_EQ(pixel(24, 8), redPixel);
    EXPECT_EQ(pixel(16, 0), bluePixel);
    EXPECT_EQ(pixel(15, 0), blackPixel);
    EXPECT_EQ(pixel(16, 16), blackPixel);
}

TEST_F(ViewportDrawing, ABackgroundThatDrawsNothingLeavesWhatIsThere)
{
    viewport->setBackground(UnrecordedRefPtr<Background>(Background::create()));
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(0, 0), blackPixel);
}

TEST_F(ViewportDrawing, EditsAreSeenInTheNextFrame)
{
    viewport->render(action);
    red->setDiffuse(Color3f(0, 1, 0));
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), (Rgb{0, 255, 0}));
    auto *const geometry = dynamic_cast<Geometry *>(root->getChild(0)->getCore());
    auto *const positions = dynamic_cast<GeoPnt3fProperty *>(geometry->getPositions());
    for(Pnt3f &position : positions->editValues())
        position[0] += 2;
    root->getChild(0)->getCore()->invalidateVolume();
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), bluePixel);
    EXPECT_EQ(pixel(24, 15), (Rgb{0, 255, 0}));
}

TEST_F(ViewportDrawing, APassiveViewStaysInTheViewportOfTheHost)
{
    UnrecordedRefPtr<PassiveViewport> const passive = PassiveViewport::make();
    furnish(passive);
    passive->setLeft(8);
    passive->setBottom(8);
    passive->setRight(23);
    passive->setTop(23);
    glViewport(8, 8, 16, 16);
    passive->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(12, 12), redPixel);
    EXPECT_EQ(pixel(11, 12), bluePixel);
    EXPECT_EQ(pixel(8, 8), bluePixel);
    EXPECT_EQ(pixel(7, 8), blackPixel);
}

// --- frame buffers ---

/// A view into a picture in memory.
class TargetedViewport : public Viewport
{
  public:
    static UnrecordedRefPtr<TargetedViewport> make(FrameBufferObject *target)
    {
        UnrecordedRefPtr<TargetedViewport> port(TransitPtr<TargetedViewport>(new TargetedViewport));
        port->_target = target;
        return port;
    }
    FrameBufferObject *getTarget() const override { return _target; }

  private:
    FrameBufferObject *_target = nullptr;
};

struct TargetedDrawing : ViewportDrawing
{
    void SetUp() override
    {
        ViewportDrawing::SetUp();
        target->setWidth(20);
        target->setHeight(10);
        furnish(targeted);
        targeted->setRight(19);
        targeted->setTop(9);
    }

    static Rgb pixelOf(Image const &image, UInt32 x, UInt32 y)
    {
        UInt8 const *const at = image.getPixel().data() + (y * image.getWidth() + x) * 3;
        return {at[0], at[1], at[2]};
    }

    UnrecordedRefPtr<FrameBufferObject> target{FrameBufferObject::create()};
    UnrecordedRefPtr<TargetedViewport> const targeted = TargetedViewport::make(target);
    UnrecordedRefPtr<Image> const image{Image::create()};
};

TEST_F(TargetedDrawing, APictureInMemoryIsDrawnIntoInsteadOfTheWindow)
{
    targeted->render(action);
    EXPECT_EQ(pixel(), blackPixel);
    ASSERT_TRUE(target->read(*image));
    EXPECT_EQ(image->getWidth(), 20u);
    EXPECT_EQ(image->getHeight(), 10u);
    EXPECT_EQ(pixelOf(*image, 10, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 7, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 6, 5), bluePixel);
    EXPECT_EQ(pixelOf(*image, 10, 1), bluePixel);
    EXPECT_EQ(pixel(), blackPixel) << "reading puts the host's frame buffer back";
}

TEST_F(TargetedDrawing, ItFollowsItsSizeAndIsFreedWithItsContainer)
{
    targeted->render(action);
    std::size_t const before = GLObjectStore::current().countObjects();
    target->setWidth(40);
    targeted->setRight(39);
    targeted->render(action);
    ASSERT_TRUE(target->read(*image));
    EXPECT_EQ(pixelOf(*image, 20, 5), redPixel);
    EXPECT_EQ(pixelOf(*image, 39, 5), bluePixel);
    EXPECT_EQ(GLObjectStore::current().countObjects(), before);
    target = nullptr;
    EXPECT_EQ(GLObjectStore::current().countObjects(), before - 3);
}

TEST_F(TargetedDrawing, WithoutPixelsNothingIsDrawnAndTheWarningSaysSo)
{
    target->setWidth(0);
    LogCapture const log;
    targeted->render(action);
    EXPECT_FALSE(target->read(*image));
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{
                  "Viewport::render: the frame buffer has no pixels, nothing is drawn\n",
                  "FrameBufferObject::read: the frame buffer has no pixels\n"}));
    EXPECT_EQ(pixel(), blackPixel);
}

TEST_F(TargetedDrawing, ASizeBeyondTheDriversIsRefused)
{
    target->setWidth(65535);
    LogCapture const log;
    targeted->render(action);
    EXPECT_EQ(log.texts().size(), 1u);
    EXPECT_EQ(pixel(), blackPixel);
}

// --- where there is nothing to draw with or into ---

TEST_F(ViewportDrawing, WithoutAContextItSaysSoOnceAndTheWalkIsHarmless)
{
    context().release();
    {
        LogCapture const log;
        viewport->render(action);
        EXPECT_EQ(log.texts(), (std::vector<std::string>{
                                   "Viewport::render: no OpenGL context is current, nothing is "
                                   "drawn\n"}));
        EXPECT_EQ(action->getDrawList().opaque.size(), 1u);
    }
    ASSERT_TRUE(context().makeCurrent());
    EXPECT_EQ(pixel(15, 15), blackPixel);
}

TEST_F(ViewportDrawing, AViewWithoutPixelsDrawsNothing)
{
    ViewportPtr const empty = make_viewport(5, 5, 4, 4);
    furnish(empty);
    LogCapture const log;
    empty->render(action);
    EXPECT_EQ(pixel(15, 15), blackPixel);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(ViewportDrawing, FullStacksOfAttributesAreNoPictureAndOneWarning)
{
    GLint most = 0;
    glGetIntegerv(GL_MAX_ATTRIB_STACK_DEPTH, &most);
    for(GLint i = 0; i < most; ++i)
        glPushAttrib(GL_CURRENT_BIT);
    {
        LogCapture const log;
        viewport->render(action);
        EXPECT_EQ(log.texts().size(), 1u);
    }
    for(GLint i = 0; i < most; ++i)
        glPopAttrib();
    EXPECT_EQ(pixel(15, 15), blackPixel);
}

// --- the host's context ---

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
             GL_RESCALE_NORMAL, GL_POLYGON_OFFSET_FILL, GL_FRAMEBUFFER_SRGB, GL_COLOR_LOGIC_OP})
            glEnable(name);
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

TEST_F(ViewportDrawing, TheHostsContextIsAsItWas)
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
        ContextState const before = read_context_state();
        view->render(action);
        EXPECT_THAT(differences(before, read_context_state()), testing::IsEmpty()) << isPassive;
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        GLObjectStore::releaseCurrent();
        own.release();
    }
}

TEST_F(ViewportDrawing, TheHostsSettingsDoNotShowInThePicture)
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
