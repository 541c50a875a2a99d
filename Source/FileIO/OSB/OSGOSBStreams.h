#pragma once

/// \file
/// What the binary scene format reads from and writes to.

#include <iosfwd>
#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGMemManager.h"

namespace OSG
{
/// Reads from a stream in blocks: records are made of very many small numbers, and a call to the
/// stream for each costs more than the number. Only what lies ready in the stream's own buffer is
/// read ahead, and the end gives it back: the stream then stands behind the last byte that was
/// read, also where it cannot seek.
class OSBInput : public ExceptionBinaryDataHandler
{
  public:
    /// `in` is not owned and must live as long.
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

/// Writes to a stream in blocks. Without `finish` the last block is not written.
class OSBOutput : public ExceptionBinaryDataHandler
{
  public:
    /// `out` is not owned and must live as long.
    explicit OSBOutput(std::ostream &out);
    ~OSBOutput() override;

    /// Raises WriteError where the stream takes no more.
    void finish();

  protected:
    void write(void const *source, UInt64 size) override;

  private:
    void writeThrough(void const *source, UInt64 size);

    std::ostream &_out;
    std::vector<char, MemAllocator<char>> _block;
    std::size_t _end = 0; // of what waits in the block
};

/// The content of a field within a larger storage: ends where the field's size says.
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

/// Keeps what is written, to be looked at before it goes on.
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
