#pragma once

#include <memory>

#include "OSGContribTolvaniteApi.h"
#include "OSGGraphOp.h"

namespace OSG
{
class MrgLevels;

/// "Mrg": shrinks a subtree by passes until one does not lower the number of nodes.
///
/// A pass works from below. At each node it first goes through the children as they are:
///
///   groups          What is below a Group comes up behind the other children, the group goes. So it
///                   does with all that derives from Group save Transform, ComponentTransform,
///                   Switch, MultiSwitch, MaterialGroup, DistanceLOD and Billboard; a VisitSubTree,
///                   a ScreenLOD or a MaterialChunkOverrideGroup loses its meaning.
///   MaterialGroup   Its geometry leaves take its material, whatever they had, and come up. It goes
///                   where nothing else is below it.
///
/// and then, once more, for
///
///   Transform       and what derives from it, a ConstSizeTransform too: its geometry leaves come
///                   up with a copy of their core that the matrix has moved (see
///                   OSGBakedGeometry.h). It goes where nothing else is below it.
///
/// Two geometries are never joined into one: what shrinks is the number of nodes. Below a Switch, a
/// MultiSwitch or a DistanceLOD nothing is done. A core without a type of the list above, and a
/// node without a core, stay as they are.
///
/// Nodes with a Light, and the beacons of all lights of the subtree, keep their place. The exclude
/// list of the caller does not count during a pass, nor does the preserve list ever; both are
/// afterwards what they were. A geometry core under two material groups takes the material of the
/// later one, for all nodes that show it.
///
/// `root` is not null. Below groups and material groups time goes with the number of nodes: a node
/// moves once, however many of them above it go. Below transforms a geometry is moved once for each
/// of them; it is copied at the first one, and the copy is edited in place at the others.
///
/// Out of memory: std::bad_alloc. A geometry is then either baked and above its transform or
/// neither, so that the operation may be run again.
class OSG_CONTRIBTOLVANITE_API MrgGraphOp : public GraphOp
{
  public:
    /// Copies the lists and the parameters.
    MrgGraphOp(MrgGraphOp const &source);

    static TransitPtr<MrgGraphOp> create();
    static char const *getClassname() { return "MrgGraphOp"; }

    TransitPtr<GraphOp> clone() override;
    /// Which arrays of three-component values are turned like normals: `color_is_vector`,
    /// `secondary_color_is_vector`, `texcoord_is_vector` or `texcoord0_is_vector` (which wins),
    /// `texcoord1_is_vector` to `texcoord3_is_vector`. All but the first are false unless they are
    /// set; who depends on the first sets it.
    void setParams(std::string params) override;
    std::string usage() override;
    /// Logs the numbers of nodes, as progress. False where a pass did not go through.
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
