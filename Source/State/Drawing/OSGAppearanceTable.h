#pragma once

/// \file
/// How places of a scene are to look, without an edit of the scene.

#include <unordered_map>
#include <vector>

#include "OSGMaterial.h"
#include "OSGNodePath.h"
#include "OSGStateApi.h"

namespace OSG
{
/// What a table says about a place. What it says about the places around it holds there as well.
struct Appearance
{
    Material const *material = nullptr; ///< in place of the geometries' own; null for none
    bool isHidden = false;
    bool isIsolated = false;

    bool saysAnything() const { return material != nullptr || isHidden || isIsolated; }
    /// What holds at a place that `inner` speaks of, within this one.
    Appearance with(Appearance const &inner) const
    {
        return {inner.material != nullptr ? inner.material : material, isHidden || inner.isHidden,
                isIsolated || inner.isIsolated};
    }
};

/// A table from places of a scene to materials that are shown there, or to "not drawn".
///
/// A row holds for the node of its path and for all that is below it on that path. Of several
/// materials the innermost is shown; it comes before the groups of materials in the scene, and is
/// overridden part by part like any other. Nothing below a hidden node is drawn. A row whose path
/// is not in the scene that is drawn has no effect, and has one when the path is there again.
///
/// The table is read when a frame is collected. It edits nothing: neither the scene, nor its change
/// lists, nor what is saved know of it. It counts the nodes of its paths and its materials. A path
/// of no node is refused with a warning.
class OSG_STATE_API AppearanceTable
{
  public:
    AppearanceTable();

    // --- rows ---
    /// Shows `material` at the path; null shows the geometries' own again.
    void set(NodePath const &path, Material *material);
    void hide(NodePath const &path);
    /// Takes back hide() of that very path.
    void show(NodePath const &path);
    /// Takes back set() and hide() of that very path.
    void erase(NodePath const &path);
    /// The table says nothing afterwards.
    void clear();

    /// Nothing is drawn but what is at these paths, unless it is hidden. It takes the place of the
    /// isolation before. Of no paths at all, and of paths that are not in the scene, nothing is
    /// drawn.
    void isolate(std::vector<NodePath> const &paths);
    void endIsolation();
    bool isIsolating() const { return _isIsolating; }

    /// What the row of that very path says.
    Material *getMaterial(NodePath const &path) const;
    bool isHidden(NodePath const &path) const;
    bool isIsolated(NodePath const &path) const;
    /// Whether what is at this place of the tree of `root` is drawn: neither it nor a node around
    /// it is hidden, and it is isolated where something is.
    bool isDrawn(Node *node, std::vector<Node *> const &visiting, Node const *root) const;
    /// Everything is drawn as it is.
    bool isEmpty() const { return _rows.empty() && !_isIsolating; }

    // --- for drawing ---
    /// No other state of any table has the same.
    UInt64 getNumber() const { return _number; }
    bool isDrawn(Appearance const &appearance) const
    {
        return !appearance.isHidden && (appearance.isIsolated || !_isIsolating);
    }
    /// Calls use(path, appearance) for each row, in any order.
    template <class Use>
    void forEach(Use use) const
    {
        for(auto const &[path, row] : _rows)
            use(path, row.appearance());
    }
    /// What the row says whose path leads to `node` through `visiting`, outermost first.
    Appearance find(Node *node, std::vector<Node *> const &visiting) const;

  private:
    struct Row
    {
        UnrecordedRefPtr<Material> material;
        bool isHidden = false;
        bool isIsolated = false;

        Appearance appearance() const { return {material.get(), isHidden, isIsolated}; }
        bool operator==(Row const &other) const
        {
            return material == other.material && isHidden == other.isHidden &&
                   isIsolated == other.isIsolated;
        }
    };

    Row rowOf(NodePath const &path) const;
    void put(NodePath const &path, Row const &row);
    void note();

    std::unordered_map<NodePath, Row, NodePathHash> _rows;   // none says nothing
    std::unordered_map<Node const *, UInt32> _numRowsOfNode; // of paths that end at the node
    bool _isIsolating = false;
    UInt64 _number;
};
} // namespace OSG
