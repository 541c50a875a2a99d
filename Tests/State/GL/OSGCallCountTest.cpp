// What drawn lists cost in calls of OpenGL.

#include <map>
#include <string>

#include "DrawingTest.h"
#include "DrawnLists.h"
#include "OSGImage.h"

namespace OSG::Test
{
namespace
{
using Counts = std::map<std::string, int>;
Counts counts;

/// Counts the calls of one entry point while it lives.
template <class Tag, class... Arguments>
class Counted
{
  public:
    using Entry = void(GLAPIENTRY *)(Arguments...);

    Counted(Entry &entry, char const *name)
        : _entry(entry)
    {
        own = entry;
        ownName = name;
        entry = &count;
    }
    ~Counted() { _entry = own; }
    Counted(Counted const &) = delete;
    Counted &operator=(Counted const &) = delete;

  private:
    static void GLAPIENTRY count(Arguments... arguments)
    {
        ++counts[ownName];
        own(arguments...);
    }

    inline static Entry own;
    inline static char const *ownName;
    Entry &_entry;
};

template <class Tag, class... Arguments>
auto counted(void(GLAPIENTRY *&entry)(Arguments...), char const *name)
{
    return Counted<Tag, Arguments...>(entry, name);
}

#define OSG_COUNT_CALLS(name)                                                                      \
    struct Tag##name;                                                                              \
    auto const counting##name = counted<Tag##name>(epoxy_##name, #name)

Counts counts_of(TestList &scene)
{
    scene.draw(); // meshes and textures are made
    OSG_COUNT_CALLS(glLoadMatrixf);
    OSG_COUNT_CALLS(glLoadIdentity);
    OSG_COUNT_CALLS(glDrawElements);
    OSG_COUNT_CALLS(glBindBuffer);
    OSG_COUNT_CALLS(glBindTexture);
    OSG_COUNT_CALLS(glVertexPointer);
    OSG_COUNT_CALLS(glNormalPointer);
    OSG_COUNT_CALLS(glTexCoordPointer);
    OSG_COUNT_CALLS(glEnableClientState);
    OSG_COUNT_CALLS(glDisableClientState);
    OSG_COUNT_CALLS(glEnable);
    OSG_COUNT_CALLS(glDisable);
    OSG_COUNT_CALLS(glMaterialfv);
    OSG_COUNT_CALLS(glLightfv);
    OSG_COUNT_CALLS(glColor4fv);
    OSG_COUNT_CALLS(glFrontFace);
    OSG_COUNT_CALLS(glActiveTexture);
    OSG_COUNT_CALLS(glTexParameteri);
    counts.clear();
    scene.draw();
    return counts;
}

/// What the second costs more than the first, without zeros.
Counts difference(Counts const &less, Counts const &more)
{
    Counts result;
    for(auto const &[name, count] : more)
    {
        auto const at = less.find(name);
        int const before = at != less.end() ? at->second : 0;
        if(count != before)
            result[name] = count - before;
    }
    return result;
}

using CallCount = DrawingTest;

DrawState lit_state(Real32 red = 0.5f)
{
    DrawState state;
    state.surface.diffuse = Color4f(red, 0, 0, 1);
    return state;
}

Counts counts_of_boxes(int boxes, bool haveOwnSpaces)
{
    TestList scene;
    UInt32 const state = scene.addState(lit_state());
    UInt32 const lights = scene.addLights(headlight());
    for(int i = 0; i < boxes; ++i)
        scene.add(scene.addShape(with_normals(full_picture())), state,
                  haveOwnSpaces ? scene.addSpace(Matrix()) : 0, lights);
    return counts_of(scene);
}

TEST_F(CallCount, ASmallMeshInASpaceOfItsOwnCostsOneMatrixAndOneDrawCall)
{
    EXPECT_EQ(difference(counts_of_boxes(100, true), counts_of_boxes(300, true)),
              (Counts{{"glLoadMatrixf", 200}, {"glDrawElements", 200}}));
}

TEST_F(CallCount, NeighboursInOneSpaceAreDrawnTogether)
{
    EXPECT_EQ(difference(counts_of_boxes(100, false), counts_of_boxes(300, false)), Counts());
    EXPECT_EQ(counts_of_boxes(300, false)["glDrawElements"], 1);
}

TEST_F(CallCount, AnotherColourCostsItsMaterialAlone)
{
    auto const countsOf = [](int colors)
    {
        TestList scene;
        UInt32 const lights = scene.addLights(headlight());
        for(int i = 0; i < colors; ++i)
            scene.add(with_normals(full_picture()), lit_state(static_cast<Real32>(i) / 10), 0,
                      lights);
        return counts_of(scene);
    };
    EXPECT_EQ(difference(countsOf(2), countsOf(3)),
              (Counts{{"glDrawElements", 1}, {"glMaterialfv", 1}}));
}

TEST_F(CallCount, AStateThatDiffersInNothingSeenCostsNothing)
{
    // Vertices without coordinates show no texture.
    UnrecordedRefPtr<Image> const image(Image::create());
    image->set(1, 1, 3, nullptr);
    DrawState textured = lit_state();
    textured.textures.resize(1);
    textured.textures[0].image = image;
    TestList one;
    one.add(with_normals(full_picture()), lit_state());
    TestList two;
    two.add(with_normals(full_picture()), lit_state());
    two.add(with_normals(full_picture()), textured);
    EXPECT_EQ(difference(counts_of(one), counts_of(two)), (Counts{{"glDrawElements", 1}}));
}

TEST_F(CallCount, TheSameTextureIsBoundOnce)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    image->set(1, 1, 3, nullptr);
    auto const countsOf = [&image](int items)
    {
        TestList scene;
        for(int i = 0; i < items; ++i)
        {
            DrawState state = lit_state(static_cast<Real32>(i) / 10);
            state.textures.resize(1);
            state.textures[0].image = image;
            scene.add(with_tex_coords(with_normals(full_picture())), state);
        }
        return counts_of(scene);
    };
    EXPECT_EQ(difference(countsOf(1), countsOf(3)),
              (Counts{{"glDrawElements", 2}, {"glMaterialfv", 2}}));
}
} // namespace
} // namespace OSG::Test
