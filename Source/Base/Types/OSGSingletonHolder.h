#pragma once

namespace OSG
{
/// Access to a singleton. `the` is specialised in the source of T, so that the process has one
/// object however many libraries use it.
template <class T>
struct SingletonHolder
{
    static T *the();
};
} // namespace OSG
