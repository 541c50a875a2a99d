include(GenerateExportHeader)

# osg_unit(NAME DIR dir [LINK units...] [EXTERNAL libraries...] [PRIVATE libraries...] [MODULE_STATICS]
#          [WITHOUT folder])
#
# A unit is one folder, one shared library OSG<NAME> and one target Tolvanite::<NAME>. LINK names
# the units that it may include and call. Include folders come with the link, so an include of a
# unit above does not compile. The linker flag -z defs makes a call into a unit above fail to link.
# Every OSG*.xml in the folder describes a container. The generated statics of a unit are compiled
# as one source. With MODULE_STATICS a source of the unit includes them instead, in an order of its
# own. The folder after WITHOUT, below DIR, is left out.
function(osg_unit NAME)
    cmake_parse_arguments(UNIT "MODULE_STATICS" "DIR;WITHOUT" "LINK;EXTERNAL;PRIVATE" ${ARGN})
    set(target OSG${NAME})
    set(source_dir ${CMAKE_CURRENT_SOURCE_DIR}/${UNIT_DIR})
    set(generated_dir ${PROJECT_BINARY_DIR}/generated/${NAME})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${source_dir}/*.cpp)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${source_dir}/*.h ${source_dir}/*.inl)
    file(GLOB_RECURSE descriptions CONFIGURE_DEPENDS ${source_dir}/*.xml)
    # This source is compiled into executables that ask for it, never into a library.
    list(FILTER sources EXCLUDE REGEX "OSGMemGlobal\\.cpp$")
    if(UNIT_WITHOUT)
        list(FILTER sources EXCLUDE REGEX "^${source_dir}/${UNIT_WITHOUT}/")
        list(FILTER headers EXCLUDE REGEX "^${source_dir}/${UNIT_WITHOUT}/")
    endif()

    osg_generate_containers(${NAME} "${descriptions}" ${generated_dir} generated)
    set(generated_sources)
    if(descriptions AND NOT UNIT_MODULE_STATICS)
        set(includes "")
        foreach(description IN LISTS descriptions)
            get_filename_component(base ${description} NAME_WE)
            string(APPEND includes "#include \"${base}Statics.inl\"\n")
        endforeach()
        set(generated_sources ${generated_dir}/${target}Statics.cpp)
        file(CONFIGURE OUTPUT ${generated_sources} CONTENT "${includes}" @ONLY)
    endif()

    add_library(${target} SHARED ${sources} ${headers} ${generated} ${generated_sources})
    add_library(Tolvanite::${NAME} ALIAS ${target})
    string(TOUPPER ${NAME} upper)
    generate_export_header(${target} BASE_NAME ${target} EXPORT_MACRO_NAME OSG_${upper}_API
        EXPORT_FILE_NAME ${generated_dir}/${target}Api.h)

    set(folders ${source_dir})
    foreach(file IN LISTS headers descriptions)
        get_filename_component(folder ${file} DIRECTORY)
        list(APPEND folders ${folder})
    endforeach()
    list(REMOVE_DUPLICATES folders)
    foreach(folder IN LISTS folders)
        target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${folder}>)
    endforeach()
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${generated_dir}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tolvanite>)
    target_compile_features(${target} PUBLIC cxx_std_20)

    foreach(unit IN LISTS UNIT_LINK)
        target_link_libraries(${target} PUBLIC Tolvanite::${unit})
    endforeach()
    target_link_libraries(${target} PUBLIC Boost::headers ${UNIT_EXTERNAL} PRIVATE ${UNIT_PRIVATE})
    # Nothing unregisters from a factory, so a loaded library must stay loaded.
    target_link_options(${target} PRIVATE -Wl,-z,defs -Wl,-z,nodelete)
    # A unit registers its types and formats when it is loaded, so a program needs a unit that it
    # links even if it calls nothing in it.
    target_link_options(${target} INTERFACE LINKER:--no-as-needed)
    if(TOLVANITE_SANITIZE)
        get_target_property(options ${target} LINK_OPTIONS)
        list(REMOVE_ITEM options -Wl,-z,defs)
        set_target_properties(${target} PROPERTIES LINK_OPTIONS "${options}")
    endif()
    target_precompile_headers(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/TolvanitePch.h)
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME ${NAME})

    # Headers in a folder Internal are for the unit alone and are not installed.
    set(public_headers ${headers})
    list(FILTER public_headers EXCLUDE REGEX "/Internal/")
    if(TOLVANITE_INSTALL)
        install(TARGETS ${target} EXPORT TolvaniteTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
        install(FILES ${public_headers} ${generated} ${generated_dir}/${target}Api.h
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tolvanite)
    endif()
    set_property(GLOBAL APPEND PROPERTY TOLVANITE_UNITS ${NAME})
endfunction()

# Runs the container generator on the descriptions of a unit. `result` receives the generated files.
# If there is no header beside a description and the description names none, the class and its
# header are generated too.
function(osg_generate_containers NAME descriptions generated_dir result)
    set(generator ${PROJECT_SOURCE_DIR}/Tools/containergen.py)
    string(TOUPPER ${NAME} upper)
    set(made)
    foreach(description IN LISTS descriptions)
        get_filename_component(folder ${description} DIRECTORY)
        get_filename_component(base ${description} NAME_WE)
        set(outputs ${generated_dir}/${base}Base.h ${generated_dir}/${base}Statics.inl)
        file(STRINGS ${description} header REGEX "^ *header=")
        set(own_header)
        if(EXISTS ${folder}/${base}.h)
            # A header that was generated before this one was written would be found first.
            file(REMOVE ${generated_dir}/${base}.h)
            set(own_header ${folder}/${base}.h)
        elseif(NOT header)
            list(APPEND outputs ${generated_dir}/${base}.h)
        endif()
        add_custom_command(OUTPUT ${outputs}
            COMMAND Python3::Interpreter ${generator} --api OSG_${upper}_API
                --api-header OSG${NAME}Api.h --out ${generated_dir} ${description}
            DEPENDS ${generator} ${description} ${own_header}
            COMMENT "Container ${base}" VERBATIM)
        list(APPEND made ${outputs})
    endforeach()
    set(${result} ${made} PARENT_SCOPE)
endfunction()
