#include "OSGObjMaterialEntry.h"

#include <boost/filesystem/path.hpp>
#include <ostream>

#include "OSGChunkMaterial.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGTextureObjChunk.h"

namespace OSG
{
namespace
{
class Entry
{
  public:
    Entry(std::ostream &library, ObjWriter::Images &images)
        : _library(library)
        , _images(images)
    {
    }

    void write(SimpleMaterial const &material)
    {
        writeColors(material.getAmbient(), material.getDiffuse(), material.getSpecular());
        writeNumbers(1.0 - material.getTransparency(), material.getShininess());
        if(auto const *const textured = dynamic_cast<SimpleTexturedMaterial const *>(&material))
            writeImage(textured->getImage());
    }

    void write(ChunkMaterial const &material)
    {
        if(StateChunk const *const colors = material.find(MaterialChunk::getClassType()))
            write(static_cast<MaterialChunk const &>(*colors));
        if(StateChunk const *const texture = material.find(TextureObjChunk::getClassType()))
            writeImage(static_cast<TextureObjChunk const &>(*texture).getImage());
    }

  private:
    void write(MaterialChunk const &chunk)
    {
        Real32 const transparency = 1.f - chunk.getDiffuse()[3];
        writeColors(chunk.getAmbient(), chunk.getDiffuse(), chunk.getSpecular());
        writeNumbers(1.0 - transparency, chunk.getShininess());
    }

    template <class Color>
    void writeColors(Color const &ambient, Color const &diffuse, Color const &specular)
    {
        writeColor("Ka", ambient);
        writeColor("Kd", diffuse);
        writeColor("Ks", specular);
    }

    template <class Color>
    void writeColor(char const *word, Color const &color)
    {
        line(word) << color[0] << ' ' << color[1] << ' ' << color[2] << '\n';
    }

    void writeNumbers(Real64 opacity, Real32 shininess)
    {
        line("illum") << 2 << '\n';
        line("d") << opacity << '\n';
        line("Ns") << shininess << '\n';
        line("Ni") << 1.0 << '\n';
    }

    void writeImage(Image *image)
    {
        if(image == nullptr || image->getName().empty())
            return;
        line("map_Kd") << boost::filesystem::path(image->getName()).filename().string() << '\n';
        _images.insert(image);
    }

    std::ostream &line(char const *word) { return _library << "    " << word << ' '; }

    std::ostream &_library;
    ObjWriter::Images &_images;
};
} // namespace

void write_obj_material(std::ostream &library, std::string const &name, Material const *material,
                        ObjWriter::Images &images)
{
    library.setf(std::ios::fixed, std::ios::floatfield);
    library.precision(6);
    library << "\nnewmtl " << name << '\n';
    Entry entry(library, images);
    if(auto const *const simple = dynamic_cast<SimpleMaterial const *>(material))
        entry.write(*simple);
    else if(auto const *const chunks = dynamic_cast<ChunkMaterial const *>(material))
        entry.write(*chunks);
}
} // namespace OSG
