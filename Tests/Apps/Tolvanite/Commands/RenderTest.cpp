// The command render: its result, its picture, and the ways in which there is none.

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "FileContent.h"
#include "Keys.h"
#include "NeedsContext.h"
#include "OSGImage.h"
#include "OSGOffscreenContext.h"
#include "Program.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::content_of;
using ImagePtr = OSG::UnrecordedRefPtr<OSG::Image>;
using Pixel = std::array<int, 3>;

/// Sets a variable of the environment, which the program takes over, while it lives.
class Variable
{
  public:
    Variable(char const *name, char const *value)
        : _name(name)
    {
        setenv(name, value, 1);
    }
    ~Variable() { unsetenv(_name); }
    Variable(Variable const &) = delete;
    Variable &operator=(Variable const &) = delete;

  private:
    char const *_name;
};

/// A folder for the pictures.
class Render : public testing::Test
{
  protected:
    Outcome render(std::string const &file, std::vector<std::string> const &more) const
    {
        std::vector<std::string> words = {"render", file, "-o", target};
        words.insert(words.end(), more.begin(), more.end());
        return run_program(words);
    }

    ImagePtr picture() const
    {
        ImagePtr image(OSG::Image::create());
        EXPECT_TRUE(image->read(target.c_str()));
        return image;
    }

    void expectNone(Outcome const &outcome, std::string const &reason) const
    {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, testing::HasSubstr("tolvanite: no picture: " + reason));
        EXPECT_FALSE(std::filesystem::exists(target));
    }

    OSG::Test::TempFolder folder;
    std::string const target = folder.path("picture.png");
};

// Of the column x and the row y from the left top corner.
Pixel pixel_at(OSG::Image const &image, OSG::UInt32 x, OSG::UInt32 y)
{
    std::size_t const row = image.getHeight() - 1 - y;
    std::size_t const first = (row * image.getWidth() + x) * image.getChannels();
    auto const &bytes = image.getPixel();
    return {bytes[first], bytes[first + 1], bytes[first + 2]};
}

// --- the result ---

TEST_F(Render, HasItsKeysInTheirOrder)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Outcome const outcome = render(pavilion(), {"--size", "32x16", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    Json const result = Json::parse(outcome.out);
    EXPECT_EQ(keys_of(result), "file out size triangles seconds renderer");
    EXPECT_EQ(result["file"], pavilion());
    EXPECT_EQ(result["out"], target);
    EXPECT_EQ(result["size"], Json::parse("[32, 16]"));
    EXPECT_NE(result["renderer"], "");
}

TEST_F(Render, TellsOfTheOperationsThatRan)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Outcome const outcome = render(pavilion(), {"--size", "8x8", "--op", "Mrg", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(keys_of(Json::parse(outcome.out)),
              "file out size triangles seconds renderer operations");
}

TEST_F(Render, IsOneLineForPeople)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Outcome const outcome = render(pavilion(), {"--size", "8x8"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::StartsWith(target + ": 8x8, "));
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
}

// --- the picture ---

TEST_F(Render, IsAPictureOfThreeChannelsInTheSizeAskedFor)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    ASSERT_EQ(render(pavilion(), {"--size", "33x17"}).status, 0);
    ImagePtr const image = picture();
    EXPECT_EQ(image->getWidth(), 33u);
    EXPECT_EQ(image->getHeight(), 17u);
    EXPECT_EQ(image->getChannels(), 3u);
}

TEST_F(Render, HasNoChunkThatChangesItsColours)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    ASSERT_EQ(render(pavilion(), {"--size", "8x8"}).status, 0);
    std::string const bytes = content_of(target);
    for(char const *const chunk : {"gAMA", "sRGB", "iCCP", "cHRM"})
        EXPECT_EQ(bytes.find(chunk), std::string::npos) << chunk;
}

TEST_F(Render, GivesTheSameBytesOnEachRun)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    ASSERT_EQ(render(pavilion(), {}).status, 0);
    std::string const first = content_of(target);
    ASSERT_EQ(render(pavilion(), {}).status, 0);
    EXPECT_TRUE(content_of(target) == first);
}

TEST_F(Render, BehindEverythingShowsTheBackgroundRoundedToTheNearestByte)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Outcome const outcome = render(pavilion(), {"--size", "9x5", "--from", "0,0,1000", "--at",
                                                "0,0,2000", "--background", "1,0.5,0.25"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    ImagePtr const image = picture();
    for(OSG::UInt32 y = 0; y < 5; ++y)
        for(OSG::UInt32 x = 0; x < 9; ++x)
            ASSERT_EQ(pixel_at(*image, x, y), Pixel({255, 128, 64}));
}

// --- the scene ---

/// A red square in the plane z = 0, of two units, and a green one, twice as large, behind it.
std::string two_squares()
{
    return "mtllib squares.mtl\n"
           "v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\n"
           "v -2 -2 -3\nv 2 -2 -3\nv 2 2 -3\nv -2 2 -3\n"
           "vn 0 0 1\n"
           "usemtl red\nf 1//1 2//1 3//1 4//1\n"
           "usemtl green\nf 5//1 6//1 7//1 8//1\n";
}

class RenderSquares : public Render
{
  protected:
    std::string const scene = folder.write("squares.obj", two_squares());
    std::string const materials = folder.write(
        "squares.mtl", "newmtl red\nKa 0 0 0\nKd 1 0 0\nnewmtl green\nKa 0 0 0\nKd 0 1 0\n");

    Json shown(std::vector<std::string> more) const
    {
        more.insert(more.end(), {"--size", "64x32", "--json", "--background", "0,0,1"});
        Outcome const outcome = render(scene, more);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return outcome.status == 0 ? Json::parse(outcome.out) : Json();
    }
    // The first and the last of the pixels of a row that are not blue.
    std::pair<OSG::UInt32, OSG::UInt32> span(OSG::UInt32 y) const
    {
        ImagePtr const image = picture();
        OSG::UInt32 first = 64;
        OSG::UInt32 last = 0;
        for(OSG::UInt32 x = 0; x < 64; ++x)
        {
            if(pixel_at(*image, x, y) == Pixel({0, 0, 255}))
                continue;
            first = std::min(first, x);
            last = x;
        }
        return {first, last};
    }
};

TEST_F(RenderSquares, ShowsTheNearerOneInTheLightOfTheEye)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Json const result = shown({"--from", "0,0,4", "--at", "0,0,0"});
    EXPECT_EQ(result["triangles"], 4);
    EXPECT_EQ(pixel_at(*picture(), 32, 16), Pixel({255, 0, 0}));
    EXPECT_EQ(pixel_at(*picture(), 0, 0), Pixel({0, 0, 255}));
    EXPECT_EQ(pixel_at(*picture(), 32, 5)[0], 0);
    EXPECT_GT(pixel_at(*picture(), 32, 5)[1], 200);
}

TEST_F(RenderSquares, WithoutPerspectiveHasTheUnitsAskedFor)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    // 8 units from bottom to top, 32 pixels: the green square covers 16 of them.
    shown({"--from", "0,0,4", "--at", "0,0,0", "--ortho", "8"});
    EXPECT_EQ(span(16), std::pair(24u, 39u));
}

TEST_F(RenderSquares, TheAngleIsTheVerticalOne)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    // At depth 7, 90 degrees show 14 units: the square of 4 covers 32 * 4 / 14 = 9.14 pixels.
    shown({"--from", "0,0,4", "--at", "0,0,0", "--fov", "90"});
    auto const [first, last] = span(16);
    EXPECT_NEAR(last - first + 1, 9.14, 1);
}

TEST_F(RenderSquares, FromBehindShowsTheOtherSideLitToo)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    shown({"--from", "0,0,-8", "--at", "0,0,0"});
    EXPECT_EQ(pixel_at(*picture(), 32, 16)[0], 0);
    EXPECT_GT(pixel_at(*picture(), 32, 16)[1], 200);
}

TEST_F(RenderSquares, FittedTheyAreWhollyInThePicture)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    shown({"--fit"});
    std::string const fitted = content_of(target);
    ImagePtr const image = picture();
    int covered = 0;
    for(OSG::UInt32 y = 0; y < 32; ++y)
    {
        for(OSG::UInt32 x = 0; x < 64; ++x)
        {
            bool const isBlue = pixel_at(*image, x, y) == Pixel({0, 0, 255});
            covered += isBlue ? 0 : 1;
            EXPECT_TRUE(isBlue || (x > 0 && x < 63 && y > 0 && y < 31)) << x << ' ' << y;
        }
    }
    EXPECT_GT(covered, 100);
    shown({});
    EXPECT_TRUE(content_of(target) == fitted);
}

// A query for each pixel of a picture, row by row, at the pixel's centre.
std::string pixel_queries(int width, int height)
{
    std::ostringstream lines;
    for(int y = 0; y < height; ++y)
    {
        for(int x = 0; x < width; ++x)
            lines
                << R"({"from": [9, 6, 12], "at": [0, 2, 0], "up": [0, 1, 0], "fov": 40, "size": [)"
                << width << ", " << height << R"(], "pixel": [)" << x + 0.5 << ", " << y + 0.5
                << R"(], "radius": 0.01})" << '\n';
    }
    return lines.str();
}

TEST_F(Render, ShowsWhatSelectFindsPixelByPixel)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    constexpr int Width = 48;
    constexpr int Height = 27;
    std::string const building = TEST_SOURCE_DIR "/Models/building.obj";
    ASSERT_EQ(render(building, {"--size", "48x27", "--from", "9,6,12", "--at", "0,2,0", "--fov",
                                "40", "--background", "1,0,1"})
                  .status,
              0);
    ImagePtr const image = picture();
    std::string const queries = folder.write("pixels.jsonl", pixel_queries(Width, Height));
    std::istringstream answers(run_program({"select", building, "--queries", queries}).out);
    int hits = 0;
    int mistaken = 0;
    std::string answer;
    for(int i = 0; std::getline(answers, answer); ++i)
    {
        bool const isHit = Json::parse(answer)["count"] != 0;
        bool const isSeen = pixel_at(*image, static_cast<OSG::UInt32>(i % Width),
                                     static_cast<OSG::UInt32>(i / Width)) != Pixel({255, 0, 255});
        hits += isHit ? 1 : 0;
        mistaken += isHit != isSeen ? 1 : 0;
    }
    EXPECT_GT(hits, Width * Height / 3);
    EXPECT_LT(hits, Width * Height);
    // A centre within a hundredth of a pixel of an edge may go either way.
    EXPECT_LE(mistaken, 3);
}

// --- no picture ---

TEST_F(Render, BeyondWhatTheDriverDrawsIsNone)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    expectNone(render(pavilion(), {"--size", "2000000x1"}),
               "a size of 2000000x1 is beyond the driver's ");
}

TEST_F(Render, OfAnAbsurdSizeIsNone)
{
    expectNone(render(pavilion(), {"--size", "100000x100000"}),
               "a size of 100000x100000 is more than a picture file holds\n");
}

TEST_F(Render, WithoutADriverIsNone)
{
    Variable const nobody("__EGL_VENDOR_LIBRARY_DIRS", "/nonexistent");
    expectNone(render(pavilion(), {}), "EGL knows no display\n");
}

TEST_F(Render, ByTooOldAnOpenGLIsNone)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Variable const old("MESA_GL_VERSION_OVERRIDE", "1.4");
    expectNone(render(pavilion(), {}), "OpenGL is older than 2.1\n");
}

TEST_F(Render, WithoutFixedFunctionsIsNone)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Variable const core("MESA_GL_VERSION_OVERRIDE", "3.3FC");
    expectNone(render(pavilion(), {}), "the context is one of the core profile\n");
}

TEST_F(Render, WithoutFrameBuffersIsNone)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    Variable const version("MESA_GL_VERSION_OVERRIDE", "2.1");
    Variable const extensions("MESA_EXTENSION_OVERRIDE", "-GL_ARB_framebuffer_object");
    expectNone(render(pavilion(), {}), "the driver has no frame buffer objects\n");
}

TEST_F(Render, WithoutLibrariesIsNone)
{
    {
        Variable const shim("LD_PRELOAD", MISSING_LIBRARY_SHIM);
        Variable const names("MISSING_LIBRARIES", "libEGL.so.1");
        expectNone(render(pavilion(), {}), "this machine has no libEGL.so.1\n");
    }
    Variable const shim("LD_PRELOAD", MISSING_LIBRARY_SHIM);
    Variable const names("MISSING_LIBRARIES", "libGL.so.1 libOpenGL.so.0");
    expectNone(render(pavilion(), {}), "this machine has neither libOpenGL.so.0 nor libGL.so.1\n");
}

TEST_F(Render, IntoAFolderThatIsNotThereIsNone)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    std::string const nowhere = folder.path("none/picture.png");
    Outcome const outcome =
        run_program({"render", pavilion(), "-o", nowhere, "--size", "8x8", "--json"});
    expectNone(outcome, "cannot write " + nowhere + ": No such file or directory\n");
}

TEST_F(Render, ThatFailsLeavesTheOldPicture)
{
    folder.write("picture.png", "old");
    EXPECT_EQ(render(pavilion(), {"--size", "100000x100000"}).status, 1);
    EXPECT_EQ(render(folder.write("bad.obj.3ds", "?"), {}).status, 1);
    EXPECT_EQ(render(pavilion(), {"--size", "0x1"}).status, 2);
    EXPECT_EQ(content_of(target), "old");
}

TEST_F(Render, OfAFileThatGivesNoSceneSaysSo)
{
    OSG_NEEDS_CONTEXT(OSG::OffscreenContext(1, 1));
    std::string const bad = folder.write("bad.3ds", "?");
    Outcome const outcome = render(bad, {});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, testing::EndsWith("tolvanite: cannot read " + bad + "\n"));
}
} // namespace
} // namespace Tool::Test
