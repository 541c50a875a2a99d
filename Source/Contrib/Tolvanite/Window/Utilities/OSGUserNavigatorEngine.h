#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGNavigatorEngine.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Base of the engines of this library.
///
/// Buttons, keys and modifiers are those of NavigatorEvent. `keyPress` calls `keyPressEx` without
/// modifiers. The static function `create` of a class makes an engine; it returns null if there is
/// no memory. Poses stay finite: an operation whose result has an infinite component or a NaN
/// leaves the pose as it was.
class OSG_CONTRIBTOLVANITE_API UserNavigatorEngine : public NavigatorEngine
{
  public:
    static char const *getClassname() { return "UserNavigatorEngine"; }

    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y,
                    Navigator *navigator) override = 0;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override = 0;
    void killFocus(Navigator *navigator) override = 0;

  protected:
    UserNavigatorEngine();
    ~UserNavigatorEngine() override;
};
} // namespace OSG
