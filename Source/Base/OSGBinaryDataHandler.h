#pragma once

/// \file
/// Numbers and strings in binary form, written to and read from any kind of storage.
///
/// | kind    | form                                                                     |
/// |---------|--------------------------------------------------------------------------|
/// | numbers | little-endian, of their own width                                        |
/// | bool    | one byte, 0 or 1; any byte but 0 reads as true                           |
/// | string  | 32-bit length plus one, the characters, a zero byte                      |
/// | list    | 32-bit count, then its values                                            |
///
/// A length or count in a file may lie. Strings and lists are therefore read in blocks: storage
/// grows with what was really there, and the stream ends before memory does.

#include <algorithm>
#include <bit>
#include <cstring>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
/// A number that has a binary form: integers and floats of 1 to 8 bytes, bool included.
template <class T>
concept BinaryNumber = std::is_arithmetic_v<T> && sizeof(T) <= 8;

class OSG_BASE_API ExceptionBinaryDataHandler
{
  public:
    /// The storage ended early or could not be read.
    class OSG_BASE_API ReadError : public std::runtime_error
    {
      public:
        explicit ReadError(char const *what);
        ~ReadError() override;
    };
    /// The storage took no more, or something is too long for its form.
    class OSG_BASE_API WriteError : public std::runtime_error
    {
      public:
        explicit WriteError(char const *what);
        ~WriteError() override;
    };

    ExceptionBinaryDataHandler() = default;
    virtual ~ExceptionBinaryDataHandler();
    ExceptionBinaryDataHandler(ExceptionBinaryDataHandler const &) = delete;
    ExceptionBinaryDataHandler &operator=(ExceptionBinaryDataHandler const &) = delete;

    // --- writing; raises WriteError ---
    /// Bytes as they are.
    void put(void const *source, UInt64 size) { write(source, size); }
    template <BinaryNumber T>
    void putValue(T value);
    void putValue(std::string const &value);
    template <class T>
    void putValues(T const *values, UInt64 count);
    /// The count, then the values.
    template <class T, class Allocator>
    void putList(std::vector<T, Allocator> const &values);

    // --- reading; raises ReadError, what was read up to then is in place ---
    /// Bytes as they are.
    void get(void *target, UInt64 size) { read(target, size); }
    template <BinaryNumber T>
    void getValue(T &value);
    void getValue(std::string &value);
    template <class T>
    void getValues(T *values, UInt64 count);
    /// Appends `count` values, block by block.
    template <BinaryNumber T, class Allocator>
    void appendValues(std::vector<T, Allocator> &values, UInt64 count);
    /// Reads a count and replaces `values` by that many; unchanged on an error.
    template <BinaryNumber T, class Allocator>
    void getList(std::vector<T, Allocator> &values);

  protected:
    /// Moves exactly `size` bytes or raises; the base version raises always.
    virtual void read(void *target, UInt64 size);
    virtual void write(void const *source, UInt64 size);

  private:
    /// Raises WriteError where a list or string is too long for 32 bits.
    static UInt32 checkedCount(UInt64 count);

    static constexpr UInt64 block_size = 64 * 1024; // values per block
};

using BinaryDataHandler = ExceptionBinaryDataHandler;

/// Over a standard stream, which is not owned and must live as long.
class OSG_BASE_API StreamBinaryDataHandler : public ExceptionBinaryDataHandler
{
  public:
    explicit StreamBinaryDataHandler(std::istream &in);
    explicit StreamBinaryDataHandler(std::ostream &out);
    explicit StreamBinaryDataHandler(std::iostream &both);
    ~StreamBinaryDataHandler() override;

  protected:
    void read(void *target, UInt64 size) override;
    void write(void const *source, UInt64 size) override;

  private:
    std::istream *_in = nullptr;
    std::ostream *_out = nullptr;
};

/// Over bytes of its own: writes append, reads go from the first byte on.
class OSG_BASE_API MemoryBinaryDataHandler : public ExceptionBinaryDataHandler
{
  public:
    MemoryBinaryDataHandler();
    /// Starts with these bytes to read.
    explicit MemoryBinaryDataHandler(std::vector<UInt8> bytes);
    ~MemoryBinaryDataHandler() override;

    std::vector<UInt8> const &getBytes() const { return _bytes; }
    /// Bytes that are not read yet.
    UInt64 getRest() const { return _bytes.size() - _position; }

  protected:
    void read(void *target, UInt64 size) override;
    void write(void const *source, UInt64 size) override;

  private:
    std::vector<UInt8> _bytes;
    UInt64 _position = 0;
};

namespace Detail
{
/// Turns the bytes of a number round where the machine is big-endian.
template <BinaryNumber T>
void order_bytes(UInt8 (&bytes)[sizeof(T)])
{
    if constexpr(std::endian::native == std::endian::big)
        std::reverse(bytes, bytes + sizeof(T));
}

/// Whether arrays of T lie in memory as they lie in a file. A bool must be normalised.
template <class T>
inline constexpr bool IsBulk = BinaryNumber<T> && !std::is_same_v<T, bool> &&
                               (std::endian::native == std::endian::little || sizeof(T) == 1);
} // namespace Detail

template <BinaryNumber T>
void ExceptionBinaryDataHandler::putValue(T value)
{
    if constexpr(std::is_same_v<T, bool>)
    {
        putValue(static_cast<UInt8>(value ? 1 : 0));
    }
    else
    {
        UInt8 bytes[sizeof(T)];
        std::memcpy(bytes, &value, sizeof(T));
        Detail::order_bytes<T>(bytes);
        write(bytes, sizeof(T));
    }
}

template <BinaryNumber T>
void ExceptionBinaryDataHandler::getValue(T &value)
{
    UInt8 bytes[sizeof(T)];
    read(bytes, sizeof(T));
    if constexpr(std::is_same_v<T, bool>)
    {
        value = bytes[0] != 0;
    }
    else
    {
        Detail::order_bytes<T>(bytes);
        std::memcpy(&value, bytes, sizeof(T));
    }
}

template <class T>
void ExceptionBinaryDataHandler::putValues(T const *values, UInt64 count)
{
    if constexpr(Detail::IsBulk<T>)
    {
        if(count != 0)
            write(values, count * sizeof(T));
    }
    else
    {
        for(UInt64 i = 0; i < count; ++i)
            putValue(values[i]);
    }
}

template <class T>
void ExceptionBinaryDataHandler::getValues(T *values, UInt64 count)
{
    if constexpr(Detail::IsBulk<T>)
    {
        if(count != 0)
            read(values, count * sizeof(T));
    }
    else
    {
        for(UInt64 i = 0; i < count; ++i)
            getValue(values[i]);
    }
}

template <class T, class Allocator>
void ExceptionBinaryDataHandler::putList(std::vector<T, Allocator> const &values)
{
    putValue(checkedCount(values.size()));
    putValues(values.data(), values.size());
}

template <BinaryNumber T, class Allocator>
void ExceptionBinaryDataHandler::appendValues(std::vector<T, Allocator> &values, UInt64 count)
{
    static_assert(!std::is_same_v<T, bool>, "bits have no addresses");
    while(count > 0)
    {
        std::size_t const now = static_cast<std::size_t>(std::min(count, block_size));
        std::size_t const before = values.size();
        values.resize(before + now);
        getValues(values.data() + before, now);
        count -= now;
    }
}

template <BinaryNumber T, class Allocator>
void ExceptionBinaryDataHandler::getList(std::vector<T, Allocator> &values)
{
    UInt32 count = 0;
    getValue(count);
    std::vector<T, Allocator> fresh(values.get_allocator());
    appendValues(fresh, count);
    values.swap(fresh);
}
} // namespace OSG
