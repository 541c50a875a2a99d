#pragma once

/// \file
/// The parts of a 3DS file, each from its chunk.

#include "ChunkReader.h"
#include "Records.h"

namespace OSG::Lib3ds
{
/// The kinds of chunks that are read.
enum ChunkKind : unsigned
{
    MainChunk = 0x4D4D,
    LibraryChunk = 0x3DAA,
    ProjectChunk = 0xC23D,

    EditorChunk = 0x3D3D,
    ObjectChunk = 0x4000,
    MeshChunk = 0x4100,
    PointsChunk = 0x4110,
    FacesChunk = 0x4120,
    FaceMaterialChunk = 0x4130,
    TexCoordsChunk = 0x4140,
    SmoothingChunk = 0x4150,
    MeshMatrixChunk = 0x4160,

    MaterialChunk = 0xAFFF,
    MaterialNameChunk = 0xA000,
    AmbientChunk = 0xA010,
    DiffuseChunk = 0xA020,
    SpecularChunk = 0xA030,
    ShininessChunk = 0xA040,
    ShininessStrengthChunk = 0xA041,
    TransparencyChunk = 0xA050,
    Texture1Chunk = 0xA200,
    Texture1MaskChunk = 0xA33E,
    Texture2Chunk = 0xA33A,
    Texture2MaskChunk = 0xA340,
    OpacityChunk = 0xA210,
    OpacityMaskChunk = 0xA342,
    BumpChunk = 0xA230,
    BumpMaskChunk = 0xA344,
    SpecularMapChunk = 0xA204,
    SpecularMaskChunk = 0xA348,
    ShininessMapChunk = 0xA33C,
    ShininessMaskChunk = 0xA346,
    SelfIlluminationChunk = 0xA33D,
    SelfIlluminationMaskChunk = 0xA34A,
    ReflectionChunk = 0xA220,
    ReflectionMaskChunk = 0xA34C,
    MapNameChunk = 0xA300,
    MapFlagsChunk = 0xA351,

    ColorFloatChunk = 0x0010,
    ColorByteChunk = 0x0011,
    LinearColorByteChunk = 0x0012,
    LinearColorFloatChunk = 0x0013,
    PercentageChunk = 0x0030,

    KeyframerChunk = 0xB000,
    AmbientNodeChunk = 0xB001,
    MeshNodeChunk = 0xB002,
    CameraNodeChunk = 0xB003,
    CameraTargetNodeChunk = 0xB004,
    OmniLightNodeChunk = 0xB005,
    SpotLightTargetNodeChunk = 0xB006,
    SpotLightNodeChunk = 0xB007,
    NodeHeaderChunk = 0xB010,
    InstanceNameChunk = 0xB011,
    PivotChunk = 0xB013,
    PositionTrackChunk = 0xB020,
    RotationTrackChunk = 0xB021,
    ScaleTrackChunk = 0xB022,
    NodeIdChunk = 0xB030
};

/// Reads the whole file into `file`, and links its nodes. Raises DamagedFile.
void read_file(OutermostChunk &outermost, Messages const &messages, File &file);

void read_material(Chunk chunk, File &file);
/// Reads a named object, which holds meshes or what nobody reads.
void read_object(Chunk chunk, File &file);
/// Reads the keyframer's nodes without linking them.
void read_keyframer(Chunk chunk, File &file);
/// Gives each node its parent, children and next sibling.
void link_nodes(File &file, Messages const &messages);
} // namespace OSG::Lib3ds
