#pragma once

/// \file
/// Reads and writes one container of the binary scene format.

#include <string>

#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"

namespace OSG
{
class OSBRootElement;

/// An element serves one container of a scene that is being read or written. OSBElementFactory
/// makes it by the type name of the record. It lives until the whole scene has been read or
/// written.
///
/// For a read, the functions are called in this order: `read` of all elements in the order of the
/// stream; `postRead` of all; `postMap` of those that can be reached from the root, children before
/// their parents. For a write: `preWrite` of each element when its container is first met; then
/// `write` of all.
class OSG_FILEIO_API OSBElementBase : public MemObject
{
  public:
    /// The version that is written with every record. The file has another version of its own.
    static constexpr UInt16 OSGOSBHeaderVersion200 = 0x0200;

    OSBElementBase(OSBElementBase const &) = delete;
    OSBElementBase &operator=(OSBElementBase const &) = delete;

    // --- virtual operations, in slot order ---
    virtual ~OSBElementBase();
    /// Makes the container and reads the record, which follows its type name. Raises the handler's
    /// ReadError where the stream is too short or the content contradicts itself.
    virtual void read(std::string const &typeName) = 0;
    virtual void postRead() = 0;
    /// Called when all containers exist, to set pointers.
    virtual void postMap() = 0;
    /// Takes the container and numbers the containers that it points to.
    virtual void preWrite(FieldContainer *container) = 0;
    /// Writes the record. The type name has been written already.
    virtual void write() = 0;

    /// Null before `read` or `preWrite`. The element holds a reference.
    FieldContainer *getContainer() const { return _container; }
    void setContainer(FieldContainer *container) { _container = container; }
    OSBRootElement *getRoot() const { return _root; }
    UInt16 getVersion() const { return _version; }
    void setVersion(UInt16 version) { _version = version; }

  protected:
    /// `root` is not owned and must outlive the element.
    OSBElementBase(OSBRootElement *root, UInt16 version);

  private:
    OSBRootElement *_root;
    UnrecordedRefPtr<FieldContainer> _container;
    UInt16 _version;
};
} // namespace OSG
