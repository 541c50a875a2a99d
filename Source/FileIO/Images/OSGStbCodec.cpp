#include "OSGStbCodec.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

#include "OSGImage.h"
#include "OSGMemManager.h"

namespace
{
/// Whether the decoder's blocks may grow, and whether memory ran out. The decoder's allocation
/// functions have no parameter for such state, so it is kept per thread.
struct DecoderState
{
    bool mayGrow = true;
    bool lacksMemory = false;
};
thread_local DecoderState decoder_state;

void *allocate_block(std::size_t size)
{
    void *const block = OSG::MemMalloc(size);
    decoder_state.lacksMemory |= block == nullptr;
    return block;
}

void *resize_block(void *block, std::size_t formerSize, std::size_t size)
{
    if(block != nullptr && !decoder_state.mayGrow)
        return nullptr;
    void *const larger = allocate_block(size);
    if(larger != nullptr && block != nullptr)
    {
        std::memcpy(larger, block, std::min(formerSize, size));
        OSG::MemFree(block);
    }
    return larger;
}

/// The blocks of one encoding. The encoder does not check for null, so allocation raises
/// std::bad_alloc. An exception that passes through the encoder leaves its blocks behind, so they
/// are listed and freed here.
class EncoderBlocks
{
  public:
    EncoderBlocks()
        : _outer(_current)
    {
        _current = this;
    }
    EncoderBlocks(EncoderBlocks const &) = delete;
    EncoderBlocks &operator=(EncoderBlocks const &) = delete;
    ~EncoderBlocks()
    {
        while(_first != nullptr)
            release(_first + 1);
        _current = _outer;
    }

    static void *allocate(std::size_t size)
    {
        auto *const block = static_cast<Header *>(OSG::mem_malloc_or_throw(sizeof(Header) + size));
        *block = {nullptr, _current->_first};
        if(block->next != nullptr)
            block->next->before = block;
        _current->_first = block;
        return block + 1;
    }
    static void release(void *place)
    {
        if(place == nullptr)
            return;
        Header *const block = static_cast<Header *>(place) - 1;
        (block->before != nullptr ? block->before->next : _current->_first) = block->next;
        if(block->next != nullptr)
            block->next->before = block->before;
        OSG::MemFree(block);
    }
    static void *resize(void *place, std::size_t formerSize, std::size_t size)
    {
        void *const other = allocate(size);
        if(place != nullptr)
            std::memcpy(other, place, std::min(formerSize, size));
        release(place);
        return other;
    }

  private:
    struct alignas(std::max_align_t) Header
    {
        Header *before;
        Header *next;
    };

    static thread_local EncoderBlocks *_current;

    EncoderBlocks *_outer;
    Header *_first = nullptr;
};
thread_local EncoderBlocks *EncoderBlocks::_current = nullptr;
} // namespace

#define STBI_MALLOC(size) allocate_block(size)
#define STBI_REALLOC_SIZED(block, formerSize, size) resize_block(block, formerSize, size)
#define STBI_FREE(block) ::OSG::MemFree(block)
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_TGA
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#define STBI_NO_FAILURE_STRINGS
#define STBI_MAX_DIMENSIONS 32768
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION

#define STBIW_MALLOC(size) EncoderBlocks::allocate(size)
#define STBIW_REALLOC_SIZED(block, formerSize, size) EncoderBlocks::resize(block, formerSize, size)
#define STBIW_FREE(block) EncoderBlocks::release(block)
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION

// The implementations are compiled here and are not written for our warnings.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wshadow"
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace OSG
{
namespace
{
static_assert(MaxPictureExtent == STBI_MAX_DIMENSIONS);

// The encoder expects the top row first; an Image has the bottom row first.
PictureBytes flipped(UInt8 const *rows, std::size_t rowBytes, std::size_t count)
{
    PictureBytes result(rowBytes * count);
    for(std::size_t row = 0; row < count; ++row)
        std::memcpy(&result[row * rowBytes], rows + (count - 1 - row) * rowBytes, rowBytes);
    return result;
}

void flip_in_place(UInt8 *rows, std::size_t rowBytes, std::size_t count)
{
    for(std::size_t row = 0; row < count / 2; ++row)
        std::swap_ranges(rows + row * rowBytes, rows + (row + 1) * rowBytes,
                         rows + (count - 1 - row) * rowBytes);
}

// A picture of this size is decoded however small its file is.
constexpr UInt64 FreeBytes = 8 * 1024 * 1024;

bool may_be_decoded(PictureBytes const &bytes, UInt64 maxExpansion)
{
    int width = 0;
    int height = 0;
    int channels = 0;
    if(bytes.size() > INT_MAX || stbi_info_from_memory(bytes.data(), static_cast<int>(bytes.size()),
                                                       &width, &height, &channels) == 0)
        return false;
    if(width <= 0 || height <= 0 || channels <= 0)
        return false;
    UInt64 const pixels = UInt64(width) * UInt64(height);
    return UInt32(width) <= MaxPictureExtent && UInt32(height) <= MaxPictureExtent &&
           pixels * UInt64(channels) <= FreeBytes + maxExpansion * bytes.size();
}

void write_to_stream(void *stream, void *data, int size)
{
    static_cast<std::ostream *>(stream)->write(static_cast<char *>(data), size);
}

constexpr int JpegQuality = 90; // of 100; hardly visible loss
} // namespace

TransitPtr<Image> decode_picture(PictureBytes const &bytes, UInt64 maxExpansion, StbBlocks blocks)
{
    decoder_state = {blocks == StbBlocks::Growing, false};
    int width = 0;
    int height = 0;
    int channels = 0;
    std::unique_ptr<UInt8, void (*)(void *)> const pixels(
        may_be_decoded(bytes, maxExpansion)
            ? stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &width, &height,
                                    &channels, 0)
            : nullptr,
        MemFree);
    bool const lacksMemory = decoder_state.lacksMemory;
    decoder_state = {};
    if(pixels == nullptr && lacksMemory)
        throw std::bad_alloc();
    if(pixels == nullptr)
        return nullptr;
    flip_in_place(pixels.get(), std::size_t(width) * std::size_t(channels), std::size_t(height));
    TransitPtr<Image> image = Image::create();
    if(!image->set(UInt32(width), UInt32(height), UInt32(channels), pixels.get()))
        return nullptr;
    return image;
}

bool encode_picture(Image const &image, PictureFormat format, std::ostream &out)
{
    std::size_t const rowBytes = std::size_t(image.getWidth()) * image.getChannels();
    std::size_t const size = rowBytes * image.getHeight();
    bool const drawn = size > 0 && image.getPixel().size() == size && size <= MaxEncodedBytes &&
                       image.getChannels() <= 4;
    if(!drawn)
        return false;
    PictureBytes const rows = flipped(image.getPixel().data(), rowBytes, image.getHeight());
    int const width = static_cast<int>(image.getWidth());
    int const height = static_cast<int>(image.getHeight());
    int const channels = static_cast<int>(image.getChannels());
    EncoderBlocks const blocks;
    int written = 0;
    switch(format)
    {
    case PictureFormat::Png:
        written = stbi_write_png_to_func(write_to_stream, &out, width, height, channels,
                                         rows.data(), static_cast<int>(rowBytes));
        break;
    case PictureFormat::Jpeg:
        written = stbi_write_jpg_to_func(write_to_stream, &out, width, height, channels,
                                         rows.data(), JpegQuality);
        break;
    case PictureFormat::Tga:
        written =
            stbi_write_tga_to_func(write_to_stream, &out, width, height, channels, rows.data());
        break;
    case PictureFormat::Bmp:
        written =
            stbi_write_bmp_to_func(write_to_stream, &out, width, height, channels, rows.data());
        break;
    }
    return written != 0 && out.good();
}
} // namespace OSG
