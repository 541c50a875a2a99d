#include "OSGObjMaterialLibrary.h"

#include <boost/filesystem.hpp>
#include <fstream>

#include "OSGGLNames.h"
#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGLog.h"
#include "OSGMtlReader.h"
#include "OSGObjMessages.h"
#include "OSGSceneFileHandler.h"
#include "OSGShownText.h"
#include "OSGSimpleTexturedMaterial.h"

namespace OSG
{
namespace
{
constexpr UInt32 NoColorMaterial = 0;

class LibraryMaterials : public MtlHandler
{
  public:
    explicit LibraryMaterials(OBJSceneFileTypeTN::MaterialMap &materials)
        : _materials(materials)
    {
    }

    void newMaterial(std::string const &name) override
    {
        _current = SimpleTexturedMaterial::create();
        _current->setColorMaterial(NoColorMaterial);
        _current->setEnvMode(GLName::Modulate);
        _current->setMinFilter(GLName::LinearMipmapLinear);
        _current->setMagFilter(GLName::Nearest);
        _current->setEnvMap(false);
        _current->setLit(true);
        _materials[name] = _current;
    }

    void setColor(MtlColor which, Color3f const &color) override
    {
        switch(which)
        {
        case MtlColor::Diffuse:
            _current->setDiffuse(color);
            break;
        case MtlColor::Ambient:
            _current->setAmbient(color);
            break;
        case MtlColor::Specular:
            _current->setSpecular(color);
            break;
        }
    }

    void setShininess(Real32 shininess) override { _current->setShininess(shininess); }
    void setTransparency(Real32 transparency) override { _current->setTransparency(transparency); }
    void setEnvMap(bool on) override { _current->setEnvMap(on); }

    bool setImage(std::string const &imageName) override
    {
        Image *const image = findImage(imageName);
        if(image == nullptr)
            return false;
        _current->setImage(image);
        return true;
    }

  private:
    // Each image is loaded once. An image that could not be loaded is tried again at its next use.
    Image *findImage(std::string const &name)
    {
        auto const loaded = _images.find(name);
        if(loaded != _images.end())
            return loaded->second;
        UnrecordedRefPtr<Image> const image(
            ImageFileHandlerBase::the()->read(find_obj_file(name).c_str(), nullptr));
        if(image == nullptr)
            return nullptr;
        image->setForceAlphaBinary(image->calcIsAlphaBinary());
        _images[name] = image;
        return image;
    }

    OBJSceneFileTypeTN::MaterialMap &_materials;
    OBJSceneFileTypeTN::MaterialPtr _current;
    std::map<std::string, UnrecordedRefPtr<Image>> _images;
};
} // namespace

std::string find_obj_file(std::string const &name)
{
    PathHandler const *const paths = SceneFileHandlerBase::the()->getPathHandler();
    return paths != nullptr ? paths->findFile(name.c_str()) : name;
}

Int32 read_material_library(char const *fileName, MtlElementMap const &elements,
                            OBJSceneFileTypeTN::MaterialMap &materials)
{
    if(fileName == nullptr || *fileName == '\0')
        return 0;
    std::string const fullName = find_obj_file(fileName);
    if(fullName.empty())
    {
        OSG_LOG_WARNING(ObjMessages::LibraryMissing, shown_text(fileName).c_str());
        return 0;
    }
    // Only regular files are opened. A folder or a pipe can be opened too, and reading a pipe may
    // never end.
    boost::system::error_code error;
    if(!boost::filesystem::is_regular_file(fullName, error))
        return 0;
    std::ifstream in(fullName, std::ios::binary);
    if(!in)
        return 0;
    ReadBuffer text(in);
    ReadText const reading(text);
    LibraryMaterials library(materials);
    Int32 const count = read_mtl(text, elements, fileName, library);
    reading.reportEarlyEnd(fileName);
    return count;
}
} // namespace OSG
