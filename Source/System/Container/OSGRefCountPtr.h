#pragma once

/// \file
/// Owning pointers: TransitPtr hands one reference over, RefCountPtr holds one.

#include <utility>

#include "OSGRefCountPolicies.h"

namespace OSG
{
/// Return type of every `create`: owns one unrecorded reference until a receiver takes it over.
/// Moves only; what nobody receives is released.
template <class T>
class TransitPtr
{
  public:
    TransitPtr() = default;
    TransitPtr(std::nullptr_t) {}
    /// Takes a new reference on `object`.
    explicit TransitPtr(T *object) : _object(object) { UnrecordedRefCountPolicy::addRef(object); }
    TransitPtr(TransitPtr &&other) noexcept : _object(other.release()) {}
    template <class U>
    TransitPtr(TransitPtr<U> &&other) noexcept : _object(other.release())
    {}
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
    RefCountPtr(T *object) : _object(object) { Policy::addRef(object); }
    RefCountPtr(RefCountPtr const &other) : RefCountPtr(other._object) {}
    RefCountPtr(RefCountPtr &&other) noexcept : _object(std::exchange(other._object, nullptr)) {}
    /// The new reference is taken before the one in transit is dropped.
    template <class U>
    RefCountPtr(TransitPtr<U> &&other) : RefCountPtr(static_cast<T *>(other.get()))
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
    WeakRefPtr(T *object) : _pointer(object) {}

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
