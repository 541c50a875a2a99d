#pragma once

#include <memory>

#include "OSGBaseTypes.h"
#include "OSGStateApi.h"

namespace OSG
{
class DrawShape;
class Image;
class MeshStore;
class TargetStore;
class TextureStore;

/// The OpenGL objects that scenes have in one context: buffers of shapes, textures of images.
///
/// They are made when they are first drawn and renewed when their data have changed. They are freed
/// when their shape or image dies, in whatever thread: by the next frame in their context, because
/// nothing can be freed while it is not current. A host that ends a context calls releaseCurrent()
/// before, else the memory of the store stays until another context has the same handle.
///
/// A context that takes the place of an ended one is noticed; the objects of that one are then
/// forgotten.
class OSG_STATE_API GLObjectStore
{
  public:
    /// The store of the current context, which is none that gl_refusal() names. It is the calling
    /// thread's as long as the context is. What has died since the last call is freed.
    static GLObjectStore &current();
    /// Frees all objects of the current context. Does nothing where there is no store of it.
    static void releaseCurrent();

    // --- called by what dies ---
    static void forget(DrawShape const &shape);
    static void forget(Image const &image);
    /// `owner` is what frame buffers were made for.
    static void forgetTarget(void const *owner);

    /// Number of buffers, textures and frame buffers.
    std::size_t countObjects() const;

    // --- for the drawing ---
    MeshStore &meshes() { return *_meshes; }
    TextureStore &textures() { return *_textures; }
    TargetStore &targets() { return *_targets; }

    GLObjectStore(GLObjectStore const &) = delete;
    GLObjectStore &operator=(GLObjectStore const &) = delete;
    ~GLObjectStore();

  private:
    explicit GLObjectStore(void const *context);
    static GLObjectStore *findOrMake(void const *context);
    void mark();
    bool isMarked() const;
    void abandon();

    void const *_context;
    UInt32 _marker = 0; // a texture that tells whether the context is still the same one
    bool _hasMarker = false;
    Real32 _nonce;
    std::unique_ptr<MeshStore> _meshes;
    std::unique_ptr<TextureStore> _textures;
    std::unique_ptr<TargetStore> _targets;
};
} // namespace OSG
