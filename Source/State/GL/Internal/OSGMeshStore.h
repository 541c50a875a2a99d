#pragma once

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "OSGDrawList.h"
#include "OSGMeshPage.h"

namespace OSG
{
/// The meshes of one context, by the shapes that they were made from.
///
/// All functions but forget() want the context to be current. forget() may be called in any thread;
/// what it leaves behind is freed by the next collect().
class OSG_STATE_API MeshStore
{
  public:
    /// A mesh as the drawing takes it.
    struct Place
    {
        MeshPage *page = nullptr; ///< null for a mesh with nothing to draw
        MeshRange range;
        /// The order of the primitives; null for triangles, lines, points. Lives as long as the
        /// page.
        std::shared_ptr<std::vector<DrawMesh::Run> const> runs;
    };

    /// The places of the shapes that a list draws, by their number in it. Makes the meshes that are
    /// missing or have changed. Valid until the next call of a function that is not const.
    std::vector<Place> const &prepare(DrawList const &list);

    void forget(DrawShape const &shape);
    /// Frees what has been forgotten.
    void collect();
    /// Frees everything.
    void release();
    /// The context is gone, and its buffers with it.
    void abandon();

    /// Number of buffers.
    std::size_t countObjects() const { return 2 * _pages.size(); }

  private:
    struct Mesh
    {
        Place place;
        UInt64 stamp = 0;
        UInt64 content = 0; // a hash, where the stamp tells nothing
    };
    // What was found for a list, until the list has other shapes.
    struct Table
    {
        UInt64 shapesNumber = 0;
        UInt64 lastUse = 0;
        std::vector<Mesh *> meshes;
        std::vector<Place> places;
        std::vector<UInt64> epochs; // of the meshes, when the place was last looked at
    };
    static constexpr UInt64 Never = ~UInt64(0);

    Table &findTable(DrawList const &list);
    void fill(Table &table, DrawList const &list);
    void findDue(Table &table, DrawList const &list);
    void reserveForgotten();
    void refresh(Mesh &mesh, DrawShape const &shape);
    void put(Mesh &mesh);
    MeshPage *addToPage(MeshRange &range);
    MeshPage *addToOwnPage(MeshRange &range, UInt32 vertices, UInt32 indices);
    MeshPage *addToSharedPage(MeshRange &range);
    MeshPage &makePage(UInt32 vertices, UInt32 indices);
    void remove(Place const &place);
    void dropIfEmpty(MeshPage const *page);
    void uploadPages();

    std::mutex _mutex; // for the meshes and those that were forgotten
    std::unordered_map<DrawShape const *, Mesh> _meshes;
    std::vector<Place> _forgotten;
    std::vector<std::unique_ptr<MeshPage>> _pages;
    std::vector<MeshPage *> _open[VertexLayout::Count]; // pages that meshes share, by layout
    std::vector<MeshPage *> _fresh;                     // not uploaded yet
    std::vector<Table> _tables;
    UInt64 _uses = 0;
    std::vector<UInt32> _due; // shapes of the list at hand
    DrawMesh _scratch;
};
} // namespace OSG
