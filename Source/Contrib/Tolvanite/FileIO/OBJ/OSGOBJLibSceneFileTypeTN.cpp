#include "OSGOBJLibSceneFileTypeTN.h"

#include <vector>

#include "OSGChangeList.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGObjBuilder.h"
#include "OSGObjMaterialLibrary.h"
#include "OSGObjRecordReader.h"
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
    fillElementMap(dataElemMap);
    fillElementMap(mtlElemMap);
}

/// What one read knows of the scene: materials by name and by slot, and the progress.
class OBJSceneFileTypeTN::Read : public ObjReadClient
{
  public:
    explicit Read(OBJSceneFileTypeTN const &type)
        : _type(type)
    {
    }

    void elementRead() override { _handler.updateReadProgress(); }

    void readLibrary(std::string const &name) override { _type.readMTL(name.c_str(), _materials); }

    Int32 findMaterial(std::string const &name) override
    {
        auto const found = _materials.find(name);
        if(found == _materials.end())
            return ObjRecords::noMaterial;
        if(_slots.empty() || _slots.back() != found->second)
            _slots.push_back(found->second);
        return static_cast<Int32>(_slots.size()) - 1;
    }

    ObjMaterialSlots const &slots() const { return _slots; }

  private:
    OBJSceneFileTypeTN const &_type;
    SceneFileHandlerBase &_handler = *SceneFileHandlerBase::the();
    MaterialMap _materials;
    ObjMaterialSlots _slots;
};

TransitPtr<Node> OBJSceneFileTypeTN::read(std::istream &in, char const *, Resolver) const
{
    TransitPtr<Node> root;
    if(!in.fail())
    {
        ReadBuffer text(in);
        ObjBuilder builder;
        ObjRecords records;
        Read client(*this);
        ObjRecordReader(text, dataElemMap, builder.arrays(), records, client).read();
        text.finish();
        builder.trimArrays();
        root = builder.build(records, client.slots());
    }
    SceneFileHandlerBase::the()->updateReadProgress(100);
    Thread::getCurrentChangeList()->commitChanges(0, 0);
    return root;
}

Int32 OBJSceneFileTypeTN::readMTL(char const *fileName, MaterialMap &materials) const
{
    return readMaterialLibrary(fileName, mtlElemMap, materials);
}
} // namespace OSG
