#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "EditWatch.h"
#include "OSGNodePath.h"

namespace Viewer
{
/// The name of the node, or of its core, or else the type of its core.
std::string label_of(OSG::Node const &node);
/// The same for a list of many nodes: a type is followed by the node's number among the children of
/// its parent, where it has one, and by the name of a geometry's material, where it has one.
std::string label_of(OSG::Node const &node, std::optional<OSG::UInt32> number);
/// Looks through the children of the parent; none where there is no parent.
std::optional<OSG::UInt32> number_of(OSG::Node const &node);

/// The rows of a tree of a scene: those of open nodes have the rows of what is below them after
/// them, other trees that they show (NodeCore::getOtherTree) included. What is below a closed node
/// is not looked at. Used by the thread that writes in the aspect.
class SceneRows
{
  public:
    using NodePtr = OSG::UnrecordedRefPtr<OSG::Node>;

    struct Row
    {
        NodePtr node;
        OSG::UInt32 depth = 0;                  ///< levels below the root's row
        OSG::UInt32 way = 0;                    ///< for pathOf
        std::optional<OSG::UInt32> number = {}; ///< among the children of the parent
        bool hasBelow = false;
        bool isOpen = false;
    };

    SceneRows();
    ~SceneRows();
    SceneRows(SceneRows const &) = delete;
    SceneRows &operator=(SceneRows const &) = delete;

    /// To be called once per frame. Another scene has its root open and all else closed. After
    /// committed edits of nodes that have a row the rows are made again. It costs next to nothing
    /// where nothing was edited. Null gives no rows.
    void update(OSG::Node *scene);

    std::vector<Row> const &getRows() const { return _rows; }
    OSG::NodePath pathOf(Row const &row) const;

    /// Opens or closes the row. An index beyond the rows does nothing.
    void toggle(std::size_t index);
    /// Opens what is around the place. Its row; the number of rows where it is not in the scene.
    std::size_t reveal(OSG::NodePath const &path);

  private:
    using Places = std::unordered_set<OSG::NodePath, OSG::NodePathHash>;

    /// How a walk comes into a tree: through a visiting node, and as it came to that. The first one
    /// is that of the scene's own tree.
    struct Way
    {
        OSG::Node *visiting = nullptr;
        OSG::UInt32 outer = 0;
    };

    bool openAround(OSG::NodePath const &path);
    void list();
    void listNode(OSG::Node *node, OSG::UInt32 way, OSG::UInt32 depth, std::vector<Row> &waiting);
    std::vector<OSG::Node *> visitingOf(OSG::UInt32 way) const;

    NodePtr _scene;
    Places _open;
    std::vector<Row> _rows;
    std::vector<Way> _ways;
    std::unordered_set<OSG::Node const *> _listed;
    EditWatch _edits;
};
} // namespace Viewer
