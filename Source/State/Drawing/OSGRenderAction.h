#pragma once

#include "OSGDrawList.h"
#include "OSGRenderActionBase.h"
#include "OSGRenderPartition.h"

namespace OSG
{
/// Collects what a view shows of a scene, in the order in which it is drawn. It draws nothing and
/// needs no context; Viewport::render draws the list that apply() leaves.
class OSG_STATE_API RenderAction : public RenderActionBase
{
  public:
    static TransitPtr<RenderAction> create();
    static char const *getClassname() { return "RenderAction"; }

    // --- functions that every action made from now on begins with ---
    /// A type gets the functions of the nearest type, itself or above it, that has any.
    static void registerEnterDefault(FieldContainerType const &type, Functor const &function);
    static void registerLeaveDefault(FieldContainerType const &type, Functor const &function);

    // --- the view; set before apply() ---
    DrawEnv &editEnv() { return _partition.editEnv(); }
    /// A light at the eye in place of the scene's own lights (false by default).
    bool getHeadlight() const { return _headlight; }
    void setHeadlight(bool isOn) { _headlight = isOn; }

    // --- the result of the last apply() ---
    DrawList const &getDrawList() const { return _list; }

    // --- for the functions, during a walk ---
    RenderPartition *getActivePartition() { return &_partition; }
    bool pushVisibility();

  protected:
    RenderAction() = default;
    RenderAction(RenderAction const &) = default;
    ~RenderAction() override;

    FunctorStore *getDefaultEnterFunctors() override;
    FunctorStore *getDefaultLeaveFunctors() override;

  private:
    RenderPartition _partition;
    DrawList _list;
    bool _headlight = false;
};
} // namespace OSG
