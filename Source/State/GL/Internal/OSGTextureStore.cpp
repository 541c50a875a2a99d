#include "OSGTextureStore.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "OSGContentHash.h"
#include "OSGImage.h"
#include "OSGLog.h"
#include "OSGMipmaps.h"
#include "OSGShownText.h"

namespace OSG
{
namespace
{
bool has_pixels(Image const &image)
{
    UInt64 const bytes = UInt64(image.getWidth()) * image.getHeight() * image.getChannels();
    return bytes > 0 && image.getChannels() <= 4 && image.getPixel().size() >= bytes;
}

UInt64 content_of(Image const &image)
{
    ContentHash hash;
    UInt32 const size[] = {image.getWidth(), image.getHeight(), image.getChannels()};
    hash.add(size, sizeof(size));
    hash.addArray(image.getPixel());
    return hash.value();
}

constexpr GLenum Formats[] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};
constexpr GLint StoredFormats[] = {GL_LUMINANCE8, GL_LUMINANCE8_ALPHA8, GL_RGB8, GL_RGBA8};

// A picture that is not copied unless it has to be made smaller.
struct Level
{
    UInt32 width;
    UInt32 height;
    UInt32 channels;
    UInt8 const *pixels;
    PixelRows own;

    void halve()
    {
        own = half_picture(width, height, channels, pixels);
        width = own.width;
        height = own.height;
        pixels = own.pixels.data();
    }
};

bool fits(Level const &level)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    UInt32 const side = static_cast<UInt32>(std::max(largest, 1));
    if(level.width > side || level.height > side)
        return false;
    // The driver may have no room for this format at the largest size.
    GLint width = static_cast<GLint>(level.width);
    glTexImage2D(GL_PROXY_TEXTURE_2D, 0, StoredFormats[level.channels - 1],
                 static_cast<GLsizei>(level.width), static_cast<GLsizei>(level.height), 0,
                 Formats[level.channels - 1], GL_UNSIGNED_BYTE, nullptr);
    glGetTexLevelParameteriv(GL_PROXY_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    return width == static_cast<GLint>(level.width);
}

// Whether the texture that is bound has the level afterwards.
bool upload_level(Level const &level, GLint number)
{
    glTexImage2D(GL_TEXTURE_2D, number, StoredFormats[level.channels - 1],
                 static_cast<GLsizei>(level.width), static_cast<GLsizei>(level.height), 0,
                 Formats[level.channels - 1], GL_UNSIGNED_BYTE, level.pixels);
    GLint width = static_cast<GLint>(level.width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, number, GL_TEXTURE_WIDTH, &width);
    return width == static_cast<GLint>(level.width);
}

// Makes the picture as small as the driver wants it.
void fit_to_driver(Level &level, Image const &image)
{
    UInt32 const width = level.width;
    UInt32 const height = level.height;
    while(!fits(level) && (level.width > 1 || level.height > 1))
        level.halve();
    if(level.width != width || level.height != height)
        OSG_LOG_WARNING("The picture '%s' of %ux%u is too large for the driver, it is drawn with "
                        "%ux%u\n",
                        shown_text(image.getName()).c_str(), width, height, level.width,
                        level.height);
}
} // namespace

bool TextureStore::bind(TextureValues const &values)
{
    std::lock_guard const lock(_mutex);
    std::size_t const most = _forgotten.size() + _textures.size() + 1;
    if(_forgotten.capacity() < most)
        _forgotten.reserve(2 * most);
    Texture &texture = _textures[values.image];
    if(texture.lookedAt != _frame)
    {
        refresh(texture, *values.image);
        texture.lookedAt = _frame;
    }
    glBindTexture(GL_TEXTURE_2D, texture.isUsable ? texture.name : 0);
    if(!texture.isUsable)
        return false;
    bool const wantsMipmaps =
        values.minFilter != GLName::Nearest && values.minFilter != GLName::Linear;
    if(wantsMipmaps && !texture.hasMipmaps)
        upload(texture, *values.image, true);
    set(texture, values);
    return texture.isUsable;
}

// Values that are being edited may change without notice, so their content is compared.
void TextureStore::refresh(Texture &texture, Image const &image)
{
    UInt32 const stamp = image.getChangeMask() == 0 ? image.getStamp() : 0;
    if(texture.isDone && stamp != 0 && stamp == texture.stamp)
        return;
    UInt64 const content = content_of(image);
    if(!texture.isDone || content != texture.content)
        upload(texture, image, texture.hasMipmaps);
    texture.content = content;
    texture.stamp = stamp;
}

void TextureStore::upload(Texture &texture, Image const &image, bool withMipmaps)
{
    texture.isUsable = false;
    texture.isDone = false;
    if(!has_pixels(image))
    {
        texture.isDone = true;
        OSG_LOG_WARNING("The picture '%s' has no pixels, it is drawn without\n",
                        shown_text(image.getName()).c_str());
        return;
    }
    if(texture.name == 0)
    {
        glGenTextures(1, &texture.name);
        texture.minFilter = texture.magFilter = texture.wrapS = texture.wrapT = 0;
    }
    glBindTexture(GL_TEXTURE_2D, texture.name);
    Level level{
        image.getWidth(), image.getHeight(), image.getChannels(), image.getPixel().data(), {}};
    fit_to_driver(level, image);
    bool isComplete = upload_level(level, 0);
    for(GLint number = 1; withMipmaps && isComplete && (level.width > 1 || level.height > 1);
        ++number)
    {
        level.halve();
        isComplete = upload_level(level, number);
    }
    if(!isComplete)
        OSG_LOG_WARNING("The driver has no memory for the picture '%s'\n",
                        shown_text(image.getName()).c_str());
    texture.isUsable = isComplete;
    texture.hasMipmaps = withMipmaps;
    texture.isDone = true;
}

void TextureStore::set(Texture &texture, TextureValues const &values)
{
    auto const change = [](UInt32 &current, UInt32 wanted, GLenum name)
    {
        if(current != wanted)
            glTexParameteri(GL_TEXTURE_2D, name, static_cast<GLint>(wanted));
        current = wanted;
    };
    change(texture.minFilter, values.minFilter, GL_TEXTURE_MIN_FILTER);
    change(texture.magFilter, values.magFilter, GL_TEXTURE_MAG_FILTER);
    change(texture.wrapS, values.wrapS, GL_TEXTURE_WRAP_S);
    change(texture.wrapT, values.wrapT, GL_TEXTURE_WRAP_T);
}

void TextureStore::forget(Image const &image)
{
    std::lock_guard const lock(_mutex);
    auto const at = _textures.find(&image);
    if(at == _textures.end())
        return;
    // bind() has made room: this runs in destructors, where memory may not run out.
    if(at->second.name != 0)
        _forgotten.push_back(at->second.name);
    _textures.erase(at);
}

void TextureStore::collect()
{
    std::lock_guard const lock(_mutex);
    if(!_forgotten.empty())
        glDeleteTextures(static_cast<GLsizei>(_forgotten.size()), _forgotten.data());
    _forgotten.clear();
}

void TextureStore::release()
{
    collect();
    for(auto const &[image, texture] : _textures)
        glDeleteTextures(1, &texture.name);
    abandon();
}

void TextureStore::abandon()
{
    std::lock_guard const lock(_mutex);
    _textures.clear();
    _forgotten.clear();
}

std::size_t TextureStore::countObjects() const
{
    return static_cast<std::size_t>(std::count_if(_textures.begin(), _textures.end(),
                                                  [](auto const &entry)
                                                  { return entry.second.name != 0; }));
}
} // namespace OSG
