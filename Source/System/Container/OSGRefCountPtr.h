#pragma once

/// \file
/// Owning pointers: TransitPtr hands one reference over, RefCountPtr holds one.

#include <concepts>
#include <utility>

#include "OSGRefCountPolicies.h"

namespace OSG
{
/// Return type of every `create`: owns one unrecorded reference until a receiver takes it over.
/// It can be moved, not copied. A reference that nobody takes over is released.
template <class T>
class TransitPtr
{
  public:
    TransitPtr() = default;
    TransitPtr(std::nullptr_t) {}
    /// Takes a new reference on `object`.
    explicit TransitPtr(T *object)
        : _object(object)
    {
        UnrecordedRefCountPolicy::addRef(object);
    }
    TransitPtr(TransitPtr &&other) noexcept
        : _object(other.release())
    {
    }
    template <class U>
    requires std::convertible_to<U *, T *> TransitPtr(TransitPtr<U> &&other)
    noexcept
        : _object(other.release())
    {
    }
    TransitPtr &operator=(TransitPtr &&other) noexcept
    {
        TransitPtr taken(std::move(other));
        std::swap(_object, taken._object);
        return *this;
    }
    TransitPtr(TransitPtr const &) = delete;
    TransitPtr &operator=(TransitPtr const &) = delete;
    ~TransitPtr() { UnrecordedRefCountPolicy::subRef(_object); }

    T *get() const { return _object; }
    T *operator->() const { return _object; }
    T &operator*() const { return *_object; }
    explicit operator bool() const { return _object != nullptr; }

    /// Gives the reference to the caller, who has to drop it.
    [[nodiscard]] T *release()
    {
        T *object = _object;
        _object = nullptr;
        return object;
    }
    /// Takes over a reference that the caller holds.
    static TransitPtr adopt(T *object)
    {
        TransitPtr result;
        result._object = object;
        return result;
    }

    friend bool operator==(TransitPtr const &p, std::nullptr_t) { return p._object == nullptr; }

  private:
    T *_object = nullptr;
};

/// The object as another class, with the reference; null (and the object released) if it is none.
template <class To, class From>
TransitPtr<To> dynamic_transit_cast(TransitPtr<From> &&from)
{
    To *target = dynamic_cast<To *>(from.get());
    if(target == nullptr)
        return TransitPtr<To>();
    static_cast<void>(from.release());
    return TransitPtr<To>::adopt(target);
}

/// Holds a reference by `Policy` for as long as it lives.
template <class T, class Policy>
class RefCountPtr
{
  public:
    RefCountPtr() = default;
    RefCountPtr(std::nullptr_t) {}
    RefCountPtr(T *object)
        : _object(object)
    {
        Policy::addRef(object);
    }
    RefCountPtr(RefCountPtr const &other)
        : RefCountPtr(other._object)
    {
    }
    RefCountPtr(RefCountPtr &&other) noexcept
        : _object(std::exchange(other._object, nullptr))
    {
    }
    /// A pointer to a derived class, by whichever policy.
    template <class U, class OtherPolicy>
    requires std::convertible_to<U *, T *> RefCountPtr(RefCountPtr<U, OtherPolicy> const &other)
        : RefCountPtr(static_cast<T *>(other.get()))
    {
    }
    template <class U>
    requires std::convertible_to<U *, T *> RefCountPtr(RefCountPtr<U, Policy> &&other)
    noexcept
        : _object(other.giveAway())
    {
    }
    /// The new reference is taken before the one in transit is dropped.
    template <class U>
    requires std::convertible_to<U *, T *> RefCountPtr(TransitPtr<U> &&other)
        : RefCountPtr(static_cast<T *>(other.get()))
    {
        TransitPtr<U> dropped(std::move(other));
    }
    ~RefCountPtr() { Policy::subRef(_object); }

    RefCountPtr &operator=(RefCountPtr other) noexcept
    {
        std::swap(_object, other._object);
        return *this;
    }

    T *get() const { return _object; }
    operator T *() const { return _object; }
    T *operator->() const { return _object; }
    T &operator*() const { return *_object; }

  private:
    template <class U, class OtherPolicy>
    friend class RefCountPtr;

    /// With the reference.
    T *giveAway() { return std::exchange(_object, nullptr); }

    T *_object = nullptr;
};

template <class T>
using RecordedRefPtr = RefCountPtr<T, RecordedRefCountPolicy>;
template <class T>
using UnrecordedRefPtr = RefCountPtr<T, UnrecordedRefCountPolicy>;

/// Weak: null once the object has died, though its memory is kept while this points to it.
template <class T>
class WeakRefPtr
{
  public:
    WeakRefPtr() = default;
    WeakRefPtr(T *object)
        : _pointer(object)
    {
    }
    /// A pointer to a derived class; a weak one that reads as null gives null.
    template <class U>
    requires std::convertible_to<U *, T *> WeakRefPtr(WeakRefPtr<U> const &other)
        : _pointer(other.get())
    {
    }
    template <class U, class Policy>
    requires std::convertible_to<U *, T *> WeakRefPtr(RefCountPtr<U, Policy> const &other)
        : _pointer(other.get())
    {
    }

    T *get() const
    {
        T *object = _pointer.get();
        return object != nullptr && object->isAlive() ? object : nullptr;
    }
    operator T *() const { return get(); }
    T *operator->() const { return get(); }

  private:
    RefCountPtr<T, WeakRefCountPolicy> _pointer;
};
} // namespace OSG
