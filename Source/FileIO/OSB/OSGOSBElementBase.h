#pragma once

/// \file
/// What reads and writes one container of the binary scene format.

#include <string>

#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"

namespace OSG
{
class OSBRootElement;

/// An element serves one container of a scene that is being read or written. It is made by the
/// factory for the type name of a record (OSBElementFactory) and lives until the whole scene is
/// done.
///
/// Reading: `read` of all elements in the order of the stream, then `postRead` of all, then
/// `postMap` of those that the scene leads to, nodes before their parents. Writing: `preWrite` of
/// all, each when its container is first met, then `write` of all.
class OSG_FILEIO_API OSBElementBase : public MemObject
{
  public:
    /// The version of a record, written with every one; a file has a version of its own.
    static constexpr UInt16 OSGOSBHeaderVersion200 = 0x0200;

    OSBElementBase(OSBElementBase const &) = delete;
    OSBElementBase &operator=(OSBElementBase const &) = delete;

    // --- virtual operations, in slot order ---
    virtual ~OSBElementBase();
    /// Reads the record behind its type name; makes the container. Raises the handler's
    /// ReadError on a short stream, and on content that contradicts itself.
    virtual void read(std::string const &typeName) = 0;
    virtual void postRead() = 0;
    /// All containers are there: pointers can be set.
    virtual void postMap() = 0;
    /// Takes the container over and makes known what it points to.
    virtual void preWrite(FieldContainer *container) = 0;
    /// Writes the record behind its type name.
    virtual void write() = 0;

    /// Null before `read` or `preWrite`. The element holds a reference.
    FieldContainer *getContainer() const { return _container; }
    void setContainer(FieldContainer *container) { _container = container; }
    OSBRootElement *getRoot() const { return _root; }
    UInt16 getVersion() const { return _version; }
    void setVersion(UInt16 version) { _version = version; }

  protected:
    /// `root` belongs to the caller and outlives the element.
    OSBElementBase(OSBRootElement *root, UInt16 version);

  private:
    OSBRootElement *_root;
    UnrecordedRefPtr<FieldContainer> _container;
    UInt16 _version;
};
} // namespace OSG
