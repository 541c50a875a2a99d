#pragma once

/// \file
/// What a walk has found in a scene, in the order of the walk, without regard to a view: shapes,
/// spaces, lights, and the nodes below which it has to be walked anew for each view.

#include <vector>

#include "OSGBoxVolume.h"
#include "OSGLightSets.h"
#include "OSGMatrix.h"
#include "OSGStateApi.h"

namespace OSG
{
class DrawShape;
class LightSource;
class Material;
class Node;

/// Lists that run side by side. What is below a node is a range in each of them, which begins where
/// the node's Entry says and ends where the next node that is not below it begins.
struct SceneRecord
{
    static constexpr UInt32 NoLight = LightSets::NoLight;
    static constexpr UInt32 NoEntry = 0xFFFFFFFF;

    /// What holds for what a node shows, from the nodes above it.
    struct Scope
    {
        UInt32 space = 0;                     ///< in `spaces`
        UInt32 light = NoLight;               ///< the innermost, in `lights`
        Material const *group = nullptr;      ///< replaces materials; null for none
        Material const *overriding = nullptr; ///< overrides them part by part; null for none
    };
    struct Starts
    {
        UInt32 item = 0;
        UInt32 space = 0;
        UInt32 scope = 0;
        UInt32 light = 0;
        UInt32 open = 0;

        bool operator==(Starts const &) const = default;
    };
    /// A node that the walk has come to.
    struct Entry
    {
        Node *node;
        UInt32 end;   ///< of what is below it, in `entries`
        UInt32 scope; ///< that it stands in, in `scopes`
        Starts starts;
        UInt32 visiting; ///< entry of the innermost node that shows it as another tree, or NoEntry
    };
    /// A shape at its place.
    struct Item
    {
        UInt32 shape; ///< numbers of the table of shapes and that of states
        UInt32 state;
        UInt32 space; ///< in `spaces`
        UInt32 light; ///< in `lights`, or NoLight
        UInt32 entry; ///< its node's, in `entries`

        bool operator==(Item const &) const = default;
    };
    /// Leads to the space of the root.
    struct Space
    {
        Matrix toRoot;
        bool isMirrored = false;
    };
    struct Light
    {
        LightSource const *source;
        UInt32 space;
        UInt32 outer; ///< the one around it, in `lights`, or NoLight
        UInt32 entry;
    };
    /// A node whose core does something else for each view.
    struct Open
    {
        UInt32 entry;
        UInt32 scope;
    };

    std::vector<Entry> entries;
    std::vector<Item> items;
    std::vector<BoxVolume> boxes; ///< of the items, in the space of the root
    std::vector<Space> spaces;
    std::vector<Scope> scopes;
    std::vector<Light> lights;
    std::vector<Open> opens;

    /// Where the lists end.
    Starts ends() const;
    /// Where what is below the entry ends.
    Starts endsOf(UInt32 entry) const;
    void clear();
    /// Whether the lists of `part`, which was recorded with the starts of `entry`, are as long as
    /// what stands for that entry and what is below it.
    bool fits(UInt32 entry, SceneRecord const &part) const;
    /// Whether they hold the same nodes in the same tree, or the same items. The part fits.
    bool hasSameNodes(UInt32 entry, SceneRecord const &part) const;
    bool hasSameItems(UInt32 entry, SceneRecord const &part) const;
    /// Puts a part that fits in their place.
    void replace(UInt32 entry, SceneRecord const &part);
};
} // namespace OSG
