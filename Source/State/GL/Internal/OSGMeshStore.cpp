#include "OSGMeshStore.h"

#include <algorithm>
#include <utility>

#include "OSGContentHash.h"
#include "OSGLog.h"

namespace OSG
{
namespace
{
constexpr std::size_t MostTables = 8; // of the scenes that take turns in one context

UInt64 content_of(DrawMesh const &mesh)
{
    ContentHash hash;
    hash.addArray(mesh.positions);
    hash.addArray(mesh.normals);
    hash.addArray(mesh.colors);
    hash.addArray(mesh.texCoords);
    hash.addArray(mesh.triangles);
    hash.addArray(mesh.lines);
    hash.addArray(mesh.points);
    hash.addArray(mesh.runs);
    return hash.value();
}
} // namespace

std::vector<MeshStore::Place> const &MeshStore::prepare(DrawList const &list)
{
    Table &table = findTable(list);
    table.lastUse = ++_uses;
    std::lock_guard const lock(_mutex);
    if(table.shapesNumber != list.shapesNumber || table.meshes.size() != list.shapes.size())
        fill(table, list);
    findDue(table, list);
    if(_due.empty())
        return table.places;
    try
    {
        for(UInt32 const shape : _due)
            refresh(*table.meshes[shape], *list.shapes[shape]);
        uploadPages();
    }
    catch(...)
    {
        for(UInt32 const shape : _due)
            table.epochs[shape] = Never;
        throw;
    }
    for(UInt32 const shape : _due)
    {
        Place const &place = table.meshes[shape]->place;
        table.places[shape] = place.page != nullptr && place.page->isUsable() ? place : Place();
    }
    return table.places;
}

void MeshStore::fill(Table &table, DrawList const &list)
{
    table.shapesNumber = 0; // until it is complete
    table.meshes.resize(list.shapes.size());
    for(std::size_t i = 0; i < list.shapes.size(); ++i)
        table.meshes[i] = &_meshes[list.shapes[i]];
    reserveForgotten();
    table.places.assign(list.shapes.size(), Place());
    table.epochs.assign(list.shapes.size(), Never);
    table.shapesNumber = list.shapesNumber;
}

// The shapes that are drawn and have not been looked at since meshes were last edited. What is out
// of sight waits until it is drawn.
void MeshStore::findDue(Table &table, DrawList const &list)
{
    _due.clear();
    _due.reserve(list.shapes.size());
    for(std::vector<DrawItem> const *items : {&list.opaque, &list.transparent})
    {
        for(DrawItem const &item : *items)
        {
            if(std::exchange(table.epochs[item.shape], list.meshEpoch) != list.meshEpoch)
                _due.push_back(item.shape);
        }
    }
}

// forget() runs in destructors, where memory may not run out.
void MeshStore::reserveForgotten()
{
    std::size_t const most = _forgotten.size() + _meshes.size();
    if(_forgotten.capacity() < most)
        _forgotten.reserve(2 * most);
}

// That of the list, or else the one that has not been used for longest.
MeshStore::Table &MeshStore::findTable(DrawList const &list)
{
    auto const own = std::find_if(_tables.begin(), _tables.end(),
                                  [&list](Table const &table)
                                  { return table.shapesNumber == list.shapesNumber; });
    if(own != _tables.end())
        return *own;
    if(_tables.size() < MostTables)
        return _tables.emplace_back();
    return *std::min_element(_tables.begin(), _tables.end(),
                             [](Table const &a, Table const &b) { return a.lastUse < b.lastUse; });
}

void MeshStore::refresh(Mesh &mesh, DrawShape const &shape)
{
    UInt64 const stamp = shape.getMeshStamp();
    if(stamp != 0 && stamp == mesh.stamp)
        return;
    shape.makeMesh(_scratch);
    UInt64 const content = stamp == 0 ? content_of(_scratch) : 0;
    if(content == 0 || content != mesh.content)
    {
        remove(mesh.place);
        mesh.place = Place();
        put(mesh);
    }
    mesh.stamp = stamp;
    mesh.content = content;
}

// Takes what was made of a shape from `_scratch`.
void MeshStore::put(Mesh &mesh)
{
    MeshRange range;
    if(MeshPage *const page = addToPage(range))
    {
        mesh.place.page = page;
        mesh.place.range = range;
        if(!_scratch.runs.empty())
            mesh.place.runs = std::make_shared<std::vector<DrawMesh::Run> const>(_scratch.runs);
    }
}

MeshPage *MeshStore::addToPage(MeshRange &range)
{
    UInt64 const vertices = _scratch.positions.size();
    UInt64 const indices =
        _scratch.triangles.size() + _scratch.lines.size() + _scratch.points.size();
    if(indices == 0)
        return nullptr;
    constexpr UInt64 MostIndices = RangeList::None - 1;
    if(vertices > MostIndices || indices > MostIndices)
    {
        OSG_LOG_WARNING("A mesh of %llu vertices is too large to be drawn\n",
                        static_cast<unsigned long long>(vertices));
        return nullptr;
    }
    if(vertices > MeshPage::SharedVertices || indices > MeshPage::SharedIndices)
        return addToOwnPage(range, static_cast<UInt32>(vertices), static_cast<UInt32>(indices));
    return addToSharedPage(range);
}

MeshPage *MeshStore::addToOwnPage(MeshRange &range, UInt32 vertices, UInt32 indices)
{
    MeshPage &page = makePage(vertices, indices);
    try
    {
        page.add(_scratch, range);
    }
    catch(...)
    {
        dropIfEmpty(&page);
        throw;
    }
    return &page;
}

MeshPage *MeshStore::addToSharedPage(MeshRange &range)
{
    std::vector<MeshPage *> &open = _open[VertexLayout(_scratch).bits];
    for(auto page = open.rbegin(); page != open.rend(); ++page)
    {
        if((*page)->add(_scratch, range))
            return *page;
    }
    constexpr UInt32 IndicesPerPage = 4 * MeshPage::SmallVertices;
    open.reserve(open.size() + 1);
    MeshPage &page = makePage(MeshPage::SmallVertices, IndicesPerPage);
    open.push_back(&page);
    page.add(_scratch, range);
    return &page;
}

MeshPage &MeshStore::makePage(UInt32 vertices, UInt32 indices)
{
    _fresh.reserve(_fresh.size() + 1);
    MeshPage &page =
        *_pages.emplace_back(std::make_unique<MeshPage>(VertexLayout(_scratch), vertices, indices));
    _fresh.push_back(&page);
    return page;
}

void MeshStore::uploadPages()
{
    // A mesh of a large geometry is not kept twice.
    constexpr std::size_t LargestKept = 65536;
    if(_scratch.positions.capacity() > LargestKept)
        _scratch = DrawMesh();
    // One whose upload raises std::bad_alloc is tried again in the next frame.
    for(; !_fresh.empty(); _fresh.pop_back())
    {
        if(!_fresh.back()->upload())
            OSG_LOG_WARNING("The driver has no memory for the vertices of a page\n");
    }
}

void MeshStore::remove(Place const &place)
{
    if(place.page == nullptr)
        return;
    place.page->remove(place.range);
    dropIfEmpty(place.page);
}

void MeshStore::dropIfEmpty(MeshPage const *page)
{
    if(!page->isEmpty())
        return;
    auto const at = std::find_if(_pages.begin(), _pages.end(),
                                 [page](auto const &own) { return own.get() == page; });
    std::erase(_open[page->layout().bits], page);
    std::erase(_fresh, page);
    (*at)->release();
    _pages.erase(at);
}

void MeshStore::forget(DrawShape const &shape)
{
    std::lock_guard const lock(_mutex);
    auto const at = _meshes.find(&shape);
    if(at == _meshes.end())
        return;
    if(at->second.place.page != nullptr)
        _forgotten.push_back(at->second.place);
    _meshes.erase(at);
}

void MeshStore::collect()
{
    std::lock_guard const lock(_mutex);
    for(Place const &place : _forgotten)
        remove(place);
    _forgotten.clear();
}

void MeshStore::release()
{
    for(auto const &page : _pages)
        page->release();
    abandon();
}

void MeshStore::abandon()
{
    std::lock_guard const lock(_mutex);
    _meshes.clear();
    _forgotten.clear();
    for(auto &open : _open)
        open.clear();
    _fresh.clear();
    _pages.clear();
    _tables.clear();
}
} // namespace OSG
