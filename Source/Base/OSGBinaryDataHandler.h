#pragma once

/// \file
/// Writes numbers and strings in binary form to any kind of storage, and reads them back.
///
/// | kind    | form                                                                     |
/// |---------|--------------------------------------------------------------------------|
/// | numbers | little-endian, of their own width                                        |
/// | bool    | one byte, 0 or 1; any byte but 0 reads as true                           |
/// | string  | 32-bit length plus one, the characters, a zero byte                      |
/// | list    | 32-bit count, then its values                                            |
///
/// A length or count in a file may be wrong. Strings and lists are therefore read in blocks, so
/// that memory grows only with the bytes that are really there.

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
/// A number that has a binary form: bool, integers and floats of 1 to 8 bytes.
template <class T>
concept BinaryNumber = std::is_arithmetic_v<T> && sizeof(T) <= 8;

class OSG_BASE_API ExceptionBinaryDataHandler
{
  public:
    /// The storage ended early, or could not be read.
    class OSG_BASE_API ReadError : public std::runtime_error
    {
      public:
        explicit ReadError(char const *what);
        ~ReadError() override;
    };
    /// The storage is full or failed, or a string or list is too long for its 32-bit length.
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
    /// Writes `size` bytes unchanged.
    void put(void const *source, UInt64 size) { write(source, size); }
    template <BinaryNumber T>
    void putValue(T value);
    void putValue(std::string const &value);
    template <class T>
    void putValues(T const *values, UInt64 count);
    /// Writes the count, then the values.
    template <class T, class Allocator>
    void putList(std::vector<T, Allocator> const &values);

    // --- reading; raises ReadError and keeps what was read before the error ---
    /// Reads `size` bytes unchanged.
    void get(void *target, UInt64 size) { read(target, size); }
    template <BinaryNumber T>
    void getValue(T &value);
    void getValue(std::string &value);
    template <class T>
    void getValues(T *values, UInt64 count);
    /// Appends `count` values, block by block.
    template <BinaryNumber T, class Allocator>
    void appendValues(std::vector<T, Allocator> &values, UInt64 count);
    /// Reads a count and that many values, which replace `values`. An error leaves `values`
    /// unchanged.
    template <BinaryNumber T, class Allocator>
    void getList(std::vector<T, Allocator> &values);

  protected:
    /// Transfers exactly `size` bytes or raises. The base class always raises.
    virtual void read(void *target, UInt64 size);
    virtual void write(void const *source, UInt64 size);

  private:
    /// Raises WriteError where a list or string is too long for 32 bits.
    static UInt32 checkedCount(UInt64 count);

    static constexpr UInt64 BlockSize = 64 * 1024; // values per block
};

using BinaryDataHandler = ExceptionBinaryDataHandler;

/// Works on a standard stream. The stream is not owned and must outlive the handler.
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

/// Works on bytes that it owns. Writes append; reads start at the first byte.
class OSG_BASE_API MemoryBinaryDataHandler : public ExceptionBinaryDataHandler
{
  public:
    MemoryBinaryDataHandler();
    /// Takes the bytes that will be read.
    explicit MemoryBinaryDataHandler(std::vector<UInt8> bytes);
    ~MemoryBinaryDataHandler() override;

    std::vector<UInt8> const &getBytes() const { return _bytes; }
    /// Number of bytes that have not been read yet.
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
/// Converts between the machine's byte order and little-endian.
template <BinaryNumber T>
void order_bytes(UInt8 (&bytes)[sizeof(T)])
{
    if constexpr(std::endian::native == std::endian::big)
        std::reverse(bytes, bytes + sizeof(T));
}

/// True where an array of T has the same bytes in memory and in a file. A bool is left out, because
/// any byte but 0 reads as true.
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
        std::size_t const now = static_cast<std::size_t>(std::min(count, BlockSize));
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
