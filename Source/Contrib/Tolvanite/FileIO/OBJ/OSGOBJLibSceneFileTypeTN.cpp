#include "OSGOBJLibSceneFileTypeTN.h"

#include <algorithm>
#include <boost/filesystem.hpp>
#include <fstream>
#include <locale>
#include <map>
#include <set>
#include <vector>

#include "OSGChangeList.h"
#include "OSGImage.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGObjBuilder.h"
#include "OSGObjMaterialLibrary.h"
#include "OSGObjRecordReader.h"
#include "OSGObjWriter.h"
#include "OSGSceneFileHandler.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGThread.h"

namespace OSG
{
char const *OBJSceneFileTypeTN::_suffixA[1] = {"obj"};

OBJSceneFileTypeTN::OBJSceneFileTypeTN(char const *suffixes[], UInt16 sizeInBytes, bool override,
                                       UInt32 overridePriority, UInt32 flags)
    : SceneFileType(suffixes, sizeInBytes, override, overridePriority, flags)
{
    initElemMap();
}

OBJSceneFileTypeTN::OBJSceneFileTypeTN(OBJSceneFileTypeTN const &source)
    : SceneFileType(source)
{
    initElemMap();
}

OBJSceneFileTypeTN::~OBJSceneFileTypeTN() = default;

char const *OBJSceneFileTypeTN::getName() const { return "Wavefront Geometry"; }

void OBJSceneFileTypeTN::initElemMap()
{
    fill_element_map(dataElemMap);
    fill_element_map(mtlElemMap);
}

/// The state of one read: materials by name and by slot, and the progress.
class OBJSceneFileTypeTN::Read : public ObjReadClient
{
  public:
    explicit Read(OBJSceneFileTypeTN const &type)
        : _type(type)
    {
    }

    void elementsRead(UInt32 count) override { _handler.addReadElements(count); }

    // A library that gave no material is not read again, because a hostile file may name such a
    // library in every line, or may name itself.
    void readLibrary(std::string const &name) override
    {
        std::string const path =
            boost::filesystem::path(find_obj_file(name)).lexically_normal().string();
        if(_emptyLibraries.count(path) == 0 && _type.readMTL(name.c_str(), _materials) == 0 &&
           !path.empty())
            _emptyLibraries.insert(path);
    }

    Int32 findMaterial(std::string const &name) override
    {
        auto const found = _materials.find(name);
        if(found == _materials.end())
            return ObjRecords::NoMaterial;
        if(_slots.empty() || _slots.back() != found->second)
            _slots.push_back(found->second);
        return static_cast<Int32>(_slots.size()) - 1;
    }

    ObjMaterialSlots const &slots() const { return _slots; }

  private:
    OBJSceneFileTypeTN const &_type;
    SceneFileHandlerBase &_handler = *SceneFileHandlerBase::the();
    MaterialMap _materials;
    std::set<std::string> _emptyLibraries; // by their full paths
    ObjMaterialSlots _slots;
};

TransitPtr<Node> OBJSceneFileTypeTN::read(std::istream &in, char const *, Resolver) const
{
    TransitPtr<Node> root;
    if(!in.fail())
    {
        ObjBuilder builder;
        ObjRecords records;
        Read client(*this);
        // Vertices go straight into the arrays of the builder's properties. Everything else goes
        // into records.
        readText(in, builder.arrays(), records, client);
        root = builder.build(records, client.slots());
    }
    SceneFileHandlerBase::the()->updateReadProgress(100);
    Thread::getCurrentChangeList()->commitChanges(0, 0);
    return root;
}

void OBJSceneFileTypeTN::readText(std::istream &in, ObjVertexArrays arrays, ObjRecords &records,
                                  ObjReadClient &client) const
{
    ReadBuffer text(in);
    ReadText const reading(text);
    ObjRecordReader(text, dataElemMap, arrays, records, client).read();
    reading.reportEarlyEnd(nullptr);
    text.finish();
}

namespace
{
constexpr char Header[] = "#\n"
                          "# written by Orvexa CAD application from Tolvanite contributors, "
                          "International\n"
                          "# https://tolvanite.example\n"
                          "#\n";

void note_loss(std::string const &sentence) { SceneFileHandlerBase::the()->addLoss(sentence); }

// Readers take a name up to its first white space.
void note_name(std::string const &name)
{
    if(std::any_of(name.begin(), name.end(), &is_stream_space))
        note_loss("Readers find no file for the name '" + name + "', as it has a blank.");
}

void write_images(ObjWriter::Images const &images, boost::filesystem::path folder)
{
    boost::system::error_code error; // the current folder may be gone
    if(folder.empty())
        folder = boost::filesystem::current_path(error);
    std::map<std::string, std::string> sources; // by the names of the files
    for(Image const *image : images)
    {
        std::string const name = boost::filesystem::path(image->getName()).filename().string();
        boost::filesystem::path const file = folder / name;
        if(!image->write(file.string().c_str()))
            SceneFileHandlerBase::the()->addUnwrittenFile(file.string());
        note_name(name);
        if(sources.emplace(name, image->getName()).first->second != image->getName())
            note_loss("Of several pictures with the name '" + name + "' one is written.");
    }
}

void note_unused_materials(UInt32 count, std::string const &library)
{
    if(count != 0)
        note_loss("Readers do not use the materials of " + std::to_string(count) +
                  (count == 1 ? " geometry" : " geometries") + " in '" + library +
                  "': the file names those of material groups alone.");
}
} // namespace

bool OBJSceneFileTypeTN::write(Node *node, std::ostream &out, char const *fileName) const
{
    boost::filesystem::path const target(fileName != nullptr ? fileName : "");
    boost::filesystem::path libraryPath(target);
    libraryPath.replace_extension(".mtl");
    std::ofstream library(libraryPath.string());
    library.imbue(std::locale::classic());
    library << Header;
    WriteBuffer text(out);
    text.put(Header).put("mtllib ").put(libraryPath.filename().string()).put("\no Geometry\n");
    ObjWriter writer(text, library);
    writer.write(node);
    text.flush();
    note_name(libraryPath.filename().string());
    note_unused_materials(writer.countUnusedMaterials(), libraryPath.filename().string());
    write_images(writer.getImages(), target.parent_path());
    library.close();
    if(!library)
        SceneFileHandlerBase::the()->addUnwrittenFile(libraryPath.string());
    return true;
}

// --- material libraries ---

Int32 OBJSceneFileTypeTN::readMTL(char const *fileName, MaterialMap &materials) const
{
    return read_material_library(fileName, mtlElemMap, materials);
}
} // namespace OSG
