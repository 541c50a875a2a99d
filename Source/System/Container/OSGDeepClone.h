#pragma once

/// \file
/// Copies of a container together with all that it points to.
///
/// Everything that is reached by counted pointers is copied once, however many ways lead to it:
/// what two containers share in the source, their copies share in the clone, and cycles stay
/// cycles.
///
///   shared types   containers of these types, and of types derived from them, are not copied: the
///                  clone points to the very same ones. A child belongs to one parent, so that a
///                  child of a shared type is left out of the clone.
///   ignored types  are neither copied nor pointed to: a pointer becomes null. Lists that are never
///                  null (children, attachments, chunks) leave the entry out; in other lists null
///                  keeps the place, since places may have a meaning there. Ignoring goes before
///                  sharing.
///   weak pointers  pull nothing into the clone. They point to the copy of what they look at where
///                  it was copied for another reason, otherwise to the same container, or to null
///                  where its type is ignored.
///
/// The choices apply to what is reached; the container itself is always copied. Depth costs heap,
/// not stack. Without a source the result is null.

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "OSGFieldContainer.h"
#include "OSGTypeLists.h"

namespace OSG
{
/// Types by their names: "Material, Image". Names are separated by blanks or commas, in any number.
OSG_SYSTEM_API TransitPtr<FieldContainer> deepClone(FieldContainer const *source,
                                                    std::string const &shareTypes = {},
                                                    std::string const &ignoreTypes = {});

/// Types by themselves, and groups of types by their ids (ReflexiveContainerType::getGroupId).
OSG_SYSTEM_API TransitPtr<FieldContainer> deepClone(FieldContainer const *source,
                                                    ContainerTypeList const &shareTypes,
                                                    ContainerTypeList const &ignoreTypes = {},
                                                    ContainerGroupList const &shareGroups = {},
                                                    ContainerGroupList const &ignoreGroups = {});

/// Types and groups by lists of names. A name that no container type, or no group, has is passed
/// over with a warning, as in the first form.
OSG_SYSTEM_API TransitPtr<FieldContainer> deepCloneEx(FieldContainer const *source,
                                                      NameList const &shareTypes,
                                                      NameList const &ignoreTypes = {},
                                                      NameList const &shareGroups = {},
                                                      NameList const &ignoreGroups = {});

/// Several clones that share what their sources share. The cloner holds a reference on every copy
/// that it made, and counts on its sources to stay as they are, for as long as it lives. Out of
/// memory: std::bad_alloc, and the copies of that call are gone.
class OSG_SYSTEM_API DeepCloner
{
  public:
    struct Choice
    {
        ContainerTypeList types;
        ContainerGroupList groups;

        bool holds(ReflexiveContainerType const &type) const;
    };

    /// By names; those that nothing has are passed over with a warning.
    static Choice choice(NameList const &types, NameList const &groups);

    DeepCloner(Choice share, Choice ignore);

    /// The clone of `source`, whatever its type; null for null.
    FieldContainer *clone(FieldContainer const *source);
    /// What a pointer to `source` becomes: its clone, `source` itself or null.
    FieldContainer *resolve(FieldContainer *source);

  private:
    template <class T>
    using List = std::vector<T, MemAllocator<T>>;
    template <class Key, class Value>
    using Map = std::unordered_map<Key, Value, std::hash<Key>, std::equal_to<Key>,
                                   MemAllocator<std::pair<Key const, Value>>>;

    enum class Fate : UInt8
    {
        Copied,
        Shared,
        Ignored
    };
    /// What is found out once for all containers of a type.
    struct TypePlan
    {
        bool isMade = false;
        Fate fate = Fate::Copied;
        List<FieldDescriptionBase const *> pointerFields;
    };
    struct Copy
    {
        FieldContainer const *source;
        UnrecordedRefPtr<FieldContainer> copy;
    };
    struct WeakLook
    {
        FieldContainer *copy;
        FieldDescriptionBase const *field;
        UInt32 index;
        FieldContainer *source;
    };

    TypePlan const &planOf(FieldContainerType const &type);
    FieldContainer *copyOf(FieldContainer const *source, bool isReachedOnce);
    FieldContainer *targetOf(FieldContainer *source, bool isReachedOnce);
    FieldContainer *targetOf(FieldContainer *source, FieldDescriptionBase const &field);
    void finish(std::size_t firstOfCall);
    void copyWhatIsOpen();
    void copyPointers(FieldContainer const &source, FieldContainer &copy,
                      FieldDescriptionBase const &field);
    void directWeakLooks();
    void takeBack(std::size_t firstOfCall) noexcept;

    Choice _share;
    Choice _ignore;
    FieldContainer const *_onlyStart = nullptr; // of the first call; null in later ones
    // In the order in which they were made. A large scene has so many that an array would be moved
    // again and again into memory that the system has to fetch.
    std::deque<Copy, MemAllocator<Copy>> _copies;
    std::size_t _numLinked = 0; // of these, those that have their pointers
    /// Where a further way may lead to the source. The others are entered when somebody looks.
    Map<FieldContainer const *, FieldContainer *> _bySource;
    std::size_t _numKnown = 0; // of all copies, those that have been entered for lookers
    List<WeakLook> _weak;
    List<TypePlan> _plans; // by the type's id
    List<FieldContainer *> _targets;
};
} // namespace OSG
