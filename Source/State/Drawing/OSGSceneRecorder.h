#pragma once

#include "OSGDrawStateTable.h"
#include "OSGSceneRecord.h"
#include "OSGShapeTable.h"

namespace OSG
{
/// Writes a record while a scene is walked. It is told of the nodes by the walk, and of what they
/// show by the functions of their cores.
class OSG_STATE_API SceneRecorder
{
  public:
    SceneRecorder(SceneRecord &record, ShapeTable &shapes, DrawStateTable &states)
        : _record(record)
        , _shapes(shapes)
        , _states(states)
    {
    }

    // --- what is recorded ---
    /// Whole scenes: the record is emptied, nothing is above the nodes that are entered next.
    void beginScene();
    /// The node of `entry` and what is below it, as a part of `whole`.
    void beginPart(SceneRecord const &whole, UInt32 entry);

    // --- nodes, in the order of the walk ---
    void enter(Node *node);
    void leave();

    // --- for the node entered last ---
    Matrix const &getToRoot() const { return _current.toRoot; }
    /// Has it walked anew for each view.
    void addOpen();
    void addShape(DrawShape const *shape, Material const *material);

    // --- for what is below it, until the matching pop() ---
    void pushSpace(Matrix const &toParent);
    /// Null changes nothing.
    void pushMaterial(Material const *material);
    /// Only the outermost counts; null changes nothing.
    void pushOverriding(Material const *material);
    void pushLight(LightSource const *light);
    void pop();

  private:
    struct Current
    {
        SceneRecord::Scope scope;
        UInt32 scopeNumber = 0;
        Matrix toRoot;
        bool isFinite = true; // all numbers of the matrix
    };

    UInt32 visitingOf(Node const *node) const;
    void push(SceneRecord::Scope const &scope);
    UInt32 stateOf(Material const *material);

    SceneRecord &_record;
    ShapeTable &_shapes;
    DrawStateTable &_states;
    SceneRecord::Starts _starts; // of the part in the whole
    UInt32 _firstEntry = 0;
    UInt32 _visiting = SceneRecord::NoEntry; // of the first entry
    Current _current;
    std::vector<Current> _outer;
    std::vector<UInt32> _nodes; // entries that are not left yet

    // The state asked for last: neighbours often share a material.
    Material const *_material = nullptr;
    Material const *_overriding = nullptr;
    UInt32 _state = 0;
    bool _hasState = false;
};
} // namespace OSG
