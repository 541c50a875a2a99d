#pragma once

/// \file
/// Reads 3DS files into records. The functions and records have the names of lib3ds 2, so that an
/// installed lib3ds 2 can take the place of this reader (TOLVANITE_INSTALLED_LIB3DS).
///
/// The reader is safe with any bytes: nothing is read outside the stream, no count is believed
/// before the bytes behind it are there, and work and memory are linear in the size of the file.
/// Chunks that nothing here needs are passed over. Materials, meshes and nodes keep the order of
/// the file. Memory that is not there raises std::bad_alloc.
///
/// A matrix is four columns of four rows; the translation is in column 3.

#include <cstddef>

extern "C"
{
    enum Lib3dsIoSeek
    {
        LIB3DS_SEEK_SET = 0,
        LIB3DS_SEEK_CUR = 1,
        LIB3DS_SEEK_END = 2
    };

    enum Lib3dsLogLevel
    {
        LIB3DS_LOG_ERROR = 0, ///< the read fails
        LIB3DS_LOG_WARN = 1,  ///< something was repaired or left out
        LIB3DS_LOG_INFO = 2,  ///< a chunk is passed over
        LIB3DS_LOG_DEBUG = 3
    };

    /// The functions that a reader needs. All of them get `self`. The struct is filled with zeros
    /// first. This reader asks `tell_func` and `seek_func` for the bytes that are left, reads by
    /// `read_func`, and calls `log_func` if it is not null.
    struct Lib3dsIo
    {
        void *impl;
        void *self;
        long (*seek_func)(void *self, long offset, Lib3dsIoSeek origin);
        long (*tell_func)(void *self);
        std::size_t (*read_func)(void *self, void *buffer, std::size_t size);
        std::size_t (*write_func)(void *self, void const *buffer, std::size_t size);
        void (*log_func)(void *self, Lib3dsLogLevel level, int indent, char const *msg);
    };

    enum Lib3dsNodeType
    {
        LIB3DS_NODE_AMBIENT_COLOR = 0,
        LIB3DS_NODE_MESH_INSTANCE = 1,
        LIB3DS_NODE_CAMERA = 2,
        LIB3DS_NODE_CAMERA_TARGET = 3,
        LIB3DS_NODE_OMNILIGHT = 4,
        LIB3DS_NODE_SPOTLIGHT = 5,
        LIB3DS_NODE_SPOTLIGHT_TARGET = 6
    };

    /// A node of the keyframer. `childs` is the first child and `next` the next sibling.
    struct Lib3dsNode
    {
        Lib3dsNode *next;
        Lib3dsNode *childs;
        Lib3dsNode *parent;
        Lib3dsNodeType type;
        unsigned short node_id;
        char name[64];
        unsigned flags;
        float matrixNode[4][4]; ///< to world space; set by lib3ds_file_eval
    };

    /// A node that shows the mesh of its name.
    struct Lib3dsMeshInstanceNode
    {
        Lib3dsNode base;
        float pivot[3];
        char instance_name[64];
    };

    struct Lib3dsFace
    {
        unsigned short index[3]; ///< below the mesh's `nvertices`
        unsigned short flags;
        int material; ///< index of the file's material; -1 for none
        unsigned smoothing_group;
    };

    struct Lib3dsMesh
    {
        char name[64];
        float matrix[4][4];
        unsigned short nvertices;
        float (*vertices)[3]; ///< in world space
        float (*texcos)[2];   ///< null, or one for each vertex
        unsigned short nfaces;
        Lib3dsFace *faces;
    };

    struct Lib3dsTextureMap
    {
        char name[64];  ///< of a picture; empty for none
        unsigned flags; ///< 0x10 for a map that does not tile, 0x40 for a source of alpha
    };

    /// The maps are those that the host shows.
    struct Lib3dsMaterial
    {
        char name[64];
        float ambient[3];
        float diffuse[3];
        float specular[3];
        float shininess;
        float shin_strength;
        float transparency;
        Lib3dsTextureMap texture1_map;
        Lib3dsTextureMap texture2_map;
        Lib3dsTextureMap bump_map;
    };

    /// Materials of which the file says nothing are one record. A mesh without content is the
    /// record of the last such mesh if it has the same name. Nodes of which it says nothing are
    /// left out where they show no mesh, have no children and at least two others without a parent
    /// are there.
    struct Lib3dsFile
    {
        int nmaterials;
        Lib3dsMaterial **materials;
        int nmeshes;
        Lib3dsMesh **meshes;
        Lib3dsNode *nodes; ///< the first of those without a parent
    };

    /// An empty file.
    Lib3dsFile *lib3ds_file_new();
    void lib3ds_file_free(Lib3dsFile *file);
    /// Reads one outermost chunk from where the stream stands into an empty file. 1 on success; 0,
    /// with a message of LIB3DS_LOG_ERROR, where the stream holds no such chunk or a part of it is
    /// damaged.
    int lib3ds_file_read(Lib3dsFile *file, Lib3dsIo *io);
    /// Sets the matrices of all nodes for the frame `t`.
    void lib3ds_file_eval(Lib3dsFile *file, float t);
    /// The first mesh of the node's name. Null where there is none, and for nodes of other types.
    Lib3dsMesh *lib3ds_file_mesh_for_node(Lib3dsFile *file, Lib3dsNode *node);
    /// One unit normal for each face. Seen from its tip the corners are counter-clockwise. A face
    /// whose normal would be shorter than 1e-5 before it is normalised gets the axis of the largest
    /// component.
    void lib3ds_mesh_calculate_face_normals(Lib3dsMesh *mesh, float (*faceNormals)[3]);
}
