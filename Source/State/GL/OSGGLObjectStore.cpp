#include "OSGGLObjectStore.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

#include <epoxy/gl.h>

#include "OSGGLContext.h"
#include "OSGMeshStore.h"
#include "OSGTargetStore.h"
#include "OSGTextureStore.h"

namespace OSG
{
namespace
{
// Never destroyed, because shapes and images may die after everything else.
struct Registry
{
    std::mutex mutex;
    std::vector<std::unique_ptr<GLObjectStore>> stores;
};
Registry &registry()
{
    static Registry *const only = new Registry;
    return *only;
}

std::atomic<bool> has_stores{false}; // so that a death costs nothing in programs that draw nothing

// Puts back what was bound to the active unit.
class BoundTexture
{
  public:
    explicit BoundTexture(UInt32 name)
    {
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &_former);
        glBindTexture(GL_TEXTURE_2D, name);
    }
    ~BoundTexture() { glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(_former)); }
    BoundTexture(BoundTexture const &) = delete;
    BoundTexture &operator=(BoundTexture const &) = delete;

  private:
    GLint _former = 0;
};
} // namespace

GLObjectStore::GLObjectStore(void const *context)
    : _context(context)
    , _meshes(std::make_unique<MeshStore>())
    , _textures(std::make_unique<TextureStore>())
    , _targets(std::make_unique<TargetStore>())
{
    // Every number up to this one is a Real32.
    constexpr UInt32 Numbers = 1u << 24;
    static std::atomic<UInt32> last{0};
    _nonce = static_cast<Real32>(last.fetch_add(1) % Numbers + 1);
}

GLObjectStore::~GLObjectStore() = default;

// A texture parameter holds any number and is read without waiting for the driver. Nobody else sets
// it to such a value.
void GLObjectStore::mark()
{
    glGenTextures(1, &_marker);
    _hasMarker = true;
    BoundTexture const bound(_marker);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_LOD, -_nonce);
}

bool GLObjectStore::isMarked() const
{
    if(!_hasMarker || glIsTexture(_marker) == GL_FALSE)
        return false;
    BoundTexture const bound(_marker);
    GLfloat nonce = 0;
    glGetTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_MIN_LOD, &nonce);
    return nonce == -_nonce;
}

void GLObjectStore::abandon()
{
    _meshes->abandon();
    _textures->abandon();
    _targets->abandon();
}

GLObjectStore *GLObjectStore::findOrMake(void const *context)
{
    Registry &all = registry();
    std::lock_guard const lock(all.mutex);
    for(auto const &store : all.stores)
    {
        if(store->_context == context)
            return store.get();
    }
    all.stores.emplace_back(new GLObjectStore(context));
    has_stores = true;
    return all.stores.back().get();
}

GLObjectStore &GLObjectStore::current()
{
    GLObjectStore *const store = findOrMake(current_gl_context());
    if(!store->isMarked())
    {
        store->abandon();
        store->mark();
    }
    store->_meshes->collect();
    store->_textures->collect();
    store->_targets->collect();
    store->_textures->beginFrame();
    return *store;
}

void GLObjectStore::releaseCurrent()
{
    void const *const context = current_gl_context();
    Registry &all = registry();
    std::unique_ptr<GLObjectStore> store;
    {
        std::lock_guard const lock(all.mutex);
        auto const own =
            std::find_if(all.stores.begin(), all.stores.end(),
                         [context](auto const &other) { return other->_context == context; });
        if(context == nullptr || own == all.stores.end())
            return;
        store = std::move(*own);
        all.stores.erase(own);
        has_stores = !all.stores.empty();
    }
    if(!store->isMarked())
        return;
    store->_meshes->release();
    store->_textures->release();
    store->_targets->release();
    glDeleteTextures(1, &store->_marker);
}

void GLObjectStore::forget(DrawShape const &shape)
{
    if(!has_stores)
        return;
    std::lock_guard const lock(registry().mutex);
    for(auto const &store : registry().stores)
        store->_meshes->forget(shape);
}

void GLObjectStore::forget(Image const &image)
{
    if(!has_stores)
        return;
    std::lock_guard const lock(registry().mutex);
    for(auto const &store : registry().stores)
        store->_textures->forget(image);
}

void GLObjectStore::forgetTarget(void const *owner)
{
    if(!has_stores)
        return;
    std::lock_guard const lock(registry().mutex);
    for(auto const &store : registry().stores)
        store->_targets->forget(owner);
}

std::size_t GLObjectStore::countObjects() const
{
    return _meshes->countObjects() + _textures->countObjects() + _targets->countObjects();
}
} // namespace OSG
