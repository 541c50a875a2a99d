#include "ObjOutcome.h"

#include <bit>

#include "MtlEvents.h"
#include "OSGMtlReader.h"
#include "OSGObjRecordReader.h"

namespace OSG::Test
{
namespace
{
template <class Tuple>
void add_tuples(std::string &text, char const *name, std::vector<Tuple> const &tuples)
{
    for(Tuple const &tuple : tuples)
    {
        text += name;
        for(UInt32 i = 0; i < sizeof(Tuple) / sizeof(Real32); ++i)
            text += ' ' + std::to_string(std::bit_cast<UInt32>(tuple[i]));
        text += '\n';
    }
}

std::string face_text(ObjOutcome::Face const &face)
{
    std::string text;
    for(ObjTiePoint const &corner : face)
    {
        text += text.empty() ? "" : " ";
        text += std::to_string(corner.index[0]) + '/' + std::to_string(corner.index[1]) + '/' +
                std::to_string(corner.index[2]);
    }
    return text;
}

class RecordingClient : public ObjReadClient
{
  public:
    explicit RecordingClient(ObjOutcome &outcome)
        : _outcome(outcome)
    {
    }

    void elementsRead(UInt32 count) override { _outcome.elements += count; }
    void readLibrary(std::string const &name) override
    {
        _outcome.events.push_back("library " + name);
    }
    Int32 findMaterial(std::string const &name) override
    {
        _outcome.events.push_back("material " + name);
        return slot_of(name);
    }

  private:
    ObjOutcome &_outcome;
};

void copy_meshes(ObjRecords &records, ObjOutcome &outcome)
{
    for(std::size_t mesh = 0; mesh < records.meshCount(); ++mesh)
    {
        ObjOutcome::Mesh copy;
        copy.material = records.material(mesh);
        for(std::span<ObjTiePoint const> face : records.faces(mesh))
            copy.faces.emplace_back(face.begin(), face.end());
        outcome.meshes.push_back(std::move(copy));
    }
}
} // namespace

std::string ObjOutcome::describe() const
{
    std::string text;
    add_tuples(text, "v", positions);
    add_tuples(text, "vt", texCoords);
    add_tuples(text, "vn", normals);
    for(Mesh const &mesh : meshes)
    {
        text += "mesh " + std::to_string(mesh.material) + '\n';
        for(Face const &face : mesh.faces)
            text += "f " + face_text(face) + '\n';
    }
    for(std::string const &event : events)
        text += "event " + event + '\n';
    for(LogCapture::Message const &message : messages)
        text += "level " + std::to_string(message.level) + ": " + message.text;
    text += "elements " + std::to_string(elements) + '\n';
    text += "state " + std::to_string(state) + '\n';
    return text + "rest " + rest;
}

std::vector<std::string> ObjOutcome::texts() const
{
    std::vector<std::string> result;
    for(LogCapture::Message const &message : messages)
        result.push_back(message.text);
    return result;
}

std::vector<std::string> ObjOutcome::faces(std::size_t mesh) const
{
    std::vector<std::string> result;
    for(Face const &face : meshes.at(mesh).faces)
        result.push_back(face_text(face));
    return result;
}

Int32 slot_of(std::string const &name)
{
    bool const known = name.size() == 2 && name[0] == 'm' && name[1] >= '0' && name[1] <= '9';
    return known ? name[1] - '0' : ObjRecords::NoMaterial;
}

ObjOutcome read_obj(std::istream &in, std::size_t blockSize)
{
    std::vector<Pnt3f, MemAllocator<Pnt3f>> positions;
    std::vector<Vec2f, MemAllocator<Vec2f>> texCoords;
    std::vector<Vec3f, MemAllocator<Vec3f>> normals;
    ObjElementMap elements;
    fill_element_map(elements);
    ObjRecords records;
    ObjOutcome outcome;
    RecordingClient client(outcome);
    LogCapture log;
    ReadBuffer text(in, blockSize);
    ObjRecordReader(text, elements, {positions, texCoords, normals}, records, client).read();
    text.finish();
    outcome.state = in.rdstate();
    outcome.messages = log.messages();
    outcome.positions.assign(positions.begin(), positions.end());
    outcome.texCoords.assign(texCoords.begin(), texCoords.end());
    outcome.normals.assign(normals.begin(), normals.end());
    copy_meshes(records, outcome);
    return outcome;
}

ObjOutcome read_obj(std::string const &text, ObjSettings const &settings)
{
    PieceBuffer buffer(text, settings.habits);
    std::istream in(&buffer);
    ObjOutcome outcome = read_obj(in, settings.blockSize);
    outcome.rest = buffer.rest();
    return outcome;
}

ObjOutcome read_mtl(std::string const &text, ObjSettings const &settings)
{
    PieceBuffer buffer(text, settings.habits);
    std::istream in(&buffer);
    MtlElementMap elements;
    fill_element_map(elements);
    ObjOutcome outcome;
    MtlEvents handler(outcome.events);
    LogCapture log;
    ReadBuffer reader(in, settings.blockSize);
    Int32 const count = read_mtl(reader, elements, "lib.mtl", handler);
    reader.finish();
    outcome.events.push_back("count " + std::to_string(count));
    outcome.state = in.rdstate();
    outcome.messages = log.messages();
    outcome.rest = buffer.rest();
    return outcome;
}
} // namespace OSG::Test
