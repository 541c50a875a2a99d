#include "OSGImageFileHandler.h"

#include <boost/filesystem.hpp>
#include <fstream>

#include "OSGFileSuffix.h"
#include "OSGImage.h"
#include "OSGImageFileType.h"
#include "OSGPathHandler.h"

namespace OSG
{
ImageFileHandlerBase::~ImageFileHandlerBase() = default;

ImageFileHandlerBase *ImageFileHandlerBase::the()
{
    static ImageFileHandlerBase *const handler = new ImageFileHandlerBase;
    return handler;
}

template <>
ImageFileHandlerBase *SingletonHolder<ImageFileHandlerBase>::the()
{
    return ImageFileHandlerBase::the();
}

void ImageFileHandlerBase::addImageFileType(ImageFileType *type) { _types.push_back(type); }

ImageFileType *ImageFileHandlerBase::getFileType(char const *suffix) const
{
    return find_file_type(_types, suffix);
}

// Empty where there is no such file.
std::string ImageFileHandlerBase::findPicture(char const *fileName) const
{
    boost::system::error_code error;
    if(boost::filesystem::is_regular_file(fileName, error))
        return fileName;
    bool const isSearched =
        _pathHandler != nullptr && boost::filesystem::path(fileName).is_relative();
    return isSearched ? _pathHandler->findFile(fileName) : std::string();
}

namespace
{
// The current folder may be gone. A relative name stays as it is then.
std::string full_name(boost::filesystem::path path)
{
    boost::system::error_code error;
    if(path.is_relative())
        path = boost::filesystem::current_path(error) / path;
    return path.lexically_normal().string();
}
} // namespace

TransitPtr<Image> ImageFileHandlerBase::read(char const *fileName, char const *typeHint)
{
    std::string const path = fileName != nullptr ? findPicture(fileName) : std::string();
    if(path.empty())
        return nullptr;
    std::ifstream in(path, std::ios::binary);
    ImageFileType *const preferred =
        getFileType(typeHint != nullptr ? typeHint : file_suffix(fileName).c_str());

    auto const attempt = [&in](ImageFileType *type)
    {
        in.clear();
        in.seekg(0);
        return type->read(in);
    };
    TransitPtr<Image> image;
    if(preferred != nullptr)
        image = attempt(preferred);
    for(std::size_t i = 0; !image && i < _types.size(); ++i)
    {
        if(_types[i] != preferred)
            image = attempt(_types[i]);
    }
    if(image)
        image->setName(full_name(path));
    return image;
}

bool ImageFileHandlerBase::write(Image const &image, char const *fileName, char const *typeHint)
{
    if(fileName == nullptr)
        return false;
    ImageFileType *const type =
        getFileType(typeHint != nullptr ? typeHint : file_suffix(fileName).c_str());
    if(type == nullptr)
        return false;
    std::ofstream out(fileName, std::ios::binary);
    return out && type->write(image, out) && out.flush();
}
} // namespace OSG
