#pragma once

/// \file
/// The storages that the binary scene format reads from and writes to.

#include <iosfwd>
#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGMemManager.h"

namespace OSG
{
/// Reads from a stream in blocks, because a scene has very many small numbers and a stream call for
/// each would cost more than the rest. Only bytes that are already in the stream's own buffer are
/// read ahead. At the end the unused ones are given back, so that the stream stands behind the last
/// byte read even where it cannot seek.
class OSBInput : public ExceptionBinaryDataHandler
{
  public:
    /// `in` is not owned and must outlive this.
    explicit OSBInput(std::istream &in);
    ~OSBInput() override;

  protected:
    void read(void *target, UInt64 size) override;

  private:
    UInt64 takeReady(char *target, UInt64 size);
    UInt64 takeFromStream(char *target, UInt64 size);
    bool fill();

    std::istream &_in;
    std::vector<char, MemAllocator<char>> _block;
    std::size_t _at = 0;
    std::size_t _end = 0;
};

/// Writes to a stream in blocks. finish() writes the last block; nothing else does.
class OSBOutput : public ExceptionBinaryDataHandler
{
  public:
    /// `out` is not owned and must outlive this.
    explicit OSBOutput(std::ostream &out);
    ~OSBOutput() override;

    /// Writes the last block. Raises WriteError where the stream fails.
    void finish();

  protected:
    void write(void const *source, UInt64 size) override;

  private:
    void writeThrough(void const *source, UInt64 size);

    std::ostream &_out;
    std::vector<char, MemAllocator<char>> _block;
    std::size_t _end = 0; // of the bytes that wait in the block
};

/// The content of one field within a larger storage. Reading ends at the size of the field.
class OSBContent : public ExceptionBinaryDataHandler
{
  public:
    OSBContent(ExceptionBinaryDataHandler &storage, UInt64 size)
        : _storage(storage)
        , _rest(size)
    {
    }
    ~OSBContent() override;

    UInt64 getRest() const { return _rest; }
    void skipRest();

  protected:
    void read(void *target, UInt64 size) override;

  private:
    ExceptionBinaryDataHandler &_storage;
    UInt64 _rest;
};

/// Keeps the bytes that are written, so that they can be compared before they are stored.
class OSBScratch : public ExceptionBinaryDataHandler
{
  public:
    using Bytes = std::vector<UInt8, MemAllocator<UInt8>>;

    ~OSBScratch() override;

    void clear() { _bytes.clear(); }
    Bytes const &getBytes() const { return _bytes; }

  protected:
    void write(void const *source, UInt64 size) override;

  private:
    Bytes _bytes;
};
} // namespace OSG
