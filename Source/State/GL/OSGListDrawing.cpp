#include "OSGListDrawing.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGDrawEnv.h"
#include "OSGGLObjectStore.h"
#include "OSGLineStates.h"
#include "OSGMeshStore.h"
#include "OSGStateTracker.h"
#include "OSGVertexArrays.h"

namespace OSG
{
namespace
{
// Goes through a list and changes in the context only what differs from one item to the next.
class ListDrawing
{
  public:
    ListDrawing(DrawEnv &env, DrawList const &list)
        : _list(list)
        , _places(env.getObjects()->meshes().prepare(list))
        , _tracker(env)
        , _states(&list.states)
    {
    }

    enum class Parts
    {
        All,
        Triangles
    };

    /// From now on items are drawn in these states, which have the numbers of the list's, and no
    /// more of them than `parts`. The states have to live until the end.
    void use(std::vector<DrawState const *> const &states, Parts parts);
    void draw(std::vector<DrawItem> const &items);
    void finish() { _tracker.leave(); }

  private:
    static constexpr UInt32 None = 0xFFFFFFFF;

    void enter(DrawItem const &item, MeshPage const &page);
    void setLights(UInt32 lights);
    void setSpace(UInt32 space);
    DrawItem const *drawRun(DrawItem const *item, DrawItem const *end) const;
    void drawInOrder(MeshRange const &range, std::vector<DrawMesh::Run> const &runs) const;
    void drawPart(GLenum mode, UInt32 count, UInt32 firstIndex) const;

    DrawList const &_list;
    std::vector<MeshStore::Place> const &_places;
    StateTracker _tracker;
    std::vector<DrawState const *> const *_states;
    Parts _parts = Parts::All;
    VertexArrays _arrays;
    MeshPage const *_page = nullptr;
    GLenum _indexType = GL_UNSIGNED_SHORT;
    UInt32 _indexBytes = 2;
    UInt32 _state = None;
    UInt32 _lights = None;
    UInt32 _space = None;
    UInt32 _lightsOn = 0;
    bool _isMirrored = false;
};

void ListDrawing::use(std::vector<DrawState const *> const &states, Parts parts)
{
    _states = &states;
    _parts = parts;
    _state = None;
}

void ListDrawing::draw(std::vector<DrawItem> const &items)
{
    DrawItem const *const end = items.data() + items.size();
    for(DrawItem const *item = items.data(); item != end;)
    {
        MeshPage const *const page = _places[item->shape].page;
        if(page == nullptr)
        {
            ++item;
            continue;
        }
        if(item->state != _state || page != _page)
            enter(*item, *page);
        if(item->lights != _lights)
            setLights(item->lights);
        if(item->space != _space)
            setSpace(item->space);
        item = drawRun(item, end);
    }
}

void ListDrawing::enter(DrawItem const &item, MeshPage const &page)
{
    bool const isSameLayout = _page != nullptr && _page->layout().bits == page.layout().bits;
    if(item.state != _state || !isSameLayout)
        _tracker.enter(*(*_states)[item.state], page.layout());
    _arrays.bind(page, _tracker.use());
    _state = item.state;
    _page = &page;
    _indexBytes = page.indexBytes();
    _indexType = page.hasShortIndices() ? GL_UNSIGNED_SHORT : GL_UNSIGNED_INT;
}

// The values are in eye coordinates, and OpenGL takes a position through the model's matrix.
void ListDrawing::setLights(UInt32 lights)
{
    LightSet const &set = _list.lights[lights];
    glLoadIdentity();
    _space = None;
    GLenum light = GL_LIGHT0;
    for(LightValues const &given : set)
    {
        LightValues const values = checked_light(given);
        glLightfv(light, GL_AMBIENT, values.ambient.values());
        glLightfv(light, GL_DIFFUSE, values.diffuse.values());
        glLightfv(light, GL_SPECULAR, values.specular.values());
        glLightfv(light, GL_POSITION, values.position.values());
        glLightfv(light, GL_SPOT_DIRECTION, values.spotDirection.values());
        glLightf(light, GL_SPOT_CUTOFF, values.spotCutOff);
        glLightf(light, GL_SPOT_EXPONENT, values.spotExponent);
        glLightf(light, GL_CONSTANT_ATTENUATION, values.attenuation[0]);
        glLightf(light, GL_LINEAR_ATTENUATION, values.attenuation[1]);
        glLightf(light, GL_QUADRATIC_ATTENUATION, values.attenuation[2]);
        glEnable(light++);
    }
    UInt32 const count = static_cast<UInt32>(set.size());
    for(UInt32 i = count; i < _lightsOn; ++i)
        glDisable(GL_LIGHT0 + i);
    _lightsOn = count;
    _lights = lights;
}

void ListDrawing::setSpace(UInt32 space)
{
    DrawList::Space const &wanted = _list.spaces[space];
    glLoadMatrixf(wanted.toEye.values());
    if(wanted.isMirrored != _isMirrored)
        glFrontFace(wanted.isMirrored ? GL_CW : GL_CCW);
    _isMirrored = wanted.isMirrored;
    _space = space;
}

// Draws the item, and with it those after it that need nothing else and whose triangles follow in
// the buffer. Returns the first item that is left.
DrawItem const *ListDrawing::drawRun(DrawItem const *item, DrawItem const *end) const
{
    MeshStore::Place const &place = _places[item->shape];
    MeshRange const &range = place.range;
    UInt32 const firstIndex = range.firstIndex;
    bool const hasAll = _parts == Parts::All;
    if(hasAll && place.runs != nullptr && (*_states)[item->state]->isTransparent())
    {
        drawInOrder(range, *place.runs);
        return item + 1;
    }
    if(range.lineIndices + range.pointIndices != 0)
    {
        drawPart(GL_TRIANGLES, range.triangleIndices, firstIndex);
        drawPart(GL_LINES, hasAll ? range.lineIndices : 0, firstIndex + range.triangleIndices);
        drawPart(GL_POINTS, hasAll ? range.pointIndices : 0,
                 firstIndex + range.triangleIndices + range.lineIndices);
        return item + 1;
    }
    UInt32 count = range.triangleIndices;
    for(++item;
        item != end && item->space == _space && item->state == _state && item->lights == _lights;
        ++item)
    {
        MeshStore::Place const &next = _places[item->shape];
        if(next.page != _page || next.range.firstIndex != firstIndex + count ||
           next.range.lineIndices + next.range.pointIndices != 0)
            break;
        count += next.range.triangleIndices;
    }
    drawPart(GL_TRIANGLES, count, firstIndex);
    return item;
}

// Blended primitives show the order in which they are drawn.
void ListDrawing::drawInOrder(MeshRange const &range, std::vector<DrawMesh::Run> const &runs) const
{
    constexpr GLenum Modes[] = {GL_TRIANGLES, GL_LINES, GL_POINTS};
    UInt32 next[] = {range.firstIndex, range.firstIndex + range.triangleIndices,
                     range.firstIndex + range.triangleIndices + range.lineIndices};
    for(DrawMesh::Run const &run : runs)
    {
        std::size_t const kind = static_cast<std::size_t>(run.kind);
        drawPart(Modes[kind], run.count, next[kind]);
        next[kind] += run.count;
    }
}

void ListDrawing::drawPart(GLenum mode, UInt32 count, UInt32 firstIndex) const
{
    if(count != 0)
        glDrawElements(mode, static_cast<GLsizei>(count), _indexType,
                       reinterpret_cast<void const *>(std::uintptr_t(firstIndex) * _indexBytes));
}

// OpenGL carries the planes through the inverse of the model's matrix, which is the identity here.
void set_sections(DrawEnv const &env)
{
    GLenum name = GL_CLIP_PLANE0;
    for(Vector<Real64, 4> const &plane : env.getSectionsInEye())
    {
        glClipPlane(name, plane.values());
        glEnable(name++);
    }
}

// What the initial state of OpenGL has otherwise.
void set_up(DrawEnv const &env)
{
    Color4f const ambient(0.2f, 0.2f, 0.2f, 1);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient.values());
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glEnable(GL_NORMALIZE);
    glEnable(GL_DEPTH_TEST);
    if(env.getLook().isMultisampled)
        glEnable(GL_MULTISAMPLE);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(env.getCameraProjection().values());
    glMatrixMode(GL_MODELVIEW);
    set_sections(env);
}

// One unit of depth, and as much again as a face's depth changes from one pixel to the next: a line
// in the face goes past the centres of pixels by at most that.
void push_faces_back()
{
    glPolygonOffset(1, 1);
    glEnable(GL_POLYGON_OFFSET_FILL);
}

void set_wires(bool isOn)
{
    glEdgeFlag(GL_TRUE);
    glPolygonMode(GL_FRONT_AND_BACK, isOn ? GL_LINE : GL_FILL);
}

// Transparent faces write no depths.
void draw_shaded(ListDrawing &drawing, DrawList const &list)
{
    drawing.draw(list.opaque);
    glDepthMask(GL_FALSE);
    drawing.draw(list.transparent);
}

// The wires of what is opaque come before transparent faces, through which they are seen.
void draw_with_wires(ListDrawing &drawing, DrawList const &list, LineStates const &wires)
{
    for(std::vector<DrawItem> const *items : {&list.opaque, &list.transparent})
    {
        drawing.use(list.states, ListDrawing::Parts::All);
        drawing.draw(*items);
        set_wires(true);
        drawing.use(wires.get(), ListDrawing::Parts::Triangles);
        drawing.draw(*items);
        set_wires(false);
        glDepthMask(GL_FALSE);
    }
}

void draw_in_states(ListDrawing &drawing, DrawList const &list, LineStates const &states)
{
    drawing.use(states.get(), ListDrawing::Parts::All);
    drawing.draw(list.opaque);
    drawing.draw(list.transparent);
}

void draw_in_style(ListDrawing &drawing, DrawList const &list, LineStates const &lines,
                   DrawLook const &look)
{
    bool const hasWires = look.style == DrawStyle::ShadedWithWires;
    if(look.pushesFacesBack || hasWires)
        push_faces_back();
    if(look.style == DrawStyle::Shaded)
        draw_shaded(drawing, list);
    else if(hasWires)
        draw_with_wires(drawing, list, lines);
    else
    {
        set_wires(look.style == DrawStyle::Wires);
        // Lines in one colour lie over the wires that another list has drawn in the same places.
        if(look.style == DrawStyle::OneColor)
            glDepthFunc(GL_LEQUAL);
        draw_in_states(drawing, list, lines);
    }
}
} // namespace

void draw_list(DrawEnv &env, DrawList const &list)
{
    if(env.getObjects() == nullptr)
        return;
    LineStates const lines(env.getLook(), list.states);
    ListDrawing drawing(env, list);
    set_up(env);
    draw_in_style(drawing, list, lines, env.getLook());
    drawing.finish();
}
} // namespace OSG
