#pragma once

/// \file
/// All results of reading an OBJ or MTL text, in a form in which two readers can be compared.

#include <istream>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "OSGObjRecords.h"
#include "StreamBuffers.h"

namespace OSG::Test
{
struct ObjOutcome
{
    using Face = std::vector<ObjTiePoint>;
    struct Mesh
    {
        std::vector<Face> faces; ///< newest first
        Int32 material = ObjRecords::NoMaterial;
    };

    std::vector<Pnt3f> positions;
    std::vector<Vec2f> texCoords;
    std::vector<Vec3f> normals;
    std::vector<Mesh> meshes;        ///< newest first
    std::vector<std::string> events; ///< libraries read, materials asked for, and the like
    std::size_t elements = 0;        ///< elements that were reported as progress
    std::vector<LogCapture::Message> messages;
    std::ios_base::iostate state = std::ios_base::goodbit;
    std::string rest; ///< what the stream still holds

    /// All of it as text, numbers by their bits.
    std::string describe() const;
    std::vector<std::string> texts() const;
    /// The faces of a mesh as "0/-1/-1 1/-1/-1", one string each.
    std::vector<std::string> faces(std::size_t mesh) const;
};

/// The slot of a material in the tests' libraries: the name "m<slot>" has the slot in its name,
/// others have none.
Int32 slot_of(std::string const &name);

struct ObjSettings
{
    PieceBuffer::Habits habits;
    std::size_t blockSize = 64;
};

/// The reader under test.
ObjOutcome read_obj(std::string const &text, ObjSettings const &settings = {});
/// Reads from any stream, without asking it for its rest.
ObjOutcome read_obj(std::istream &in, std::size_t blockSize);

/// The same for a library named "lib.mtl". Materials and what was set on them become events; images
/// named "no..." cannot be loaded.
ObjOutcome read_mtl(std::string const &text, ObjSettings const &settings = {});
} // namespace OSG::Test
