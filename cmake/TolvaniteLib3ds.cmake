# An installed lib3ds 2 in place of the reader of this tree, where TOLVANITE_INSTALLED_LIB3DS is on:
# TOLVANITE_LIB3DS_LIBRARY and TOLVANITE_LIB3DS_INCLUDE_DIR.
if(TOLVANITE_INSTALLED_LIB3DS)
    include(CheckCXXSourceCompiles)
    find_path(TOLVANITE_LIB3DS_INCLUDE_DIR lib3ds.h PATH_SUFFIXES lib3ds)
    find_library(TOLVANITE_LIB3DS_LIBRARY 3ds)
    mark_as_advanced(TOLVANITE_LIB3DS_INCLUDE_DIR TOLVANITE_LIB3DS_LIBRARY)
    if(TOLVANITE_LIB3DS_INCLUDE_DIR AND TOLVANITE_LIB3DS_LIBRARY)
        # Version 1.3 has neither the records in the file's order nor a function for messages.
        set(CMAKE_REQUIRED_INCLUDES ${TOLVANITE_LIB3DS_INCLUDE_DIR})
        set(CMAKE_REQUIRED_LIBRARIES ${TOLVANITE_LIB3DS_LIBRARY})
        check_cxx_source_compiles("
            #include <lib3ds.h>
            static void log_nothing(void *, Lib3dsLogLevel, int, char const *) {}
            int main()
            {
                Lib3dsIo io = {};
                io.log_func = &log_nothing;
                Lib3dsFile *const file = lib3ds_file_new();
                int const result = lib3ds_file_read(file, &io) + file->nmaterials;
                lib3ds_file_eval(file, 0.f);
                lib3ds_mesh_calculate_face_normals(file->meshes[0], nullptr);
                lib3ds_file_free(file);
                return result;
            }" TOLVANITE_LIB3DS_IS_VERSION_2)
        unset(CMAKE_REQUIRED_INCLUDES)
        unset(CMAKE_REQUIRED_LIBRARIES)
        if(NOT TOLVANITE_LIB3DS_IS_VERSION_2)
            unset(TOLVANITE_LIB3DS_IS_VERSION_2 CACHE) # the next configuration may find another one
            message(FATAL_ERROR "TOLVANITE_INSTALLED_LIB3DS wants lib3ds 2, and another was found")
        endif()
    else()
        message(FATAL_ERROR "TOLVANITE_INSTALLED_LIB3DS wants lib3ds 2, and it was not found")
    endif()
endif()
