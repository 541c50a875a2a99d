#pragma once

/// \file
/// What the tests of the OBJ writer share.

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "FileContent.h"
#include "OSGImage.h"
#include "OSGOBJLibSceneFileTypeTN.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitch.h"
#include "OperationScenes.h"
#include "ReferenceObjWriter.h"
#include "TempFolder.h"

namespace OSG::Test
{
inline std::string const ObjHeader =
    "#\n"
    "# written by Orvexa CAD application from Tolvanite contributors, "
    "International\n"
    "# https://tolvanite.example\n"
    "#\n";

/// A folder to write into, and what was written.
class ObjWriting : public testing::Test
{
  protected:
    ObjTexts write(Node *root, std::string const &name = "scene.obj")
    {
        std::ostringstream out;
        out.imbue(std::locale::classic());
        EXPECT_TRUE(OBJSceneFileTypeTN::the().write(root, out, folder.path(name).c_str()));
        std::filesystem::path library(folder.path(name));
        library.replace_extension(".mtl");
        std::string const head = ObjHeader + "mtllib " + library.filename().string() + "\n";
        std::string const entries = content_of(library.string());
        EXPECT_THAT(out.str(), testing::StartsWith(head));
        EXPECT_THAT(entries, testing::StartsWith(ObjHeader));
        return {out.str().substr(std::min(out.str().size(), head.size())),
                entries.substr(std::min(entries.size(), ObjHeader.size()))};
    }

    TempFolder folder;
};

template <class Group>
NodePtr make_material_group(Material *material, Children const &children)
{
    NodePtr node = make<Group>(children);
    core_of<Group>(node)->setMaterial(material);
    return node;
}

inline NodePtr make_switch(Int32 choice, Children const &children)
{
    NodePtr node = make<Switch>(children);
    core_of<Switch>(node)->setChoice(choice);
    return node;
}

inline UnrecordedRefPtr<Image> make_image(std::string const &name)
{
    UnrecordedRefPtr<Image> image(Image::create());
    UInt8 const pixels[] = {255, 0, 0, 0, 255, 0};
    image->set(2, 1, 3, pixels);
    image->setName(name);
    return image;
}

inline UnrecordedRefPtr<SimpleTexturedMaterial> make_textured(Image *image)
{
    UnrecordedRefPtr<SimpleTexturedMaterial> material(SimpleTexturedMaterial::create());
    material->setImage(image);
    return material;
}

inline NodePtr with_material(NodePtr const &node, Material *material)
{
    core_of<Geometry>(node)->setMaterial(material);
    return node;
}

/// The lines of an entry for a material that nobody has changed.
inline std::string const DefaultMaterialLines = "    Ka 0.200000 0.200000 0.200000\n"
                                                "    Kd 0.800000 0.800000 0.800000\n"
                                                "    Ks 0.000000 0.000000 0.000000\n"
                                                "    illum 2\n"
                                                "    d 1.000000\n"
                                                "    Ns 0.000000\n"
                                                "    Ni 1.000000\n";

} // namespace OSG::Test
