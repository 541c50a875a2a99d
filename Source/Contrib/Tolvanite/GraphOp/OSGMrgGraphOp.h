#pragma once

#include <memory>

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class MrgLevels;

/// "Mrg": shrinks a subtree. It makes passes until a pass does not lower the number of nodes.
///
/// A pass works from below. At each node it first goes through the children once for
///
///   Group           and what derives from it, save Transform, ComponentTransform, Switch,
///                   MultiSwitch, MaterialGroup, DistanceLOD and Billboard. What is below such a
///                   child comes up behind the other children, and the child is removed. A
///                   VisitSubTree, a ScreenLOD and a MaterialChunkOverrideGroup lose their meaning
///                   by this.
///   MaterialGroup   Its geometry leaves take its material, whatever material they had, and come
///                   up. The child is removed if nothing else is below it.
///
/// and then a second time for
///
///   Transform       and what derives from it, also a ConstSizeTransform. Its geometry leaves come
///                   up with a copy of their core that the matrix has moved (see
///                   OSGBakedGeometry.h). The child is removed if nothing else is below it.
///
/// Two geometries are never joined into one; only the number of nodes shrinks. Nothing is changed
/// below a Switch, a MultiSwitch or a DistanceLOD. Nodes without a core and nodes with other cores
/// stay.
///
/// Nodes with a Light, and the beacons of all lights of the subtree, keep their place. The lists of
/// the caller do not apply, neither the exclude list nor the preserve list; both are unchanged
/// afterwards. A geometry core under two material groups takes the material of the later one, for
/// all nodes that show it.
///
/// `root` must not be null. Below groups and material groups the time is linear in the number of
/// nodes: a node moves once, however many of them above it are removed. Below transforms a geometry
/// is moved once for each transform. The first move copies it; the others edit the copy in place.
///
/// Raises std::bad_alloc without memory. Each geometry is then either moved and above its transform
/// or neither, so the operation may be run again.
class OSG_CONTRIBTOLVANITE_API MrgGraphOp : public GraphOp
{
  public:
    /// Copies the lists and the parameters.
    MrgGraphOp(MrgGraphOp const &source);

    static TransitPtr<MrgGraphOp> create();
    static char const *getClassname() { return "MrgGraphOp"; }

    TransitPtr<GraphOp> clone() override;
    /// The parameters tell which arrays of three-component values are turned like normals:
    /// `color_is_vector`, `secondary_color_is_vector`, `texcoord_is_vector` or
    /// `texcoord0_is_vector` (which has precedence), and `texcoord1_is_vector` to
    /// `texcoord3_is_vector`. The default is false for all but `color_is_vector`, which callers
    /// that depend on it should set.
    void setParams(std::string params) override;
    std::string usage() override;
    /// Logs the number of nodes before and after, as progress. False where a pass failed.
    bool traverse(Node *root) override;
    ResultE traverseEnter(Node *node) override;
    ResultE traverseLeave(Node *node, ResultE result) override;

  protected:
    explicit MrgGraphOp(char const *name);
    ~MrgGraphOp() override;

  private:
    bool mergeOnce(Node *root);
    void makeExcludeList(Node *root);
    static ResultE excludeListEnter(Node *node);
    ResultE excludeListLeave(Node *node, ResultE result);

    MrgLevels *makeLevels() const;

    bool _colorIsVector;
    bool _secondaryColorIsVector;
    bool _texCoord0IsVector;
    bool _texCoord1IsVector;
    bool _texCoord2IsVector;
    bool _texCoord3IsVector;
    std::unique_ptr<MrgLevels> _levels; ///< while `traverse` runs
};
} // namespace OSG
