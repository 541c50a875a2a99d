#pragma once

/// \file
/// How a pointer counts what it points to. Each policy is a pair of static functions over any class
/// with the matching member functions; null is allowed everywhere.

namespace OSG
{
/// Counted among the recorded references: those of hosts and of the copies in other aspects.
struct RecordedRefCountPolicy
{
    template <class T>
    static void addRef(T *object)
    {
        if(object != nullptr)
            object->addReferenceRecorded();
    }
    template <class T>
    static void subRef(T *object)
    {
        if(object != nullptr)
            object->subReferenceRecorded();
    }
};

/// Counted in this aspect alone: local pointers and most fields.
struct UnrecordedRefCountPolicy
{
    template <class T>
    static void addRef(T *object)
    {
        if(object != nullptr)
            object->addReferenceUnrecorded();
    }
    template <class T>
    static void subRef(T *object)
    {
        if(object != nullptr)
            object->subReferenceUnrecorded();
    }
};

/// Keeps the memory of the object, not the object: reads as null once the object has died.
struct WeakRefCountPolicy
{
    template <class T>
    static void addRef(T *object)
    {
        if(object != nullptr)
            object->addWeakReference();
    }
    template <class T>
    static void subRef(T *object)
    {
        if(object != nullptr)
            object->subWeakReference();
    }
};

/// A plain pointer; whoever holds it knows that the object outlives it.
struct NoRefCountPolicy
{
    template <class T>
    static void addRef(T *)
    {
    }
    template <class T>
    static void subRef(T *)
    {
    }
};
} // namespace OSG
