#pragma once

#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "OSGDrawState.h"

namespace OSG
{
/// The textures of one context, by their images.
///
/// All functions but forget() want the context to be current. forget() may be called in any thread;
/// the texture that it leaves behind is freed by the next collect().
class OSG_STATE_API TextureStore
{
  public:
    /// Images are looked at once between two calls, to see whether they have changed.
    void beginFrame() { ++_frame; }
    /// Binds the texture of the image to the active unit, with the settings of `values`; makes it
    /// where it is missing or out of date. False where the image has no pixels or the driver no
    /// memory, which is logged once for each picture; the texture 0 is bound then.
    bool bind(TextureValues const &values);

    void forget(Image const &image);
    /// Frees what has been forgotten.
    void collect();
    /// Frees everything.
    void release();
    /// The context is gone, and its textures with it.
    void abandon();

    /// True once in the life of the store: for the warning of a material with more textures than
    /// the driver has units.
    bool isFirstExcess() { return !std::exchange(_hadExcess, true); }

    /// Number of textures.
    std::size_t countObjects() const;

  private:
    struct Texture
    {
        UInt32 name = 0;
        UInt32 stamp = 0;
        UInt64 content = 0; // a hash
        UInt64 lookedAt = 0;
        bool isUsable = false;
        bool isDone = false; // false where std::bad_alloc has cut the making short
        bool hasMipmaps = false;
        // What the texture object is set to.
        UInt32 minFilter = 0, magFilter = 0, wrapS = 0, wrapT = 0;
    };

    void refresh(Texture &texture, Image const &image);
    void upload(Texture &texture, Image const &image, bool withMipmaps);
    static void set(Texture &texture, TextureValues const &values);

    std::mutex _mutex; // for the textures and those that were forgotten
    std::unordered_map<Image const *, Texture> _textures;
    std::vector<UInt32> _forgotten;
    UInt64 _frame = 1;
    bool _hadExcess = false;
};
} // namespace OSG
