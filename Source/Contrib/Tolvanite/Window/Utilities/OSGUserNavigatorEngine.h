#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGNavigatorEngine.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Base of the engines of this library.
///
/// Buttons, keys and modifiers are those of NavigatorEvent. `keyPress` of every engine is
/// `keyPressEx` without modifiers. An engine comes from its static `create`, which gives null where
/// there is no memory. Poses stay finite: what would make one infinite or not a number is not done.
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
